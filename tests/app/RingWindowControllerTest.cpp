#include "app/RingWindowController.h"

#include "app/RingDesktop.h"
#include "model/CoreMenuItem.h"
#include "platform/PropertyList.h"
#include "ring/RingItem.h"

#include <QFile>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

const QString toolPath = QStringLiteral("/apps/tool.desktop");
const QString tool = QStringLiteral("Tool");
constexpr QPointF middle{640, 400};

struct RingWindowControllerTest : testing::Test {
    RingDesktop desktop;
    std::unique_ptr<RingWindowController> ring
        = std::make_unique<RingWindowController>(desktop.window, desktop.controllerServices);

    void show(QPointF centre = middle)
    {
        ring->showWindowAtScreenPosition(centre);
        desktop.settle();
    }
    [[nodiscard]] QStringList names() const { return MemoryDesktop::names(ring->menuItems()); }
    /// Moves the pointer over the item at \a position, as the ring view would report it.
    void hover(qint64 position)
    {
        const QPointF point = desktop.view().itemFor({0, position})->frame().center();
        const QPointF local(point.x(), desktop.view().height() - point.y());
        QMouseEvent move(QEvent::MouseMove, local, desktop.view().mapToGlobal(local), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&desktop.view(), &move);
    }
};

TEST_F(RingWindowControllerTest, fadesInRoundTheCentreWithTheKeyboard)
{
    ring->showWindowAtScreenPosition(middle);
    EXPECT_EQ(desktop.stage.lastFrame, QRectF(440, 200, 400, 400));
    EXPECT_EQ(desktop.stage.presented, 1);
    EXPECT_FALSE(ring->windowVisible());
    desktop.settle();
    EXPECT_TRUE(ring->windowVisible());
    EXPECT_EQ(desktop.window.windowOpacity(), 1.0);
}

TEST_F(RingWindowControllerTest, fadesOutAndGivesTheKeyboardBackAtOnce)
{
    const auto editor = desktop.runningApplications.start(toolPath, tool);
    desktop.runningApplications.bringToFront(editor);
    show();
    int disappeared = 0;
    QObject::connect(ring.get(), &RingWindowController::didDisappear, ring.get(), [&disappeared] { ++disappeared; });
    ring->hideWindow(ReactivatePrevious::Yes);
    EXPECT_EQ(desktop.runningApplications.activated, std::vector{editor.serial});
    EXPECT_EQ(disappeared, 0);
    ring->hideWindow(ReactivatePrevious::Yes);
    EXPECT_EQ(desktop.runningApplications.activated.size(), 1U) << "a second request begins nothing anew";
    desktop.settle();
    EXPECT_EQ(disappeared, 1);
    EXPECT_FALSE(desktop.window.isVisible());
}

TEST_F(RingWindowControllerTest, givesTheKeyboardBackToNobodyWhoHasEnded)
{
    const auto editor = desktop.runningApplications.start(toolPath, tool);
    desktop.runningApplications.bringToFront(editor);
    show();
    desktop.runningApplications.terminate(editor);
    ring->hideWindow(ReactivatePrevious::Yes);
    EXPECT_TRUE(desktop.runningApplications.activated.empty());
}

TEST_F(RingWindowControllerTest, dropsHideRequestsWhileADialogIsOpen)
{
    show();
    ring->setCanClose(false);
    ring->hideWindow(ReactivatePrevious::Yes, ForceHide::Yes);
    desktop.settle();
    EXPECT_TRUE(desktop.window.isVisible());
    ring->setCanClose(true);
    desktop.settle();
    EXPECT_TRUE(desktop.window.isVisible()) << "dropped, not kept for later";
}

TEST_F(RingWindowControllerTest, goesAtOnceWhereNothingCanFade)
{
    show();
    desktop.stage.setCompositing(false);
    ring->hideWindow(ReactivatePrevious::No);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(desktop.window.isVisible());
}

TEST_F(RingWindowControllerTest, followsApplicationsThatStartEndAndChange)
{
    show();
    const auto started = desktop.runningApplications.start(toolPath, tool);
    EXPECT_EQ(names().last(), tool);
    EXPECT_EQ(desktop.view().numberOfItemsInSection(0), 7);

    // The entry of a role gets its dot when its application starts.
    EXPECT_FALSE(desktop.view().itemFor({0, 5})->isHighlighted());
    const auto mail = desktop.runningApplications.start(QStringLiteral("/apps/mail.desktop"), QStringLiteral("Mail"));
    EXPECT_EQ(names().size(), 7);
    EXPECT_TRUE(desktop.view().itemFor({0, 5})->isHighlighted());
    desktop.runningApplications.terminate(mail);
    EXPECT_FALSE(desktop.view().itemFor({0, 5})->isHighlighted());

    desktop.runningApplications.terminate(started);
    EXPECT_EQ(names().size(), 6);
}

TEST_F(RingWindowControllerTest, followsItsSettings)
{
    desktop.runningApplications.start(toolPath, tool);
    show();
    desktop.settings.setRunningAppsStyle(RunningAppsStyle::Hidden);
    EXPECT_EQ(names().size(), 6);
    desktop.settings.setShowFinder(false);
    EXPECT_EQ(names().first(), QStringLiteral("Launchpad"));
    desktop.settings.setMenuSizeSettings(MenuSize::Large);
    EXPECT_EQ(desktop.stage.lastFrame, QRectF(340, 100, 600, 600));
    desktop.settings.setWindowTintColor(Qt::black);
    EXPECT_EQ(desktop.view().itemFor({0, 0})->highlightColor(), QColor(Qt::white));

    ring->hideWindow(ReactivatePrevious::No);
    desktop.settle();
    desktop.settings.setMenuSizeSettings(MenuSize::Small);
    EXPECT_FALSE(desktop.window.isVisible()) << "a hidden ring is not brought back by a setting";
}

TEST_F(RingWindowControllerTest, showsRunningApplicationsInGreyOrInColor)
{
    QImage red(8, 8, QImage::Format_ARGB32_Premultiplied);
    red.fill(Qt::red);
    RunningApplication record;
    record.localizedName = tool;
    record.icon = Image::fromPixels(red);
    record.activationPolicy = ActivationPolicy::Regular;
    desktop.runningApplications.add(record);
    show();
    const auto shown = [&] { return desktop.view().itemFor({0, 6})->image().render({8, 8}).pixelColor(4, 4); };
    const Image grey = desktop.view().itemFor({0, 6})->image();
    EXPECT_EQ(shown().red(), shown().blue());
    ring->refreshItems();
    EXPECT_EQ(desktop.view().itemFor({0, 6})->image(), grey) << "or it would have to be rendered at every show";
    desktop.settings.setRunningAppsStyle(RunningAppsStyle::Colored);
    EXPECT_EQ(shown(), QColor(Qt::red));
}

TEST_F(RingWindowControllerTest, opensOnceByHoveringInSwiftMode)
{
    desktop.workspace.coreApplications.insert(QStringLiteral("Mail"), QStringLiteral("/apps/mail.desktop"));
    desktop.settings.setSwiftMode(SwiftMode::Enabled);
    ring->showWindowAtScreenPosition(middle);
    hover(5);
    EXPECT_TRUE(desktop.workspace.actions.isEmpty()) << "not while the ring is hardly to be seen";
    desktop.settle();
    desktop.stage.buttonsUp = false;
    hover(5);
    EXPECT_TRUE(desktop.workspace.actions.isEmpty()) << "not with a button pressed";
    desktop.stage.buttonsUp = true;
    hover(5);
    EXPECT_EQ(desktop.workspace.actions.size(), 1);
}

TEST_F(RingWindowControllerTest, opensOnlyWhatRunsByHoveringInTheOtherSwiftMode)
{
    desktop.workspace.coreApplications.insert(QStringLiteral("Mail"), QStringLiteral("/apps/mail.desktop"));
    const auto running = desktop.runningApplications.start(toolPath, tool);
    desktop.settings.setSwiftMode(SwiftMode::RunningAppsOnly);
    show();
    hover(5);
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());
    hover(6);
    EXPECT_EQ(desktop.runningApplications.activated, std::vector{running.serial});
}

TEST_F(RingWindowControllerTest, isOperatedByKeys)
{
    desktop.workspace.coreApplications.insert(QStringLiteral("Finder"), QStringLiteral("/apps/files.desktop"));
    show();
    desktop.press(Qt::Key_Return, 28);
    EXPECT_EQ(desktop.view().highlightedItem(), (ItemAddress{0, 0}));
    EXPECT_TRUE(desktop.workspace.actions.isEmpty());
    desktop.press(Qt::Key_Right, 106);
    EXPECT_EQ(desktop.view().highlightedItem(), (ItemAddress{0, 0})) << "too soon after the first key";
    desktop.press(Qt::Key_Escape, 1);
    desktop.settle();
    EXPECT_FALSE(desktop.window.isVisible());
}

TEST_F(RingWindowControllerTest, dropsEntriesThatCannotBeMadeFromTheFile)
{
    ring.reset();
    const QVariantList entries{QVariantMap{{QStringLiteral("class"), QStringLiteral("AppMenuItem")}},
                               QVariantMap{{QStringLiteral("class"), QStringLiteral("LinkMenuItem")}}};
    ASSERT_TRUE(PropertyList::write(desktop.container.itemFile(), entries, PropertyList::Format::Xml));
    ring = std::make_unique<RingWindowController>(desktop.window, desktop.controllerServices);
    show();
    EXPECT_EQ(PropertyList::read(desktop.container.itemFile())->toList().size(), 2) << "Finder and the link";
}

TEST_F(RingWindowControllerTest, comesBackOntoAScreenWhenItsOwnIsGone)
{
    desktop.stage.plantedScreens = {{QRectF(0, 0, 1280, 800), 1.0}, {QRectF(1280, 0, 1280, 800), 1.0}};
    show({1900, 400});
    desktop.stage.plantedScreens.pop_back();
    Q_EMIT desktop.stage.screensChanged();
    EXPECT_EQ(ring->frame().center(), middle);
}

TEST_F(RingWindowControllerTest, leavesAnEmptyWindow)
{
    show();
    ring.reset();
    EXPECT_FALSE(desktop.window.isVisible());
    EXPECT_EQ(desktop.window.findChild<RingView *>(), nullptr);
}

} // namespace
} // namespace Orbita
