#include "platform/evdev/TouchRecording.h"

#include "platform/BoundedRead.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>

#include <linux/input.h>

namespace Orbita {

namespace {

using std::chrono::microseconds;
using Words = std::span<const QByteArrayView>;

/// The words of \a line before its comment; not more than eight, which is more than any line has.
class WordsOfLine {
public:
    explicit WordsOfLine(QByteArrayView line)
    {
        if (const qsizetype comment = line.indexOf('#'); comment >= 0)
            line = line.first(comment);
        while (m_count < m_words.size() && !(line = line.trimmed()).isEmpty()) {
            qsizetype end = 0;
            while (end < line.size() && line[end] != ' ' && line[end] != '\t')
                ++end;
            m_words[m_count++] = line.first(end);
            line = line.sliced(end);
        }
    }
    [[nodiscard]] Words words() const { return std::span(m_words).first(m_count); }

private:
    std::array<QByteArrayView, 8> m_words;
    std::size_t m_count = 0;
};

template <typename Number>
std::optional<Number> number(QByteArrayView word, int base)
{
    bool ok = false;
    const qlonglong value = QByteArray::fromRawData(word.data(), word.size()).toLongLong(&ok, base);
    return ok && std::in_range<Number>(value) ? std::optional(Number(value)) : std::nullopt;
}

/// The time that \a word ("12.000345") says.
std::optional<microseconds> time(QByteArrayView word)
{
    constexpr qsizetype digits = 6;
    const qsizetype point = word.indexOf('.');
    if (point < 0 || word.size() - point - 1 > digits)
        return std::nullopt;
    const auto seconds = number<quint32>(word.first(point), 10);
    const QByteArray fraction = word.sliced(point + 1).toByteArray().leftJustified(digits, '0');
    const auto micros = number<quint32>(fraction, 10);
    if (!seconds || !micros)
        return std::nullopt;
    return std::chrono::seconds(*seconds) + microseconds(*micros);
}

/// Takes the lines of a recording in, one after the other.
class Parser {
public:
    /// What is wrong with \a line, or nothing.
    [[nodiscard]] std::optional<QString> take(QByteArrayView line)
    {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            return std::nullopt;
        const QByteArrayView kind = line.first(std::min<qsizetype>(2, line.size()));
        if (kind == "A:")
            return takeAxis(WordsOfLine(line.sliced(2)).words());
        if (kind == "E:")
            return takeEvent(WordsOfLine(line.sliced(2)).words());
        const bool isIgnored = kind.size() == 2 && kind[1] == ':' && QByteArrayView("NIPBLS").contains(kind[0]);
        return isIgnored ? std::nullopt : std::optional(QStringLiteral("is of no known kind"));
    }
    [[nodiscard]] TouchRecording recording() && { return std::move(m_recording); }

private:
    std::optional<QString> takeAxis(Words words);
    std::optional<QString> takeEvent(Words words);

    TouchRecording m_recording;
    std::optional<microseconds> m_lastTime;
};

std::optional<QString> Parser::takeAxis(Words words)
{
    const auto code = words.size() >= 3 ? number<quint16>(words[0], 16) : std::nullopt;
    const auto minimum = code ? number<qint32>(words[1], 10) : std::nullopt;
    const auto maximum = minimum ? number<qint32>(words[2], 10) : std::nullopt;
    if (!maximum)
        return QStringLiteral("is no axis");
    TouchpadAxes &axes = m_recording.axes;
    if (*code == ABS_MT_POSITION_X)
        axes.x = {*minimum, *maximum};
    else if (*code == ABS_MT_POSITION_Y)
        axes.y = {*minimum, *maximum};
    else if (*code == ABS_MT_SLOT)
        axes.contacts = std::clamp(*maximum, -1, TouchDecoder::maximumContacts - 1) + 1;
    return std::nullopt;
}

std::optional<QString> Parser::takeEvent(Words words)
{
    const auto at = words.size() == 4 ? time(words[0]) : std::nullopt;
    const auto type = at ? number<quint16>(words[1], 16) : std::nullopt;
    const auto code = type ? number<quint16>(words[2], 16) : std::nullopt;
    const auto value = code ? number<qint32>(words[3], 10) : std::nullopt;
    if (!value)
        return QStringLiteral("is no event");
    auto &events = m_recording.events;
    microseconds due{};
    if (!events.empty())
        due = events.back().due + std::max(*at - *m_lastTime, microseconds::zero());
    if (due > TouchRecording::maximumDuration)
        return QStringLiteral("is later than a day after the first event");
    m_lastTime = at;
    events.push_back({due, *type, *code, *value});
    return std::nullopt;
}

} // namespace

Result<TouchRecording, QString> TouchRecording::parse(QByteArrayView text)
{
    Parser parser;
    for (int line = 1; !text.isEmpty(); ++line) {
        const qsizetype end = text.indexOf('\n');
        if (const auto fault = parser.take(end < 0 ? text : text.first(end)))
            return Failure(QStringLiteral("Line %1 of the recording %2").arg(line).arg(*fault));
        text = end < 0 ? QByteArrayView() : text.sliced(end + 1);
    }
    TouchRecording recording = std::move(parser).recording();
    if (!recording.axes.areThoseOfATouchpad())
        return Failure(QStringLiteral("The recording is not one of a touchpad"));
    return recording;
}

Result<TouchRecording, QString> TouchRecording::load(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile()) // opening a pipe would wait for its other end
        return Failure(QStringLiteral("There is no file “%1”").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        return Failure(QStringLiteral("“%1” cannot be read: %2").arg(path, file.errorString()));
    const QByteArray text = readAtMost(file, maximumSize + 1);
    if (text.size() > maximumSize)
        return Failure(QStringLiteral("“%1” is larger than %2 bytes").arg(path).arg(maximumSize));
    return parse(text);
}

} // namespace Orbita
