#include "model/AppleScriptMenuItem.h"
#include "model/LinkAddress.h"
#include "model/LinkMenuItem.h"
#include "support/MemoryDesktop.h"

#include <QCryptographicHash>
#include <QDir>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

Image picture()
{
    QImage pixels(8, 8, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    return Image::fromPixels(pixels);
}

struct LinkAndScriptTest : testing::Test {
    MemoryDesktop desktop;
    const std::shared_ptr<LinkMenuItem> link
        = std::make_shared<LinkMenuItem>(u"https://example.org/a"_s, desktop.services);
    const std::shared_ptr<AppleScriptMenuItem> script
        = std::make_shared<AppleScriptMenuItem>(u"Hello"_s, desktop.services);

    [[nodiscard]] QStringList storedPictures() const
    {
        return QDir(desktop.container.directories().container + u"/ImageStore"_s).entryList(QDir::Files);
    }
};

TEST(LinkName, isTheHostOrHowTheAddressBegins)
{
    for (const auto &[address, name] :
         {std::pair(u"https://user@www.example.org:8080/a?b"_s, u"www.example.org"_s), std::pair(u"abc"_s, u"abc"_s),
          std::pair(u"mailto:someone"_s, u"mailto:som..."_s), std::pair(u"1234567890"_s, u"1234567890"_s),
          std::pair(u"12345678901"_s, u"1234567890..."_s), std::pair(u""_s, u""_s)})
        EXPECT_EQ(linkName(address), name);
}

TEST_F(LinkAndScriptTest, anAddressThatLeadsNowhereIsOneLineInTheLog)
{
    for (const QString &address :
         {u""_s, u" \n"_s, u"www.example.org"_s, u"/etc/passwd"_s, u"//example.org"_s, u"javascript:alert(1)"_s,
          u" JavaScript:alert(1)"_s, u"java\nscript:alert(1)"_s, u"data:text/html,x"_s, u"http://[::1"_s,
          u"https://example.org/"_s + QString(100'000, u'x'), u"a\nb\x1b[31m"_s + QString(9'000, u' ')}) {
        testing::internal::CaptureStderr();
        LinkMenuItem(address, desktop.services).open();
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
        EXPECT_EQ(log.find('\x1b'), std::string::npos);
    }
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());
    link->open();
    LinkMenuItem(u" file:///a%20b\n"_s, desktop.services).open();
    EXPECT_EQ(desktop.workspace.actions, (QStringList{u"open https://example.org/a"_s, u"open file:///a b"_s}));
}

TEST_F(LinkAndScriptTest, comeBackFromTheirDictionaries)
{
    // Of the 473 bytes as written down, from md5sum.
    const QString sample = script->script();
    EXPECT_EQ(sample.size(), 473);
    EXPECT_EQ(QCryptographicHash::hash(sample.toUtf8(), QCryptographicHash::Md5).toHex(),
              "4f66c484e3e35591cda5ee420c3997c5");
    EXPECT_EQ(script->dictionaryRepresentation(),
              (QVariantMap{{u"class"_s, u"AppleScriptMenuItem"_s},
                           {u"name"_s, u"Hello"_s},
                           {u"imageKey"_s, u""_s},
                           {u"script"_s, sample}}));
    EXPECT_EQ(link->dictionaryRepresentation(),
              (QVariantMap{{u"class"_s, u"LinkMenuItem"_s},
                           {u"name"_s, u"example.org"_s},
                           {u"imageKey"_s, u""_s},
                           {u"url"_s, u"https://example.org/a"_s}}));
    EXPECT_EQ(script->identity(), u"AppleScriptMenuItemHello"_s + sample);
    EXPECT_EQ(link->identity(), u"LinkMenuItemexample.orghttps://example.org/a"_s);
    for (const auto &item : std::initializer_list<MenuItem::Pointer>{link, script}) {
        item->rename(u"Other"_s);
        const auto again = MenuItem::fromDictionary(*item->dictionaryRepresentation(), desktop.services);
        EXPECT_EQ(again->identity(), item->identity());
        const QVariantMap bare{{u"class"_s, item->dictionaryRepresentation()->value(u"class"_s)}, {u"name"_s, 7}};
        EXPECT_EQ(MenuItem::fromDictionary(bare, desktop.services)->name(), QString());
    }
}

TEST_F(LinkAndScriptTest, keepOnePictureEachUntilTheyAreRemoved)
{
    EXPECT_EQ(link->image(), Image::named(u"Bookmark"_s));
    EXPECT_EQ(script->image(), Image::named(u"Script"_s));
    script->setImage(picture());
    link->setImage(picture());
    const QString first = link->imageKey();
    link->setImage(picture());
    EXPECT_NE(link->imageKey(), first);
    const QStringList both = storedPictures();
    EXPECT_EQ(both.size(), 2);
    EXPECT_TRUE(both.contains(link->imageKey() + u".tif"_s));
    EXPECT_EQ(link->image(), link->image()) << "or it would be drawn anew for each ring";
    EXPECT_EQ(link->image().render({8, 8}), picture().render({8, 8}));

    link->setImage(Image::fromFile(desktop.container.write(u"damaged.png"_s, "\x89PNG\r\n\x1a\n")));
    EXPECT_EQ(storedPictures(), both) << "the old picture stays";
    link->willBeRemoved();
    EXPECT_EQ(storedPictures(), QStringList(script->imageKey() + u".tif"_s));
    EXPECT_EQ(link->image(), Image::named(u"Bookmark"_s));
    AppleScriptMenuItem(u"without"_s, desktop.services).willBeRemoved();
    EXPECT_EQ(storedPictures().size(), 1);
}

TEST_F(LinkAndScriptTest, areEditedWithTheirPictures)
{
    int completed = 0;
    for (const auto &item : std::initializer_list<std::shared_ptr<PicturedMenuItem>>{link, script}) {
        const QVariantMap before = *item->dictionaryRepresentation();
        desktop.editors.newText.reset();
        item->startEditing(nullptr, [&completed] { ++completed; });
        EXPECT_EQ(item->dictionaryRepresentation(), before);
        desktop.editors.newText = u"mailto:a"_s;
        desktop.editors.newImage = picture();
        item->startEditing(nullptr, [&completed] { ++completed; });
        EXPECT_EQ(item->name(), before.value(u"name"_s));
    }
    EXPECT_EQ(completed, 4);
    EXPECT_EQ(link->urlString(), u"mailto:a"_s);
    EXPECT_EQ(script->script(), u"mailto:a"_s);
    EXPECT_EQ(storedPictures().size(), 2);
    EXPECT_EQ(desktop.editors.sessions[0].image, Image::named(u"Bookmark"_s));
    EXPECT_EQ(desktop.editors.sessions[2].title, u"Apple Script - Hello"_s);
    EXPECT_EQ(desktop.editors.sessions[2].text, AppleScriptMenuItem::sampleScript());
}

TEST_F(LinkAndScriptTest, aScriptGoesToTheCompanionWhereThereIsOne)
{
    script->open();
    EXPECT_TRUE(desktop.toolkit.sent.empty());
    desktop.toolkit.isReachable = true;
    script->open();
    ASSERT_EQ(desktop.toolkit.sent.size(), 1U);
    EXPECT_EQ(desktop.toolkit.sent[0].name(), u"executeApplescript"_s);
    EXPECT_EQ(desktop.toolkit.sent[0].params(), (VXRemoteAction::Parameters{{u"script"_s, script->script()}}));
}

} // namespace
} // namespace Orbita
