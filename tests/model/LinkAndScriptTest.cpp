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

struct LinkAndScriptTest : testing::Test {
    MemoryDesktop desktop;
    const std::shared_ptr<LinkMenuItem> link = std::make_shared<LinkMenuItem>(u"https://a.org/b"_s, desktop.services);
    const std::shared_ptr<AppleScriptMenuItem> script
        = std::make_shared<AppleScriptMenuItem>(u"Hello"_s, desktop.services);
    const Image picture = Image::fromPixels(QImage(8, 8, QImage::Format_RGB32));

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
          std::pair(u"12345678901"_s, u"1234567890..."_s)})
        EXPECT_EQ(linkName(address), name);
}

TEST_F(LinkAndScriptTest, anAddressThatLeadsNowhereIsOneLineInTheLog)
{
    for (const QString &address :
         {u""_s, u" \n"_s, u"www.example.org"_s, u"/etc/passwd"_s, u"//example.org"_s, u" JavaScript:alert(1)"_s,
          u"java\nscript:alert(1)"_s, u"data:text/html,x"_s, u"http://[::1"_s,
          u"https://example.org/"_s + QString(100'000, u'x'), u"a\nb\x1b[31m"_s + QString(9'000, u' ')}) {
        LinkMenuItem item(address, desktop.services);
        item.rename(address);
        testing::internal::CaptureStderr();
        item.open();
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(std::ranges::count(log, '\n') == 1 && log.find('\x1b') == log.npos && log.size() < 400) << log;
    }
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());
    link->open();
    LinkMenuItem(u" file:///a%20b\n"_s, desktop.services).open();
    EXPECT_EQ(desktop.workspace.actions, (QStringList{u"open https://a.org/b"_s, u"open file:///a b"_s}));
}

TEST_F(LinkAndScriptTest, haveTheStoredFormsThatTheyComeBackFrom)
{
    // Of the 473 bytes as written down, from md5sum.
    const QByteArray sample = script->script().toUtf8();
    EXPECT_EQ(sample.size(), 473);
    EXPECT_EQ(QCryptographicHash::hash(sample, QCryptographicHash::Md5).toHex(), "4f66c484e3e35591cda5ee420c3997c5");
    for (const auto &[item, kind, textKey, text] :
         {std::tuple<MenuItem::Pointer, QString, QString, QString>{link, u"LinkMenuItem"_s, u"url"_s,
                                                                   link->urlString()},
          {script, u"AppleScriptMenuItem"_s, u"script"_s, script->script()}}) {
        item->rename(u"N"_s);
        const QVariantMap stored{{u"class"_s, kind}, {u"name"_s, u"N"_s}, {u"imageKey"_s, u""_s}, {textKey, text}};
        EXPECT_EQ(item->dictionaryRepresentation(), stored);
        EXPECT_EQ(MenuItem::fromDictionary(stored, desktop.services)->identity(), kind + u"N"_s + text);
        EXPECT_EQ(MenuItem::fromDictionary({{u"class"_s, kind}, {u"name"_s, 7}}, desktop.services)->identity(), kind);
    }
}

TEST_F(LinkAndScriptTest, keepTheirPicturesUntilTheEntriesThatNameThemNoMoreAreSaved)
{
    EXPECT_EQ(link->image(), Image::named(u"Bookmark"_s));
    EXPECT_EQ(script->image(), Image::named(u"Script"_s));
    script->setImage(picture);
    link->setImage(picture);
    link->setImage(picture);
    EXPECT_EQ(storedPictures().size(), 3) << "the entry that is stored names the old one";
    desktop.imageStore.removeDiscarded({link->dictionaryRepresentation().value(), *script->dictionaryRepresentation()});
    const QStringList both = storedPictures();
    EXPECT_EQ(both.size(), 2);
    EXPECT_TRUE(both.contains(link->imageKey() + u".tif"_s));
    EXPECT_EQ(link->image(), link->image()) << "or it would be drawn anew for each ring";
    link->setImage(Image::fromFile(desktop.container.write(u"damaged.png"_s, "no picture")));
    const QString store = desktop.container.directories().container + u"/ImageStore"_s;
    ASSERT_TRUE(QDir().rename(store, store + u".away"_s));
    desktop.container.write(u"data/ImageStore"_s, "no folder");
    EXPECT_FALSE(link->setImage(picture));
    desktop.editors.newText = u"https://a.org/new"_s;
    desktop.editors.newImage = picture;
    link->startEditing(nullptr, {});
    EXPECT_EQ(desktop.notifications.notifications.size(), 1);
    EXPECT_TRUE(desktop.drafts.draftOf(link->identity())->picture) << "there to be saved another time";
    ASSERT_TRUE(QFile::remove(store) && QDir().rename(store + u".away"_s, store));
    EXPECT_EQ(storedPictures(), both) << "the old picture stays";
    EXPECT_TRUE(both.contains(link->imageKey() + u".tif"_s));
    link->willBeRemoved();
    script->willBeRemoved();
    EXPECT_EQ(storedPictures(), both);
    const QVariantMap collection{{u"class"_s, u"CollectionMenuItem"_s},
                                 {u"subitems"_s, QVariantList{*script->dictionaryRepresentation()}}};
    desktop.imageStore.removeDiscarded({collection});
    EXPECT_EQ(storedPictures(), QStringList(script->imageKey() + u".tif"_s)) << "it was only moved";
    EXPECT_EQ(MenuItem::fromDictionary(*link->dictionaryRepresentation(), desktop.services)->image(),
              Image::named(u"Bookmark"_s));
}

TEST_F(LinkAndScriptTest, areEditedWithTheirPictures)
{
    int completed = 0;
    for (const auto &item : std::initializer_list<MenuItem::Pointer>{link, script}) {
        const auto before = item->dictionaryRepresentation();
        desktop.editors.newText.reset();
        item->startEditing(nullptr, [&completed] { ++completed; });
        EXPECT_EQ(item->dictionaryRepresentation(), before);
        desktop.editors.newText = u"mailto:a"_s;
        desktop.editors.newImage = picture;
        item->startEditing(nullptr, [&completed] { ++completed; });
    }
    EXPECT_EQ(completed, 4);
    EXPECT_EQ(link->identity(), u"LinkMenuItema.orgmailto:a"_s);
    EXPECT_EQ(script->script(), u"mailto:a"_s);
    EXPECT_EQ(storedPictures().size(), 2);
    EXPECT_EQ(desktop.editors.sessions[0].image, Image::named(u"Bookmark"_s));
    EXPECT_EQ(desktop.editors.sessions[2].title, u"Apple Script - Hello"_s);
}

TEST_F(LinkAndScriptTest, aScriptGoesToTheCompanionWhereThereIsOne)
{
    script->open();
    EXPECT_TRUE(desktop.toolkit.sent.empty());
    desktop.toolkit.isReachable = true;
    script->open();
    VXRemoteAction expected(u"executeApplescript"_s);
    expected.setValueForParameter(script->script(), u"script"_s);
    EXPECT_EQ(desktop.toolkit.sent, std::vector{expected});
}

} // namespace
} // namespace Orbita
