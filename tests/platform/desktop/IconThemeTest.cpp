#include "PrivateSession.h"

#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/IconTheme.h"
#include "platform/desktop/StartupNotifier.h"
#include "platform/desktop/ThemeIcons.h"

#include <QBuffer>
#include <QDir>
#include <QImage>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace Orbita {

namespace {

QString s(const char *text)
{
    return QLatin1String(text);
}

TEST(IconThemeOrder, BeginsWithTheUsersChoiceAndAlwaysEndsInHicolor)
{
    const std::vector<std::tuple<const char *, IconThemeHints, QStringList>> rows{
        {"nothing is known", {}, {s("Papirus"), s("breeze")}},
        {"hicolor is nobody's choice", {false, {}, s("hicolor"), {}, {}, s("hicolor")}, {s("Papirus")}},
        {"the user's setting before the shipped one",
         {false, {}, {}, s("Shipped"), s("Gtk"), s("Qt")},
         {s("Gtk"), s("Qt"), s("Shipped"), s("Papirus")}},
        {"KDE has its own", {true, s("Kde"), s("Gnome"), {}, {}, s("Qt")}, {s("Kde"), s("Qt"), s("Gnome")}},
        {"a file of KDE does not count elsewhere", {false, s("Kde"), s("Gnome"), {}, {}, {}}, {s("Gnome")}}};
    for (const auto &[name, hints, start] : rows) {
        const QStringList order = iconThemeOrder(hints);
        EXPECT_EQ(order.mid(0, start.size()), start) << name;
        EXPECT_EQ(order.last(), s("hicolor")) << name;
        EXPECT_EQ(QSet<QString>(order.begin(), order.end()).size(), order.size()) << name;
    }
}

QByteArray png(int side, Qt::GlobalColor color, int height = 0)
{
    QImage image(side, height != 0 ? height : side, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A theme "Plain", which the schema of this test's session names, that has "probe" in red at 16 and blue at 64.
class ThemeIconsTest : public testing::Test {
protected:
    ThemeIconsTest()
    {
        PrivateSession::clear();
        PrivateSession::write(".local/share/icons/Plain/index.theme",
                              "[Icon Theme]\nName=Plain\nDirectories=16,64\n"
                              "[16]\nSize=16\nType=Fixed\n[64]\nSize=64\nType=Fixed\n");
        PrivateSession::write(".local/share/icons/Plain/16/probe.png", png(16, Qt::red));
        PrivateSession::write(".local/share/icons/Plain/64/probe.png", png(64, Qt::blue));
    }
    static QRgb colorOf(const Image &image, int side) { return image.render({side, side}).pixel(1, 1); }

    ThemeIcons icons;
    const QRgb red = QColor(Qt::red).rgba();
    const QRgb blue = QColor(Qt::blue).rgba();
};

TEST_F(ThemeIconsTest, TheFileForTheSizeIsDrawnAndTheSourceShared)
{
    const Image image = icons.icon({s("missing"), s("probe")});
    EXPECT_EQ(colorOf(image, 16), red);
    EXPECT_EQ(colorOf(image, 60), blue);
    EXPECT_EQ(image, icons.icon({s("probe")}));
}

TEST_F(ThemeIconsTest, ADamagedFileGivesWayToTheNextOne)
{
    PrivateSession::write(".local/share/icons/Plain/16/probe.png", "damaged");
    EXPECT_EQ(colorOf(icons.icon({s("probe")}), 16), blue);
}

TEST_F(ThemeIconsTest, PixmapFoldersComeAfterTheTheme)
{
    PrivateSession::write(".local/share/pixmaps/lonely.png", png(16, Qt::red));
    PrivateSession::write(".local/share/pixmaps/probe.png", png(16, Qt::green));
    EXPECT_EQ(colorOf(icons.icon({s("lonely")}), 16), red);
    EXPECT_EQ(colorOf(icons.icon({s("probe")}), 16), red);
}

TEST_F(ThemeIconsTest, WhatCannotBeDrawnIsDrawnAsDefault)
{
    const QImage expected = Image::named(s("Default")).render({16, 16});
    ASSERT_FALSE(expected.isNull());
    const QString pipe = PrivateSession::path("files/pipe.png");
    mkfifo(QFile::encodeName(pipe).constData(), 0600);
    const QStringList bad{s(""),
                          s("no-such-icon"),
                          s("../../../etc/passwd"),
                          pipe,
                          QDir::homePath(),
                          s("/no/such.png"),
                          PrivateSession::write("files/wide.png", png(20'000, Qt::red, 1)),
                          PrivateSession::write("files/bad.svg", "<svg><g>")};
    for (const QString &name : bad)
        EXPECT_EQ(icons.icon({name}).render({16, 16}), expected) << qPrintable(name);
}

TEST_F(ThemeIconsTest, AnApplicationShowsItsIconWhetherItRunsOrNot)
{
    const GioWorkspace workspace(std::make_unique<NoStartupNotifier>());
    const QString broken
        = PrivateSession::install("broken", "[Desktop Entry]\nType=Application\nName=X\nExec=/no/such\nIcon=probe\n");
    EXPECT_EQ(colorOf(workspace.icon(broken), 64), blue);
    const QString folder = PrivateSession::path("files/F.app");
    PrivateSession::write("files/F.app/.DirIcon", png(16, Qt::red));
    const Probe probe("F.app/AppRun");
    EXPECT_EQ(colorOf(workspace.icon(folder), 16), red);
}

} // namespace

} // namespace Orbita
