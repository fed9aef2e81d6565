#include "platform/Image.h"
#include "platform/SvgContent.h"

#include "support/TemporaryContainer.h"

#include <QBuffer>
#include <QImageWriter>

#include <gtest/gtest.h>

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

TEST(Image, AFileIsFittedOrNothing)
{
    const QByteArray drawing = svg("<rect width='40' height='20'/>");
    const QByteArray absurd = svg("<rect width='9' height='9'/>", "width='2000000000' height='1000000000'");
    const QByteArray turned = encoded(plain(400, 100), "jpg", QImageIOHandler::TransformationRotate90);
    const std::vector<std::tuple<const char *, const char *, QByteArray, int, QSize>> rows{
        {"a bitmap shrinks in its proportions", "a.png", encoded(plain(400, 100), "png"), 100, {100, 25}},
        {"a bitmap does not grow", "a.png", encoded(plain(10, 20), "png"), 100, {10, 20}},
        {"a thin one keeps a pixel", "a.png", encoded(plain(2000, 1), "png"), 20, {20, 1}},
        {"a drawing grows", "a.svg", drawing, 100, {100, 50}},
        {"a drawing under a wrong name", "a.png", drawing, 100, {100, 50}},
        {"a drawing of absurd size", "a.svg", absurd, 64, {64, 32}},
        {"a photo that lies on its side", "a.jpg", turned, 100, {25, 100}},
        {"the largest picture", "a.jpg", encoded(plain(8192, 8192), "jpg"), 32, {32, 32}},
        {"one pixel too wide", "a.png", encoded(plain(8193, 1), "png"), 32, {0, 0}},
        {"half a file", "a.jpg", "\xff\xd8\xff\xe0 noise", 32, {0, 0}},
        {"no picture", "a.txt", "%!PS-Adobe-3.0 EPSF-3.0\n", 32, {0, 0}},
        {"an empty file", "a.png", {}, 32, {0, 0}}};
    for (const auto &[name, fileName, content, side, size] : rows) {
        const TemporaryContainer container;
        const QImage drawn = Image::fromFile(container.write(QLatin1String(fileName), content)).render({side, side});
        EXPECT_EQ(drawn.size(), size) << name;
        EXPECT_TRUE(drawn.isNull() || drawn.format() == QImage::Format_ARGB32_Premultiplied) << name;
    }
}

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

TEST(SvgSafety, IsToldBeforeDrawing)
{
    const QByteArray circle = "<g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g>";
    const QByteArray entities = "<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaaaaaaaaaaaa'>"
                                "<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
                                "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'>"
                                "<!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'>]>";
    const std::vector<std::tuple<const char *, QByteArray, bool>> rows{
        {"a plain one", svg("<rect width='1' height='1'/>"), true},
        {"moderate nesting", nested(150), true},
        {"deep nesting", nested(100'000), false},
        {"some repetition", multiplied(3), true},
        {"repetition of repetition", multiplied(9), false},
        {"an element within itself", svg(circle), false},
        {"a picture from a file", svg("<image xlink:href='/dev/zero'/>"), false},
        {"a picture within", svg("<image xlink:href='data:image/png;base64,AAAA'/>"), true},
        {"a link to a page", svg("<a xlink:href='https://example.org'><g/></a>"), true},
        {"entities that multiply", entities + svg("<text>&d;&d;&d;</text>"), false},
        {"cut short", "<svg><g>", false},
        {"too many elements", svg(QByteArray("<g/>").repeated(200'001)), false}};
    for (const auto &[name, document, isSafe] : rows)
        EXPECT_EQ(isSafeSvg(document), isSafe) << name;
}

TEST(Image, ColorControlsFollowTheEquations)
{
    const std::vector<std::tuple<const char *, QColor, float, float, float, QColor>> rows{
        {"neutral values change nothing", {10, 130, 250}, 0, 1, 1, {10, 130, 250}},
        {"grey is the luminance", {255, 0, 0}, 0, 1, 0, {54, 54, 54}},
        {"contrast moves away from one half", {255, 0, 0}, 0, 1.1F, 0, {47, 47, 47}},
        {"brightness is clamped", {250, 100, 0}, 0.1F, 1, 1, {255, 126, 26}},
        {"alpha stays", {255, 255, 255, 128}, 0, 1, 0, {255, 255, 255, 128}},
        {"nothing stays nothing", {255, 255, 255, 0}, 0, 1.1F, 0, {0, 0, 0, 0}}};
    for (const auto &[name, from, brightness, contrast, saturation, to] : rows) {
        SCOPED_TRACE(name);
        const Image image = Image::fromPixels(plain(2, 2, from));
        const Image changed = colorControlled(image, brightness, contrast, saturation);
        const QColor color = changed.render({2, 2}).pixelColor(1, 1);
        EXPECT_NEAR(color.red(), to.red(), 1);
        EXPECT_NEAR(color.green(), to.green(), 1);
        EXPECT_NEAR(color.blue(), to.blue(), 1);
        EXPECT_EQ(color.alpha(), to.alpha());
        EXPECT_NE(changed.key(), image.key());
    }
}

} // namespace

} // namespace Orbita
