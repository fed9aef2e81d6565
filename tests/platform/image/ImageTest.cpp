#include "platform/Image.h"
#include "platform/SvgContent.h"

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

TEST(Image, NothingWaitsForAPipe)
{
    const TemporaryContainer container;
    for (const char *name : {"a.png", "a.svg", ".DirIcon"}) {
        const QString pipe = container.path(QLatin1String(name));
        ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        EXPECT_TRUE(Image::fromFile(pipe).render({9, 9}).isNull()) << name;
    }
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

QByteArray dataAddress(const QByteArray &bytes, const QByteArray &type = "image/png")
{
    return "data:" + type + ";base64," + bytes.toBase64();
}

/// A picture of \a attributes, which hold its address.
QByteArray picture(const QByteArray &attributes)
{
    return "<image width='9' height='9' " + attributes + "/>";
}

QByteArray attributes(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += "a" + QByteArray::number(i) + "='>' ";
    return text;
}

/// Each gradient takes its colours from the next one.
QByteArray gradients(int count)
{
    QByteArray content;
    for (int i = 0; i < count; ++i)
        content
            += "<linearGradient id='g" + QByteArray::number(i) + "' xlink:href='#g" + QByteArray::number(i + 1) + "'/>";
    return svg(content + "<rect width='9' height='9' fill='url(#g0)'/>");
}

using SafetyRows = std::vector<std::tuple<const char *, QByteArray, bool>>;

void expectSafety(const SafetyRows &rows)
{
    for (const auto &[name, document, isSafe] : rows)
        EXPECT_EQ(isSafeSvg(document), isSafe) << name;
}

TEST(SvgSafety, KeepsOtherFilesOut)
{
    const QByteArray png = dataAddress(encoded(plain(3, 3), "png"));
    const QByteArray wrapped = QByteArray(png).replace("iVBO", "iV\n BO");
    const QByteArray jpeg = dataAddress(encoded(plain(3, 3), "jpg"), "image/jpeg");
    const QByteArray webp = dataAddress(encoded(plain(3, 3), "webp"), "image/webp");
    const QByteArray drawing = dataAddress(svg(picture("xlink:href='/dev/zero'")), "image/svg+xml");
    const QByteArray lying = dataAddress(svg(picture("xlink:href='/dev/zero'")));
    const QByteArray sheet = "<?xml-stylesheet type=\"text/css\" href=\"/dev/zero\"?>";
    const QByteArray entity = "<!DOCTYPE svg [<!ENTITY f '/dev/zero'>]>";
    const QByteArray defaults = "<!DOCTYPE svg [<!ATTLIST image xlink:href CDATA '/dev/zero'>]>";
    expectSafety({
        {"a bitmap within", svg(picture("xlink:href='" + png + "'")), true},
        {"a bitmap whose address is wrapped", svg(picture("xlink:href=' " + wrapped + "'")), true},
        {"other kinds of bitmaps", svg(picture("xlink:href='" + jpeg + "'") + picture("href='" + webp + "'")), true},
        {"half a bitmap", svg(picture("xlink:href='" + png.first(60) + "'")), false},
        {"what is no bitmap", svg(picture("xlink:href='data:image/png;base64,AAAA'")), false},
        {"a drawing within", svg(picture("xlink:href='" + drawing + "'")), false},
        {"a drawing that claims to be a bitmap", svg(picture("xlink:href='" + lying + "'")), false},
        {"a drawing that is not in base64", svg(picture("xlink:href='data:image/svg+xml,%3Csvg/%3E'")), false},
        {"an address with two contents", svg(picture("xlink:href='" + png + ";base64,AAAA'")), false},
        {"a file", svg(picture("xlink:href='/dev/zero'")), false},
        {"a file before a bitmap", svg(picture("xlink:href='/dev/zero' href='" + png + "'")), false},
        {"a file behind a bitmap", svg(picture("href='" + png + "' xlink:href='/dev/zero'")), false},
        {"a file under another prefix", svg(picture("xmlns:x='x' x:href='/dev/zero'")), false},
        {"a file under an unknown prefix", "<svg>" + picture("xlink:href='/dev/zero'") + "</svg>", false},
        {"a picture under a prefix", "<s:svg><s:image xlink:href='/dev/zero'/></s:svg>", false},
        {"a folder called like a bitmap", svg(picture("xlink:href='data/../../dev/zero'")), false},
        {"a file that an entity names", entity + svg(picture("xlink:href='&f;'")), false},
        {"a file that is the default", defaults + svg(picture("")), false},
        {"a style sheet", sheet + svg({}), false},
        {"a style sheet within", svg(sheet), false},
        {"another instruction", svg("<?note href=\"/dev/zero\"?>"), true},
        {"an element of another file", svg("<use xlink:href='/dev/zero#a'/>"), false},
        {"a font in another file", svg("<font-face-uri xlink:href='/dev/zero'/>"), false},
        {"a link to a page", svg("<a xlink:href='https://example.org'><g/></a>"), true},
    });
}

TEST(SvgSafety, EndsInGoodTime)
{
    const QByteArray circle = "<g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g>";
    const QByteArray hiddenCircle = "<g id='a'><use href='#a'/></g><g id='a'/>";
    const QByteArray style = "<style>" + QByteArray("g,").repeated(1000) + "g{}</style>";
    const QByteArray entities = "<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaaaaaaaaaaaa'>"
                                "<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>]>";
    const QByteArray entity = "<!DOCTYPE svg [<!ENTITY a 'red'>]>";
    const QByteArray attribute = "<!ATTLIST svg xmlns:xlink CDATA #FIXED 'http://www.w3.org/1999/xlink'>";
    const QByteArray path = "<defs><path id='a' d='M" + QByteArray("0 0 ").repeated(10'000) + "'/></defs>";
    const QByteArray wide = dataAddress(encoded(plain(8193, 1), "png"));
    const QByteArray large
        = "xlink:href='" + dataAddress(encoded(plain(4096, 4096).convertToFormat(QImage::Format_Mono), "png")) + "'";
    expectSafety({
        {"a plain one", svg("<rect width='1' height='1'/>"), true},
        {"moderate nesting", nested(150), true},
        {"deep nesting", nested(100'000), false},
        {"some repetition", multiplied(3), true},
        {"repetition of repetition", multiplied(9), false},
        {"a long path drawn often", svg(path + QByteArray("<use xlink:href='#a'/>").repeated(1000)), false},
        {"an element within itself", svg(circle), false},
        {"an element within another of its name", svg(hiddenCircle), false},
        {"some gradients", gradients(100), true},
        {"a long row of gradients", gradients(1000), false},
        {"an entity", entity + svg("<g fill='&a;'/>"), true},
        {"entities that multiply", entities + svg("<text>&b;&b;&b;</text>"), false},
        {"an entity that is used too often", entity + svg("<text>" + QByteArray("&a;").repeated(2000) + "</text>"),
         false},
        {"an entity that is an element", "<!DOCTYPE svg [<!ENTITY a '&#60;g/>'>]>" + svg("&a;"), false},
        {"an attribute with a default", "<!DOCTYPE svg [" + attribute + "]>" + svg("<g/>"), true},
        {"many such attributes", "<!DOCTYPE svg [" + attribute.repeated(1000) + "]>" + svg("<g/>"), false},
        {"many attributes", svg("<g " + attributes(1000) + "/>"), false},
        {"another alphabet", "<?xml version='1.0' encoding='UTF-7'?>" + svg("+ADw-g/+AD4-"), false},
        {"letters of two bytes", QByteArray("\xff\xfe<\0s\0v\0g\0/\0>\0", 14), false},
        {"a long text", svg("<textArea>" + QByteArray("a ").repeated(500'000) + "</textArea>"), false},
        {"a long text in large letters",
         svg("<font><glyph unicode='a' d='M" + QByteArray("0 0 ").repeated(10'000) + "'/></font><text>"
             + QByteArray("a").repeated(1000) + "</text>"),
         false},
        {"a style for some elements", svg(style + QByteArray("<g/>").repeated(100)), true},
        {"a style for many elements", svg(style + QByteArray("<g/>").repeated(10'000)), false},
        {"dashes", svg("<path stroke-dasharray='0.1' d='M0 0h9'/>"), false},
        {"dashes in a style", svg("<g style='fill:red;stroke-dashARRAY:1'/>"), false},
        {"dashes in a style with escapes", svg("<g style='stroke-\\64 asharray:1'/>"), false},
        {"dashes in a sheet of two pieces", svg("<style>g{stroke-dash<![CDATA[array:1}]]></style>"), false},
        {"a bitmap that is too wide", svg(picture("xlink:href='" + wide + "'")), false},
        {"two large bitmaps", svg(picture(large).repeated(2)), true},
        {"three large bitmaps", svg(picture(large).repeated(3)), false},
        {"cut short", "<svg><g>", false},
        {"too many elements", svg(QByteArray("<g/>").repeated(200'001)), false},
    });
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
