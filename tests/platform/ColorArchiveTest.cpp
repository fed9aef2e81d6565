#include "platform/ColorArchive.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

const QByteArray red = QByteArray::fromBase64(
    "BAtzdHJlYW10eXBlZIHoA4QBQISEhAdOU0NvbG9yAISECE5TT2JqZWN0AIWEAWMBhARmZmZmg/j3dz+DlZSUPoP5+Hg+AYY=");
const QByteArray white
    = QByteArray::fromBase64("BAtzdHJlYW10eXBlZIHoA4QBQISEhAdOU0NvbG9yAISECE5TT2JqZWN0AIWEAWMDhAJmZgEBhg==");

TEST(ColorArchive, isThatOfTheOtherPlatform)
{
    EXPECT_EQ(ColorArchive::encode(QColor(247, 74, 62)), red);
    EXPECT_EQ(ColorArchive::encode(Qt::white), white);
    EXPECT_EQ(ColorArchive::decode(red), QColor(247, 74, 62));
    EXPECT_EQ(ColorArchive::decode(white), QColor(Qt::white));
}

TEST(ColorArchive, keepsEveryColor)
{
    for (int i = 0; i < 256; ++i) {
        for (const QColor &color : {QColor(i, i, i), QColor(i, 255 - i, 7), QColor(i, i, i, i), QColor(0, i, 255, i)})
            EXPECT_EQ(ColorArchive::decode(ColorArchive::encode(color)), color) << qPrintable(color.name());
    }
    EXPECT_EQ(ColorArchive::decode(ColorArchive::encode(QColor::fromHsv(120, 255, 255))), QColor(0, 255, 0));
}

/// The white or red archive with \a count bytes from \a at on replaced by \a by.
QByteArray with(QByteArray archive, qsizetype at, qsizetype count, const QByteArray &by)
{
    return archive.replace(at, count, by);
}

const qsizetype redAt = red.indexOf("\x84\x04") + 6;

TEST(ColorArchive, refusesOtherBytes)
{
    const std::vector<std::pair<const char *, QByteArray>> rows{
        {"nothing", {}},
        {"text", "red"},
        {"one byte too many", white + '\0'},
        {"another class", with(red, red.indexOf("NSColor"), 7, "NSImage")},
        {"another colour space", with(red, redAt - 7, 1, "\x05")},
        {"the wrong components for its space", with(white, white.size() - 7, 1, "\x01")},
        {"a component that is no number", with(red, redAt, 5, QByteArray("\x83\0\0\xc0\x7f", 5))},
        {"an infinite component", with(red, redAt, 5, QByteArray("\x83\0\0\x80\x7f", 5))},
        {"a component of another type", with(red, redAt, 1, "\x82")}};
    for (const auto &[name, archive] : rows)
        EXPECT_EQ(ColorArchive::decode(archive), std::nullopt) << name;
}

TEST(ColorArchive, clampsComponentsAndRefusesPieces)
{
    const QByteArray two = with(red, redAt, 5, QByteArray("\x83\0\0\0\x40", 5));
    EXPECT_EQ(ColorArchive::decode(two), QColor(255, 74, 62));
    for (const QByteArray &whole : {red, white})
        for (qsizetype size = 0; size < whole.size(); ++size)
            EXPECT_EQ(ColorArchive::decode(whole.first(size)), std::nullopt);
}

} // namespace
} // namespace Orbita
