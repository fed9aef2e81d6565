#include "Rounds.h"

#include "desktop/harness/Wait.h"

#include <algorithm>
#include <csignal>
#include <thread>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Orbita {

namespace {

constexpr std::chrono::seconds longestRound{15};

void spawn(QList<QByteArray> &words)
{
    std::vector<char *> arguments;
    for (QByteArray &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t pid = 0;
    if (posix_spawnp(&pid, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0)
        throw DesktopFailure(QStringLiteral("cannot run ") + QString::fromUtf8(words.first()));
}

void reapChildren()
{
    while (waitpid(-1, nullptr, WNOHANG) > 0) {}
}

QJsonObject spread(std::vector<double> times)
{
    if (times.empty())
        return {};
    std::sort(times.begin(), times.end());
    const size_t middle = times.size() / 2;
    const double median = times.size() % 2 == 1 ? times[middle] : (times[middle - 1] + times[middle]) / 2;
    return {{QStringLiteral("min"), times.front()},
            {QStringLiteral("median"), median},
            {QStringLiteral("max"), times.back()}};
}

} // namespace

Trigger::Trigger(const Input &input, const QString &text) : m_input(input)
{
    if (text.startsWith(QStringLiteral("key:")))
        m_keys = input.keyCodes(text.mid(4));
    else if (text.startsWith(QStringLiteral("exec:")))
        m_command = text.mid(5).simplified().toUtf8().split(' ');
    else if (text != QStringLiteral("end"))
        throw DesktopFailure(QStringLiteral("not a trigger: ") + text);
}

void Trigger::pull(qint64 pid)
{
    if (!m_keys.isEmpty())
        m_input.pressKeys(m_keys);
    else if (!m_command.isEmpty())
        spawn(m_command);
    else if (pid > 0)
        kill(static_cast<pid_t>(pid), SIGTERM);
}

void Trigger::release() const
{
    m_input.releaseKeys(m_keys);
}

Rounds::Rounds(const QByteArray &display, Target target, const RoundOptions &options)
    : m_connection(display),
      m_watch(display, target.className),
      m_target(std::move(target)),
      m_show(m_input, m_target.show),
      m_dismiss(m_input, m_target.dismiss),
      m_options(options)
{
}

bool Rounds::dismiss(std::vector<double> &times)
{
    const auto start = Clock::now();
    m_dismiss.pull(m_watch.pid());
    const auto gone = m_watch.watchUntilGone(start, longestRound);
    m_dismiss.release();
    if (!gone)
        return false;
    times.push_back(gone->count());
    if (m_options.cold && m_watch.pid() > 0)
        waitUntil(
            [this] {
                reapChildren();
                return hasEnded(m_watch.pid());
            },
            QStringLiteral("the program ended"));
    return true;
}

void Rounds::run(bool counted, bool last)
{
    reapChildren();
    std::this_thread::sleep_for(m_options.rest);
    m_watch.arm();
    const auto start = Clock::now();
    m_show.pull(0);
    const WindowWatch::Times times = m_watch.watch(start, longestRound);
    m_show.release();
    // A person needs a moment as well, and the program is to have come to rest before it is dismissed.
    std::this_thread::sleep_for(m_options.rest);

    std::vector<double> gone;
    const bool stays = last && m_options.leave;
    const bool good = times.seen && (stays || dismiss(gone));
    if (!counted)
        return;
    if (!good) {
        ++m_failures;
        return;
    }
    m_map.push_back(times.mapped->count());
    m_paint.push_back(times.painted->count());
    m_screen.push_back(times.seen->count());
    m_gone.insert(m_gone.end(), gone.begin(), gone.end());
}

QJsonObject Rounds::result() const
{
    return {{QStringLiteral("class"), m_target.className},
            {QStringLiteral("pid"), m_watch.pid()},
            {QStringLiteral("rounds"), static_cast<int>(m_paint.size())},
            {QStringLiteral("failed"), m_failures},
            {QStringLiteral("map"), spread(m_map)},
            {QStringLiteral("paint"), spread(m_paint)},
            {QStringLiteral("screen"), spread(m_screen)},
            {QStringLiteral("gone"), spread(m_gone)}};
}

} // namespace Orbita
