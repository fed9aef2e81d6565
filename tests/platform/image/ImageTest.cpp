#include "platform/Image.h"
#include "platform/SvgContent.h"

#include "support/RowName.h"
#include "support/TemporaryContainer.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace Orbita {

namespace {

QByteArray encoded(const QImage &image, const char *format,
                   QImageIOHandler::Transformation turn = QImageIOHandler::TransformationNone)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setTransformation(turn);
    writer.write(image);
    return bytes;
}

QImage plain(int width, int height, QColor color = Qt::red)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

QByteArray svg(const QByteArray &content, const QByteArray &attributes = "width='40' height='20'")
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' " + attributes + ">"
        + content + "</svg>";
}

struct SizeRow {
    const char *name;
    const char *fileName;
    std::function<QByteArray()> content;
    QSize asked;
    QSize size; ///< empty when nothing may be drawn
};

class FileSize : public testing::TestWithParam<SizeRow> {};

TEST_P(FileSize, IsFittedOrNothing)
{
    const TemporaryContainer container;
    const QString path = container.write(QLatin1String(GetParam().fileName), GetParam().content());
    const QImage drawn = Image::fromFile(path).render(GetParam().asked);
    EXPECT_EQ(drawn.size(), GetParam().size);
    EXPECT_TRUE(drawn.isNull() || drawn.format() == QImage::Format_ARGB32_Premultiplied);
}

INSTANTIATE_TEST_SUITE_P(
    Files, FileSize,
    testing::Values(
        SizeRow{"a bitmap shrinks in its proportions",
                "a.png",
                [] { return encoded(plain(400, 100), "png"); },
                {100, 100},
                {100, 25}},
        SizeRow{"a bitmap does not grow", "a.png", [] { return encoded(plain(10, 20), "png"); }, {100, 100}, {10, 20}},
        SizeRow{"a thin one keeps a pixel", "a.png", [] { return encoded(plain(2000, 1), "png"); }, {20, 20}, {20, 1}},
        SizeRow{
            "a drawing grows", "a.svg", [] { return svg("<rect width='40' height='20'/>"); }, {100, 100}, {100, 50}},
        SizeRow{"a drawing under a wrong name",
                "a.png",
                [] { return svg("<rect width='40' height='20'/>"); },
                {100, 100},
                {100, 50}},
        SizeRow{"a drawing of absurd size",
                "a.svg",
                [] { return svg("<rect width='9' height='9'/>", "width='2000000000' height='1000000000'"); },
                {64, 64},
                {64, 32}},
        SizeRow{"a photo that lies on its side",
                "a.jpg",
                [] { return encoded(plain(400, 100), "jpg", QImageIOHandler::TransformationRotate90); },
                {100, 100},
                {25, 100}},
        SizeRow{"the largest picture", "a.jpg", [] { return encoded(plain(8192, 8192), "jpg"); }, {32, 32}, {32, 32}},
        SizeRow{"one pixel too wide", "a.png", [] { return encoded(plain(8193, 1), "png"); }, {32, 32}, {0, 0}},
        SizeRow{"half a file", "a.jpg", [] { return QByteArray("\xff\xd8\xff\xe0 noise"); }, {32, 32}, {0, 0}},
        SizeRow{"no picture", "a.txt", [] { return QByteArray("%!PS-Adobe-3.0 EPSF-3.0\n"); }, {32, 32}, {0, 0}},
        SizeRow{"an empty file", "a.png", [] { return QByteArray(); }, {32, 32}, {0, 0}}),
    rowName<SizeRow>);

struct SvgRow {
    const char *name;
    std::function<QByteArray()> document;
    bool isSafe;
};

QByteArray nested(int depth)
{
    return svg(QByteArray("<g>").repeated(depth) + QByteArray("</g>").repeated(depth));
}

/// Each level draws the one before ten times.
QByteArray multiplied(int levels)
{
    QByteArray content = "<defs><g id='l0'><rect width='1' height='1'/></g>";
    for (int level = 1; level <= levels; ++level) {
        const QByteArray use = "<use xlink:href='#l" + QByteArray::number(level - 1) + "'/>";
        content += "<g id='l" + QByteArray::number(level) + "'>" + use.repeated(10) + "</g>";
    }
    return svg(content + "</defs><use xlink:href='#l" + QByteArray::number(levels) + "'/>");
}

class SvgSafety : public testing::TestWithParam<SvgRow> {};

TEST_P(SvgSafety, IsToldBeforeDrawing)
{
    EXPECT_EQ(isSafeSvg(GetParam().document()), GetParam().isSafe);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, SvgSafety,
    testing::Values(
        SvgRow{"a plain one", [] { return svg("<rect width='1' height='1'/>"); }, true},
        SvgRow{"moderate nesting", [] { return nested(150); }, true},
        SvgRow{"deep nesting", [] { return nested(100'000); }, false},
        SvgRow{"some repetition", [] { return multiplied(3); }, true},
        SvgRow{"repetition of repetition", [] { return multiplied(9); }, false},
        SvgRow{"an element within itself",
               [] { return svg("<g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g>"); }, false},
        SvgRow{"a picture from a file", [] { return svg("<image xlink:href='/dev/zero'/>"); }, false},
        SvgRow{"a picture within", [] { return svg("<image xlink:href='data:image/png;base64,AAAA'/>"); }, true},
        SvgRow{"a link to a page", [] { return svg("<a xlink:href='https://example.org'><g/></a>"); }, true},
        SvgRow{
            "entities that multiply",
            [] {
                return "<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaaaaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
                       "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'>]>"
                    + svg("<text>&d;&d;&d;</text>");
            },
            false},
        SvgRow{"cut short", [] { return QByteArray("<svg><g>"); }, false},
        SvgRow{"too many elements", [] { return svg(QByteArray("<g/>").repeated(200'001)); }, false}),
    rowName<SvgRow>);

TEST(Image, APipeOrAFolderIsNotOpenedAndTheFallbackIsDrawn)
{
    const TemporaryContainer container;
    const QString pipe = container.path(QStringLiteral("pipe.svg"));
    mkfifo(QFile::encodeName(pipe).constData(), 0600);
    const Image fallback = Image::fromPixels(plain(4, 4));
    for (const QString &path : {pipe, container.path(QStringLiteral(".")), QString()})
        EXPECT_EQ(Image::fromFile(path, fallback).render({8, 8}), fallback.render({8, 8}));
    EXPECT_TRUE(Image::fromFile(pipe).render({8, 8}).isNull());
}

struct ColorRow {
    const char *name;
    QColor from;
    float brightness;
    float contrast;
    float saturation;
    QColor to;
};

class ColorControlled : public testing::TestWithParam<ColorRow> {};

TEST_P(ColorControlled, FollowsTheEquations)
{
    const Image image = Image::fromPixels(plain(2, 2, GetParam().from));
    const Image changed = colorControlled(image, GetParam().brightness, GetParam().contrast, GetParam().saturation);
    const QColor color = changed.render({2, 2}).pixelColor(1, 1);
    EXPECT_NEAR(color.red(), GetParam().to.red(), 1);
    EXPECT_NEAR(color.green(), GetParam().to.green(), 1);
    EXPECT_NEAR(color.blue(), GetParam().to.blue(), 1);
    EXPECT_EQ(color.alpha(), GetParam().to.alpha());
    EXPECT_NE(changed.key(), image.key());
}

INSTANTIATE_TEST_SUITE_P(
    Colors, ColorControlled,
    testing::Values(ColorRow{"neutral values change nothing", {10, 130, 250}, 0, 1, 1, {10, 130, 250}},
                    ColorRow{"grey is the luminance", {255, 0, 0}, 0, 1, 0, {54, 54, 54}},
                    ColorRow{"contrast moves away from one half", {255, 0, 0}, 0, 1.1F, 0, {47, 47, 47}},
                    ColorRow{"brightness is clamped", {250, 100, 0}, 0.1F, 1, 1, {255, 126, 26}},
                    ColorRow{"alpha stays", {255, 255, 255, 128}, 0, 1, 0, {255, 255, 255, 128}},
                    ColorRow{"nothing stays nothing", {255, 255, 255, 0}, 0, 1.1F, 0, {0, 0, 0, 0}}),
    rowName<ColorRow>);

} // namespace

} // namespace Orbita
