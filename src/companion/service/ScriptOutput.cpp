#include "companion/service/ScriptOutput.h"

#include "companion/service/Log.h"

#include <QSocketNotifier>
#include <QStringList>

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <unistd.h>

namespace Orbita {

namespace {

constexpr qsizetype keptErrors = 4096;
constexpr qsizetype maximumLine = 200;

void closeDescriptor(int &descriptor)
{
    if (descriptor >= 0)
        ::close(std::exchange(descriptor, -1));
}

bool hasWriter(int readEnd)
{
    pollfd state{readEnd, POLLIN, 0};
    return readEnd >= 0 && poll(&state, 1, 0) >= 0 && (state.revents & POLLHUP) == 0;
}

/// Leaves \a readEnd to a process that throws away what is written, until nobody can write any more.
void leaveToDrain(int readEnd)
{
    fcntl(readEnd, F_SETFL, 0); // it waits for what is written
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_adddup2(&actions, readEnd, STDIN_FILENO);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    char program[] = "/bin/cat";
    char *const arguments[]{program, nullptr};
    if (posix_spawn(nullptr, program, &actions, &attributes, arguments, environ) != 0)
        qCWarning(lcCompanion, "What a script has left running cannot write any more.");
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
}

} // namespace

ScriptOutput::ScriptOutput(QObject *parent) : QObject(parent)
{
    for (const Stream stream : {Output, Error}) {
        Pipe &pipe = m_pipes[stream];
        std::array<int, 2> ends{-1, -1};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            continue;
        pipe.readEnd = ends[0];
        pipe.writeEnd = ends[1];
        fcntl(pipe.readEnd, F_SETFL, O_NONBLOCK);
        pipe.notifier = std::make_unique<QSocketNotifier>(pipe.readEnd, QSocketNotifier::Read);
        connect(pipe.notifier.get(), &QSocketNotifier::activated, this, [this, stream] { read(stream); });
    }
}

ScriptOutput::~ScriptOutput()
{
    closeWriteEnds();
    for (Pipe &pipe : m_pipes) {
        if (hasWriter(pipe.readEnd))
            leaveToDrain(pipe.readEnd);
        close(pipe);
    }
}

void ScriptOutput::closeWriteEnds()
{
    std::ranges::for_each(m_pipes, [](Pipe &pipe) { closeDescriptor(pipe.writeEnd); });
}

void ScriptOutput::close(Pipe &pipe)
{
    if (pipe.notifier) {
        pipe.notifier->setEnabled(false);
        pipe.notifier.release()->deleteLater(); // it may be the one that is speaking
    }
    closeDescriptor(pipe.readEnd);
}

void ScriptOutput::read(Stream stream)
{
    // One buffer's worth at a time, or endless output would keep everything else waiting.
    Pipe &pipe = m_pipes[stream];
    std::array<char, 65536> buffer;
    const ssize_t size = TEMP_FAILURE_RETRY(::read(pipe.readEnd, buffer.data(), buffer.size()));
    if (size > 0) {
        const QByteArray bytes(buffer.data(), size);
        passOn(bytes);
        if (stream == Error)
            m_lastErrors = (m_lastErrors + bytes).right(keptErrors);
    } else if (size == 0 || errno != EAGAIN) {
        close(pipe);
        deleteIfFinished();
    }
}

void ScriptOutput::deleteWhenFinished()
{
    m_isForgotten = true;
    deleteIfFinished();
}

void ScriptOutput::deleteIfFinished()
{
    if (m_isForgotten && std::ranges::all_of(m_pipes, [](const Pipe &pipe) { return pipe.readEnd < 0; }))
        deleteLater();
}

void ScriptOutput::passOn(const QByteArray &bytes)
{
    const qsizetype room = maximumSize - m_passedOn;
    if (room < 0)
        return;
    std::fwrite(bytes.constData(), 1, std::size_t(std::min(room, bytes.size())), stderr);
    m_passedOn += bytes.size();
    if (bytes.size() > room)
        qCWarning(lcCompanion, "The rest of what the script writes is left out.");
}

QString ScriptOutput::lastErrorLine()
{
    if (m_pipes[Error].readEnd >= 0)
        read(Error); // what has been written and not yet heard of
    const QStringList lines = QString::fromUtf8(m_lastErrors).split(u'\n');
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (const QString text = line->simplified(); !text.isEmpty())
            return text.size() <= maximumLine ? text : text.left(maximumLine - 1) + u'\u2026';
    }
    return {};
}

} // namespace Orbita
