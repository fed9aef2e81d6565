#include "platform/ColorArchive.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <span>

namespace Orbita::ColorArchive {

namespace {

// Marks of the typed stream.
constexpr char longMark = '\x81';  // a two-byte number follows
constexpr char floatMark = '\x83'; // a four-byte float follows
constexpr char newMark = '\x84';   // a new object, class or shared string follows
constexpr char noneMark = '\x85';
constexpr char endMark = '\x86';

constexpr char calibratedRgb = 1;
constexpr char calibratedWhite = 3;

/// Text preceded by its length.
QByteArray counted(const char *text)
{
    const QByteArray bytes(text);
    return char(bytes.size()) + bytes;
}

/// A string that occurs for the first time, as each of ours does.
QByteArray shared(const char *text)
{
    return newMark + counted(text);
}

/// Everything before the colour space, which is the same in each archive of one colour.
const QByteArray &preamble()
{
    static const QByteArray preamble = [] {
        const QByteArray header = char(4) + counted("streamtyped") + longMark + "\xe8\x03"; // system version 1000
        const QByteArray version(1, '\0');
        return header + shared("@") + newMark                   // an object, of the new class
            + newMark + shared("NSColor") + version             // whose parent is the new class
            + newMark + shared("NSObject") + version + noneMark // that has none
            + shared("c");
    }();
    return preamble;
}

void appendFloat(QByteArray &archive, float number)
{
    if (number == 0.0F || number == 1.0F) {
        archive += char(number);
        return;
    }
    char bytes[sizeof number];
    qToLittleEndian(number, bytes);
    archive += floatMark;
    archive.append(bytes, sizeof bytes);
}

/// Takes one component off the front of \a rest.
std::optional<float> takeFloat(QByteArrayView &rest)
{
    if (rest.isEmpty())
        return {};
    const char mark = rest.front();
    rest = rest.sliced(1);
    if (mark == 0 || mark == 1)
        return float(mark);
    if (mark != floatMark || rest.size() < qsizetype(sizeof(float)))
        return {};
    const float number = qFromLittleEndian<float>(rest.data());
    rest = rest.sliced(sizeof(float));
    if (!std::isfinite(number))
        return {};
    return std::clamp(number, 0.0F, 1.0F);
}

bool takeFloats(QByteArrayView &rest, std::span<float> components)
{
    const QByteArray type = shared(QByteArray(qsizetype(components.size()), 'f').constData());
    if (!rest.startsWith(type))
        return false;
    rest = rest.sliced(type.size());
    for (float &component : components) {
        const std::optional<float> number = takeFloat(rest);
        if (!number)
            return false;
        component = *number;
    }
    return rest.size() == 1 && rest.front() == endMark;
}

} // namespace

QByteArray encode(const QColor &color)
{
    const QColor rgb = color.toRgb();
    const float red = rgb.redF();
    const float green = rgb.greenF();
    const float blue = rgb.blueF();
    const bool isGrey = red == green && green == blue;

    QByteArray archive = preamble() + (isGrey ? calibratedWhite + shared("ff") : calibratedRgb + shared("ffff"));
    appendFloat(archive, red);
    if (!isGrey) {
        appendFloat(archive, green);
        appendFloat(archive, blue);
    }
    appendFloat(archive, rgb.alphaF());
    return archive + endMark;
}

std::optional<QColor> decode(const QByteArray &archive)
{
    QByteArrayView rest(archive);
    if (!rest.startsWith(preamble()) || rest.size() == preamble().size())
        return {};
    const char space = rest.at(preamble().size());
    rest = rest.sliced(preamble().size() + 1);
    float c[4] = {};
    if (space == calibratedRgb && takeFloats(rest, c))
        return QColor::fromRgbF(c[0], c[1], c[2], c[3]);
    if (space == calibratedWhite && takeFloats(rest, std::span(c, 2)))
        return QColor::fromRgbF(c[0], c[0], c[0], c[1]);
    return {};
}

} // namespace Orbita::ColorArchive
