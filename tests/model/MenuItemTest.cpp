#include "model/MenuItem.h"

#include "model/AppMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/FileMenuItem.h"
#include "model/RunningAppMenuItem.h"
#include "support/MemoryDesktop.h"

#include <QFile>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

QVariantMap entry(const char *className, QVariantMap others = {})
{
    others.insert(u"class"_s, QString::fromLatin1(className));
    return others;
}

struct MenuItemTest : testing::Test {
    MemoryDesktop desktop;

    [[nodiscard]] MenuItem::Pointer fromDictionary(const QVariantMap &stored)
    {
        return MenuItem::fromDictionary(stored, desktop.services);
    }
    [[nodiscard]] CoreMenuItem core(const char *name)
    {
        return CoreMenuItem(QString::fromLatin1(name), desktop.services);
    }
};

using AppMenuItemTest = MenuItemTest;
using CoreMenuItemTest = MenuItemTest;
using FileMenuItemTest = MenuItemTest;
using RunningAppMenuItemTest = MenuItemTest;

TEST_F(MenuItemTest, ofADictionaryWithoutAKnownClassIsNothing)
{
    EXPECT_FALSE(fromDictionary({{u"name"_s, u"Safari"_s}}));
    EXPECT_FALSE(fromDictionary({{u"class"_s, 7}}));
    for (const char *unknown : {"", "MenuItem", "RunningAppMenuItem", "coremenuitem", "QObject"})
        EXPECT_FALSE(fromDictionary(entry(unknown))) << unknown;
}

TEST_F(MenuItemTest, ofAKindThatCannotBeOpenedYetIsWrittenBackAsItWas)
{
    const QVariantMap stored = entry("CollectionMenuItem",
                                     {{u"name"_s, u"Größe"_s},
                                      {u"subitems"_s, QVariantList{entry("CoreMenuItem")}},
                                      {u"from another version"_s, 3.5}});
    const auto item = fromDictionary(stored);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->name(), u"Größe"_s);
    EXPECT_FALSE(item->image().isNull());
    EXPECT_EQ(item->dictionaryRepresentation(), stored);
    item->open();
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());
}

TEST(BundleHoldsExecutable, unlessItIsNestedOrElsewhere)
{
    EXPECT_TRUE(bundleHoldsExecutable(u"/opt/X.app"_s, u"/opt/X.app/bin/X"_s));
    EXPECT_TRUE(bundleHoldsExecutable(u"/opt/X.AppImage"_s, u"/opt/X.AppImage"_s)) << "the bundle itself runs";
    EXPECT_FALSE(bundleHoldsExecutable(u"/opt/X.app"_s, u"/opt/X.app/lib/Y.app/bin/Y"_s)) << "nested inside";
    EXPECT_FALSE(bundleHoldsExecutable(u"/opt/X.app"_s, u"/other/opt/X.app/bin/X"_s)) << "further down";
    EXPECT_FALSE(bundleHoldsExecutable(u"/opt/X.app"_s, u"/opt/X.app-old/bin/X"_s)) << "a name that goes on";
    EXPECT_TRUE(bundleHoldsExecutable(u"/opt/X.app/"_s, u"/opt/X.app/bin/X"_s));
    EXPECT_FALSE(bundleHoldsExecutable(u"/"_s, u"/usr/bin/x"_s));
    EXPECT_FALSE(bundleHoldsExecutable({}, u"/usr/bin/x"_s));
    EXPECT_FALSE(bundleHoldsExecutable(u"/opt/X.app"_s, {}));
}

TEST_F(AppMenuItemTest, comesBackFromItsDictionaryAlsoAfterARename)
{
    const QString path = desktop.plantApplication(u"tools/Calculator.desktop"_s);
    desktop.workspace.displayNames.insert(path, u"Calculator"_s);
    const auto item = AppMenuItem::fromPath(path, desktop.services);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->name(), u"Calculator"_s);
    EXPECT_EQ(item->identity(), u"AppMenuItem"_s + path);
    const QVariantMap stored = *item->dictionaryRepresentation();
    EXPECT_EQ(stored.keys(), (QStringList{u"bookmarkData"_s, u"class"_s, u"name"_s}));
    EXPECT_EQ(fromDictionary(stored)->dictionaryRepresentation(), stored);

    const QString renamed = desktop.container.path(u"tools/Abacus.desktop"_s);
    ASSERT_TRUE(QFile::rename(path, renamed));
    const auto found = fromDictionary(stored);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->identity(), u"AppMenuItem"_s + renamed);
    EXPECT_NE(found->dictionaryRepresentation()->value(u"bookmarkData"_s), stored.value(u"bookmarkData"_s));
    ASSERT_TRUE(QFile::remove(renamed));
    EXPECT_TRUE(fromDictionary(stored)->isGone());
}

TEST_F(AppMenuItemTest, needsABookmark)
{
    EXPECT_FALSE(AppMenuItem::fromPath(desktop.container.path(u"gone.desktop"_s), desktop.services));
    for (const QVariant &bookmark : {QVariant(), QVariant(u"text"_s), QVariant(QByteArray("rubbish")), QVariant(7)})
        EXPECT_FALSE(fromDictionary(entry("AppMenuItem", {{u"bookmarkData"_s, bookmark}})));
}

TEST_F(AppMenuItemTest, asksNoDiskOnceItWasMade)
{
    const QString path = desktop.plantApplication(u"a.desktop"_s);
    for (const MenuItem::Pointer &item : {MenuItem::Pointer(AppMenuItem::fromPath(path, desktop.services)),
                                          MenuItem::Pointer(FileMenuItem::fromPath(path, desktop.services))}) {
        const qsizetype before = desktop.files.looked.size();
        desktop.workspace.iconRequests = 0;
        desktop.files.answers = false;
        EXPECT_EQ(item->image(), item->image());
        EXPECT_EQ(item->image().size(), QSizeF(320, 320));
        EXPECT_FALSE(item->isRunning() || item->canQuit());
        EXPECT_EQ(item->title() + item->identity(), item->name() + item->identity());
        EXPECT_EQ(desktop.workspace.iconRequests, 0);
        EXPECT_EQ(desktop.files.looked.size(), before);
        item->open();
        desktop.files.answers = true;
    }
    EXPECT_TRUE(desktop.workspace.actions.isEmpty()) << "a disk that does not answer holds up nothing";
}

TEST_F(AppMenuItemTest, comesForwardWhenItRunsAndIsLaunchedOtherwise)
{
    const QString path = desktop.plantApplication(u"a.desktop"_s);
    const auto item = AppMenuItem::fromPath(path, desktop.services);
    item->open();
    EXPECT_EQ(desktop.workspace.actions, QStringList(u"launch "_s + path));

    const auto record = desktop.runningApplications.start(path, u"A"_s);
    EXPECT_TRUE(item->isRunning());
    item->open();
    EXPECT_EQ(desktop.runningApplications.activated, std::vector{record.serial});
    EXPECT_EQ(desktop.workspace.actions.size(), 1);

    desktop.runningApplications.canActivate = false; // it runs without a window
    item->open();
    EXPECT_EQ(desktop.workspace.actions.size(), 2);
    desktop.workspace.nextError = Workspace::Error::LaunchFailed;
    item->open(); // logged, and nothing else
    EXPECT_EQ(desktop.workspace.actions.size(), 2);
}

TEST_F(AppMenuItemTest, matchesTheApplicationThatIsInstalledUnderItsIdWhereverTheCopyLies)
{
    const auto item = AppMenuItem::fromPath(desktop.plantApplication(u"desk/kde-tool.desktop"_s), desktop.services);
    const auto represents = [&](const QString &path, const QString &id) {
        RunningApplication record;
        record.bundlePath = path;
        record.bundleIdentifier = id;
        return item->representsRunningApplication(desktop.runningApplications.add(record));
    };
    EXPECT_TRUE(represents(u"/usr/share/applications/kde-tool.desktop"_s, u"kde-tool"_s));
    EXPECT_TRUE(represents(u"/usr/share/applications/kde/tool.desktop"_s, u"kde-tool"_s));
    EXPECT_FALSE(represents(u"/usr/share/applications/x/kde-tool.desktop"_s, u"x-kde-tool"_s));
    EXPECT_FALSE(represents(u"/opt/kde-tool.desktop"_s, {})) << "it has no id";
    EXPECT_FALSE(represents({}, u"kde-tool"_s)) << "the class of a window";
    EXPECT_FALSE(represents({}, {}));
}

TEST_F(FileMenuItemTest, showsAFolderAndOpensAFileWhileTheyAreThere)
{
    const QString file = desktop.container.write(u"papers/letter.txt"_s, "Dear reader");
    const QString folder = desktop.container.path(u"papers"_s);
    const QString away = desktop.container.write(u"elsewhere/x"_s, {}).chopped(1) + u"away"_s;
    for (const QString &path : {folder, file}) {
        const auto added = FileMenuItem::fromPath(path, desktop.services);
        const auto item = fromDictionary(*added->dictionaryRepresentation());
        EXPECT_EQ(item->identity(), u"FileMenuItem"_s + path);
        EXPECT_EQ(item->name(), desktop.workspace.displayName(path));
        EXPECT_EQ(item->dictionaryRepresentation(), added->dictionaryRepresentation());
        item->open();
        item->openWithAppPath(u"/a.desktop"_s);
        ASSERT_TRUE(QFile::rename(path, away));
        item->open();
        ASSERT_TRUE(QFile::rename(away, path));
    }
    EXPECT_EQ(desktop.notifications.notifications.size(), 2) << "what is gone is not opened without a word";
    EXPECT_EQ(desktop.workspace.actions,
              (QStringList{u"show "_s + folder, u"open %1 with /a.desktop"_s.arg(folder), u"open "_s + file,
                           u"open %1 with /a.desktop"_s.arg(file)}));
}

TEST_F(FileMenuItemTest, followsTheLookOfAFileAndOffersTheDefaultApplicationFirstAndTheOthersByName)
{
    const QString file = desktop.container.write(u"letter.txt"_s, "Dear reader");
    const auto item = FileMenuItem::fromPath(file, desktop.services);
    for (const Image &look : {Image::named(u"Mail"_s), Image::named(u"Safari"_s)}) {
        desktop.workspace.icons.insert(file, look);
        desktop.files.look(item->dictionaryRepresentation()->value(u"bookmarkData"_s).toByteArray());
        EXPECT_EQ(item->image(), look);
    }
    desktop.workspace.displayNames = {{u"/1"_s, u"zebra"_s}, {u"/2"_s, u"Éclair"_s}, {u"/3"_s, u"apple"_s}};
    desktop.workspace.fileHandlers.insert(file, {u"/1"_s, u"/Mango"_s, u"/2"_s, u"/1"_s, u"/3"_s});
    QLocale::setDefault(QLocale(QLocale::French));
    EXPECT_EQ(item->openWithAppPaths(), (QStringList{u"/1"_s, u"/3"_s, u"/2"_s, u"/Mango"_s}));
    QLocale::setDefault(QLocale::system());
    desktop.workspace.hasDefaultHandlers = false;
    EXPECT_EQ(item->openWithAppPaths(), desktop.workspace.fileHandlers.value(file));
}

TEST_F(CoreMenuItemTest, standsForTheApplicationThatPlaysItsRole)
{
    CoreMenuItem item = core("Safari");
    EXPECT_EQ(item.identity(), u"CoreMenuItemSafari"_s);
    EXPECT_EQ(item.image(), Image::named(u"Safari"_s));
    item.open(); // nobody plays the role: logged
    item.openPath(u"/a.html"_s);
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());

    const auto byName = desktop.runningApplications.start(u"/safari.desktop"_s, u"Safari"_s);
    item.open();
    EXPECT_EQ(desktop.runningApplications.activated, std::vector{byName.serial}) << "it needs no role for that";
    desktop.runningApplications.terminate(byName);

    const QString browser = u"/usr/share/applications/browser.desktop"_s;
    desktop.workspace.coreApplications.insert(u"Safari"_s, browser);
    item.open();
    item.openPath(u"/a.html"_s);
    EXPECT_EQ(desktop.workspace.actions, (QStringList{u"launch "_s + browser, u"open /a.html with "_s + browser}));

    desktop.runningApplications.start(u"/other.desktop"_s, u"Other"_s);
    EXPECT_FALSE(item.isRunning());
    const auto byRole = desktop.runningApplications.start(browser, u"Web"_s);
    EXPECT_TRUE(item.isRunning());
    desktop.runningApplications.terminate(byRole);
    desktop.runningApplications.start(u"/another.desktop"_s, u"Safari"_s);
    EXPECT_TRUE(item.isRunning());
}

TEST_F(RunningAppMenuItemTest, isNeverStoredAndComesForward)
{
    const QString path = u"/usr/share/applications/tool.desktop"_s;
    const auto record = desktop.runningApplications.start(path, u"Tool"_s);
    const auto twin = desktop.runningApplications.start(path, u"Tool"_s);
    RunningAppMenuItem item(twin, desktop.services);
    EXPECT_FALSE(item.dictionaryRepresentation());
    EXPECT_FALSE(item.image().render({32, 32}).isNull()); // it has no icon of its own
    EXPECT_FALSE(item.representsRunningApplication(record));
    item.open();
    EXPECT_EQ(desktop.runningApplications.activated, std::vector{twin.serial});
    desktop.runningApplications.terminate(twin);
    item.open();
    EXPECT_EQ(desktop.workspace.actions, QStringList(u"launch "_s + path));
}

TEST_F(RunningAppMenuItemTest, opensAFileWithItsBundleOnly)
{
    const QString file = u"/home/me/script.py"_s;
    for (const QString &bundle : {QString(), u"/usr/share/applications/tool.desktop"_s}) {
        RunningApplication record;
        record.bundlePath = bundle;
        record.executablePath = u"/usr/bin/python3"_s;
        RunningAppMenuItem item(desktop.runningApplications.add(record), desktop.services);
        EXPECT_EQ(item.canOpenPath(file), !bundle.isEmpty());
        item.openPath(file);
    }
    EXPECT_EQ(desktop.workspace.actions,
              QStringList(u"open /home/me/script.py with /usr/share/applications/tool.desktop"_s));
}

TEST_F(MenuItemTest, asksTheCompanionToQuitTheFirstMatchOnly)
{
    const QString path = desktop.plantApplication(u"a.desktop"_s);
    const auto item = AppMenuItem::fromPath(path, desktop.services);
    desktop.toolkit.isReachable = true;
    EXPECT_FALSE(item->canQuit());
    item->quit();
    EXPECT_TRUE(desktop.toolkit.sent.empty());

    const auto first = desktop.runningApplications.start(path, u"A"_s);
    desktop.runningApplications.start(path, u"A"_s);
    EXPECT_TRUE(item->canQuit());
    item->quit();
    desktop.toolkit.isReachable = false;
    item->quit();
    ASSERT_EQ(desktop.toolkit.sent.size(), 1U);
    EXPECT_EQ(desktop.toolkit.sent[0].name(), u"terminate"_s);
    EXPECT_EQ(desktop.toolkit.sent[0].valueForParameter(u"processId"_s), QString::number(first.processIdentifier));
}

} // namespace
} // namespace Orbita
