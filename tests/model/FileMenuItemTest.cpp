#include "model/FileMenuItem.h"

#include "support/MemoryDesktop.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

struct FileMenuItemTest : testing::Test {
    MemoryDesktop desktop;
    const QString file = desktop.container.write(u"papers/letter.txt"_s, "Dear reader");
    const QString folder = desktop.container.path(u"papers"_s);
    const std::shared_ptr<FileMenuItem> letter = FileMenuItem::fromPath(file, desktop.services);
    const std::shared_ptr<FileMenuItem> papers = FileMenuItem::fromPath(folder, desktop.services);
};

TEST_F(FileMenuItemTest, showsAFolderAndOpensAFileUntilTheyAreGone)
{
    EXPECT_TRUE(papers->isDirectory());
    EXPECT_FALSE(letter->isDirectory());
    papers->open();
    letter->open();
    letter->openWithAppPath(u"/a.desktop"_s);
    EXPECT_EQ(desktop.workspace.actions,
              (QStringList{u"show "_s + folder, u"open "_s + file, u"open %1 with /a.desktop"_s.arg(file)}));
    desktop.workspace.actions.clear();

    testing::internal::CaptureStderr();
    desktop.workspace.nextError = Workspace::Error::Untrusted;
    letter->open();
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    EXPECT_NE(log.find("marked executable"), std::string::npos) << log;

    ASSERT_TRUE(QDir(folder).removeRecursively());
    papers->open();
    letter->open();
    EXPECT_FALSE(papers->isDirectory());
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());
}

TEST_F(FileMenuItemTest, comesBackFromItsDictionaryAlsoAfterARename)
{
    desktop.workspace.displayNames.insert(file, u"Letter"_s);
    const QVariantMap stored = *FileMenuItem::fromPath(file, desktop.services)->dictionaryRepresentation();
    EXPECT_EQ(stored.value(u"class"_s), u"FileMenuItem"_s);
    EXPECT_EQ(stored.keys(), (QStringList{u"bookmarkData"_s, u"class"_s, u"name"_s}));
    const auto found = MenuItem::fromDictionary(stored, desktop.services);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->name(), u"Letter"_s);
    EXPECT_EQ(found->identity(), u"FileMenuItem"_s + file);

    const QString renamed = folder + u"/reply.txt"_s;
    ASSERT_TRUE(QFile::rename(file, renamed));
    const auto renewed = MenuItem::fromDictionary(stored, desktop.services);
    ASSERT_TRUE(renewed);
    EXPECT_EQ(renewed->identity(), u"FileMenuItem"_s + renamed);
    EXPECT_NE(renewed->dictionaryRepresentation(), stored);
    ASSERT_TRUE(QFile::remove(renamed));
    EXPECT_FALSE(MenuItem::fromDictionary(stored, desktop.services));
    EXPECT_FALSE(FileMenuItem::fromPath(file, desktop.services));
}

TEST_F(FileMenuItemTest, followsTheLookOfAFileAndKeepsThatOfAFolder)
{
    EXPECT_EQ(papers->image(), papers->image());
    EXPECT_EQ(desktop.workspace.iconRequests, 1);
    for (const char *name : {"Mail", "Safari"}) {
        desktop.workspace.icons.insert(file, Image::named(QString::fromLatin1(name)));
        EXPECT_EQ(letter->image(), Image::named(QString::fromLatin1(name)));
        EXPECT_EQ(letter->image().size(), Image::itemSize);
    }
}

TEST_F(FileMenuItemTest, offersTheDefaultApplicationFirstAndTheOthersByName)
{
    desktop.workspace.displayNames = {{u"/1"_s, u"zebra"_s}, {u"/2"_s, u"Éclair"_s}, {u"/3"_s, u"apple"_s}};
    desktop.workspace.fileHandlers.insert(file, {u"/1"_s, u"/Mango"_s, u"/2"_s, u"/1"_s, u"/3"_s});
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::French));
    EXPECT_EQ(letter->openWithAppPaths(), (QStringList{u"/1"_s, u"/3"_s, u"/2"_s, u"/Mango"_s}));
    QLocale::setDefault(before);
    EXPECT_TRUE(papers->openWithAppPaths().isEmpty());
    desktop.workspace.hasDefaultHandlers = false;
    EXPECT_EQ(letter->openWithAppPaths(), desktop.workspace.fileHandlers.value(file));
}

} // namespace
} // namespace Orbita
