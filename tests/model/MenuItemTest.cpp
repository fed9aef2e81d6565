#include "model/MenuItem.h"

#include "model/AppMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/RunningAppMenuItem.h"
#include "support/MemoryDesktop.h"
#include "support/RowName.h"

#include <QFile>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

const QString safari = QStringLiteral("Safari");

QVariantMap entry(const char *className, QVariantMap others = {})
{
    others.insert(QStringLiteral("class"), QString::fromLatin1(className));
    return others;
}

TEST(MenuItem, ofADictionaryWithoutAKnownClassIsNothing)
{
    MemoryDesktop desktop;
    EXPECT_FALSE(MenuItem::fromDictionary({{QStringLiteral("name"), safari}}, desktop.services));
    EXPECT_FALSE(MenuItem::fromDictionary({{QStringLiteral("class"), 7}}, desktop.services));
    for (const char *unknown : {"", "MenuItem", "RunningAppMenuItem", "coremenuitem", "QObject"})
        EXPECT_FALSE(MenuItem::fromDictionary(entry(unknown), desktop.services)) << unknown;
}

TEST(MenuItem, ofAKindThatCannotBeOpenedYetIsWrittenBackAsItWas)
{
    MemoryDesktop desktop;
    for (const char *kind : {"FileMenuItem", "LinkMenuItem", "AppleScriptMenuItem", "CollectionMenuItem"}) {
        const QVariantMap stored = entry(kind,
                                         {{QStringLiteral("name"), QStringLiteral("Größe")},
                                          {QStringLiteral("bookmarkData"), QByteArray("\0\1", 2)},
                                          {QStringLiteral("subitems"), QVariantList{entry("CoreMenuItem")}},
                                          {QStringLiteral("from another version"), 3.5}});
        const auto item = MenuItem::fromDictionary(stored, desktop.services);
        ASSERT_TRUE(item) << kind;
        EXPECT_EQ(item->name(), QStringLiteral("Größe"));
        EXPECT_FALSE(item->image().isNull());
        EXPECT_EQ(item->dictionaryRepresentation(), stored) << kind;
        item->open();
        EXPECT_TRUE(desktop.workspace.actions.isEmpty());
    }
}

struct BundleRow {
    const char *name;
    const char *bundle;
    const char *executable;
    bool holds;
};

class BundleHoldsExecutable : public testing::TestWithParam<BundleRow> {};

TEST_P(BundleHoldsExecutable, unlessItIsNestedOrElsewhere)
{
    EXPECT_EQ(bundleHoldsExecutable(QString::fromUtf8(GetParam().bundle), QString::fromUtf8(GetParam().executable)),
              GetParam().holds);
}

INSTANTIATE_TEST_SUITE_P(
    Bundles, BundleHoldsExecutable,
    testing::Values(BundleRow{"its own program", "/opt/X.app", "/opt/X.app/bin/X", true},
                    BundleRow{"an application nested inside", "/opt/X.app", "/opt/X.app/lib/Y.app/bin/Y", false},
                    BundleRow{"the same path further down", "/opt/X.app", "/other/opt/X.app/bin/X", false},
                    BundleRow{"the bundle file itself runs", "/opt/Tool.AppImage", "/opt/Tool.AppImage", true},
                    BundleRow{"no bundle", "", "/usr/bin/x", false},
                    BundleRow{"no executable known", "/opt/X.app", "", false}),
    rowName<BundleRow>);

TEST(AppMenuItem, comesBackFromItsDictionaryAlsoAfterARename)
{
    MemoryDesktop desktop;
    const QString path = desktop.plantApplication(QStringLiteral("tools/Calculator.desktop"));
    desktop.workspace.displayNames.insert(path, QStringLiteral("Calculator"));
    const auto item = AppMenuItem::fromPath(path, desktop.services);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->name(), QStringLiteral("Calculator"));
    EXPECT_EQ(item->identity(), QStringLiteral("AppMenuItem") + path);

    const QVariantMap stored = *item->dictionaryRepresentation();
    EXPECT_EQ(stored.keys(),
              (QStringList{QStringLiteral("bookmarkData"), QStringLiteral("class"), QStringLiteral("name")}));
    EXPECT_EQ(MenuItem::fromDictionary(stored, desktop.services)->dictionaryRepresentation(), stored);

    const QString renamed = desktop.container.path(QStringLiteral("tools/Abacus.desktop"));
    ASSERT_TRUE(QFile::rename(path, renamed));
    const auto found = MenuItem::fromDictionary(stored, desktop.services);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->identity(), QStringLiteral("AppMenuItem") + renamed);
    EXPECT_NE(found->dictionaryRepresentation()->value(QStringLiteral("bookmarkData")),
              stored.value(QStringLiteral("bookmarkData")));

    ASSERT_TRUE(QFile::remove(renamed));
    EXPECT_FALSE(MenuItem::fromDictionary(stored, desktop.services));
}

TEST(AppMenuItem, needsABookmark)
{
    MemoryDesktop desktop;
    EXPECT_FALSE(AppMenuItem::fromPath(desktop.container.path(QStringLiteral("gone.desktop")), desktop.services));
    EXPECT_FALSE(MenuItem::fromDictionary(entry("AppMenuItem"), desktop.services));
    for (const QVariant &bookmark : {QVariant(QStringLiteral("text")), QVariant(QByteArray("rubbish")), QVariant(7)})
        EXPECT_FALSE(MenuItem::fromDictionary(entry("AppMenuItem", {{QStringLiteral("bookmarkData"), bookmark}}),
                                              desktop.services));
}

TEST(AppMenuItem, asksForItsIconOnce)
{
    MemoryDesktop desktop;
    const auto item = AppMenuItem::fromPath(desktop.plantApplication(QStringLiteral("a.desktop")), desktop.services);
    EXPECT_EQ(item->image(), item->image());
    EXPECT_EQ(desktop.workspace.iconRequests, 1);
    EXPECT_EQ(item->image().size(), QSizeF(320, 320));
}

TEST(AppMenuItem, comesForwardWhenItRunsAndIsLaunchedOtherwise)
{
    MemoryDesktop desktop;
    const QString path = desktop.plantApplication(QStringLiteral("a.desktop"));
    const auto item = AppMenuItem::fromPath(path, desktop.services);
    item->open();
    EXPECT_EQ(desktop.workspace.actions, QStringList(QStringLiteral("launch ") + path));

    const auto record = desktop.runningApplications.start(path, QStringLiteral("A"));
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

TEST(AppMenuItem, matchesItsDesktopFileWhereverTheCopyLies)
{
    MemoryDesktop desktop;
    const auto item
        = AppMenuItem::fromPath(desktop.plantApplication(QStringLiteral("desk/org.a.Tool.desktop")), desktop.services);
    EXPECT_TRUE(item->representsRunningApplication(
        desktop.runningApplications.start(QStringLiteral("/usr/share/applications/org.a.Tool.desktop"), {})));
    EXPECT_FALSE(item->representsRunningApplication(
        desktop.runningApplications.start(QStringLiteral("/usr/share/applications/org.b.Tool.desktop"), {})));
    EXPECT_FALSE(item->representsRunningApplication(desktop.runningApplications.start({}, {})));
}

TEST(CoreMenuItem, standsForTheApplicationThatPlaysItsRole)
{
    MemoryDesktop desktop;
    CoreMenuItem item(safari, desktop.services);
    EXPECT_EQ(item.identity(), QStringLiteral("CoreMenuItemSafari"));
    EXPECT_EQ(item.image(), Image::named(safari));
    item.open(); // nobody plays the role: logged
    item.openPath(QStringLiteral("/a.html"));
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());

    const QString browser = QStringLiteral("/usr/share/applications/browser.desktop");
    desktop.workspace.coreApplications.insert(safari, browser);
    item.open();
    item.openPath(QStringLiteral("/a.html"));
    EXPECT_EQ(desktop.workspace.actions,
              (QStringList{QStringLiteral("launch ") + browser, QStringLiteral("open /a.html with ") + browser}));

    desktop.runningApplications.start(QStringLiteral("/other.desktop"), QStringLiteral("Other"));
    EXPECT_FALSE(item.isRunning());
    const auto byRole = desktop.runningApplications.start(browser, QStringLiteral("Web"));
    EXPECT_TRUE(item.isRunning());
    desktop.runningApplications.terminate(byRole);
    desktop.runningApplications.start(QStringLiteral("/another.desktop"), safari);
    EXPECT_TRUE(item.isRunning());
}

TEST(CoreMenuItem, takesFilesUnlessItsRoleHasNoUseForThem)
{
    MemoryDesktop desktop;
    for (const char *name : {"Finder", "iTunes", "Safari", "Mail"})
        EXPECT_TRUE(CoreMenuItem(QString::fromLatin1(name), desktop.services).canOpenPath({})) << name;
    for (const char *name : {"Launchpad", "App Store"})
        EXPECT_FALSE(CoreMenuItem(QString::fromLatin1(name), desktop.services).canOpenPath({})) << name;
}

TEST(CoreMenuItem, ofAnUnknownNameHasAPictureAllTheSame)
{
    MemoryDesktop desktop;
    for (const char *name : {"", "Nothing", "../../etc/passwd"})
        EXPECT_FALSE(CoreMenuItem(QString::fromLatin1(name), desktop.services).image().render({32, 32}).isNull());
}

TEST(RunningAppMenuItem, isGreyUntilItIsColoredAndBack)
{
    MemoryDesktop desktop;
    QImage red(8, 8, QImage::Format_ARGB32_Premultiplied);
    red.fill(Qt::red);
    RunningApplication record;
    record.localizedName = QStringLiteral("Tool");
    record.icon = Image::fromPixels(red);
    RunningAppMenuItem item(desktop.runningApplications.add(record), desktop.services);
    const auto color = [&] { return item.image().render({8, 8}).pixelColor(4, 4); };

    const QColor grey = color();
    EXPECT_EQ(grey.red(), grey.green());
    EXPECT_EQ(grey.red(), grey.blue());
    item.setRenderColored(true);
    EXPECT_EQ(color(), QColor(Qt::red));
    EXPECT_EQ(desktop.imageCache.imageForKey(item.identity()), item.image());
    item.setRenderColored(false);
    EXPECT_EQ(color(), grey);
}

TEST(RunningAppMenuItem, isNeverStoredAndComesForward)
{
    MemoryDesktop desktop;
    const QString path = QStringLiteral("/usr/share/applications/tool.desktop");
    const auto record = desktop.runningApplications.start(path, QStringLiteral("Tool"));
    const auto twin = desktop.runningApplications.start(path, QStringLiteral("Tool"));
    RunningAppMenuItem item(twin, desktop.services);
    EXPECT_FALSE(item.dictionaryRepresentation());
    EXPECT_FALSE(item.image().render({32, 32}).isNull()); // it has no icon of its own
    EXPECT_FALSE(item.representsRunningApplication(record));
    item.open();
    EXPECT_EQ(desktop.runningApplications.activated, std::vector{twin.serial});
    desktop.runningApplications.terminate(twin);
    item.open();
    EXPECT_EQ(desktop.workspace.actions, QStringList(QStringLiteral("launch ") + path));
}

TEST(Quit, asksTheCompanionToEndTheFirstMatchOnly)
{
    MemoryDesktop desktop;
    const QString path = desktop.plantApplication(QStringLiteral("a.desktop"));
    const auto item = AppMenuItem::fromPath(path, desktop.services);
    desktop.toolkit.isReachable = true;
    EXPECT_FALSE(item->canQuit());
    item->quit();
    EXPECT_TRUE(desktop.toolkit.sent.empty());

    const auto first = desktop.runningApplications.start(path, QStringLiteral("A"));
    desktop.runningApplications.start(path, QStringLiteral("A"));
    EXPECT_TRUE(item->canQuit());
    item->quit();
    ASSERT_EQ(desktop.toolkit.sent.size(), 1U);
    EXPECT_EQ(desktop.toolkit.sent[0].name(), QStringLiteral("terminate"));
    EXPECT_EQ(desktop.toolkit.sent[0].valueForParameter(QStringLiteral("processId")),
              QString::number(first.processIdentifier));

    desktop.toolkit.isReachable = false;
    item->quit();
    EXPECT_EQ(desktop.toolkit.sent.size(), 1U);
}

} // namespace
} // namespace Orbita
