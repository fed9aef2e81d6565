#include "app/RingWindowController.h"

#include "app/RingDesktop.h"
#include "model/FileMenuItem.h"
#include "platform/PropertyList.h"
#include "ring/RingItem.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

struct RingWindowControllerTest : testing::Test {
    RingDesktop desktop;
    MemoryRunningApplications &running = desktop.runningApplications;
    std::unique_ptr<RingWindowController> ring
        = std::make_unique<RingWindowController>(desktop.window, desktop.controllerServices);

    RunningApplication start(const QString &name) { return running.start(u"/apps/"_s + name + u".desktop"_s, name); }
    /// Begins anew with \a entries.
    void store(const QVariantList &entries)
    {
        desktop.storeEntries(entries);
        ring = std::make_unique<RingWindowController>(desktop.window, desktop.controllerServices);
    }
    void show()
    {
        ring->showWindowAtScreenPosition({640, 400});
        desktop.settle();
    }
    /// Moves the pointer over the item at \a position, as the ring view would report it.
    void hover(qint64 position)
    {
        const QPointF local = ViewFlip{400}(desktop.view().itemFor({0, position})->frame().center());
        QMouseEvent move(QEvent::MouseMove, local, local, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&desktop.view(), &move);
    }
};

TEST_F(RingWindowControllerTest, staysWhereItIsWhenAnotherScreenBecomesTheMainOne)
{
    show();
    const QRect place = desktop.window.geometry();
    desktop.stage.plantedScreens = {{QRectF(0, 0, 1280, 800)}, {QRectF(-1280, 0, 1280, 800)}};
    desktop.stage.mainCorner = {1280, 0};
    Q_EMIT desktop.stage.screensChanged();
    EXPECT_EQ(desktop.window.geometry(), place);
    EXPECT_EQ(desktop.stage.presented, 1) << "nothing has changed for the ring";
    EXPECT_EQ(ring->frame(), QRectF(440 - 1280, 200, 400, 400));
    desktop.stage.plantedScreens.pop_back();
    Q_EMIT desktop.stage.screensChanged();
    EXPECT_EQ(ring->frame(), QRectF(440, 200, 400, 400));
}

TEST_F(RingWindowControllerTest, fadesOutAndGivesTheKeyboardBackAtOnce)
{
    const auto editor = start(u"Editor"_s);
    running.bringToFront(editor);
    show();
    int disappeared = 0;
    QObject::connect(ring.get(), &RingWindowController::didDisappear, ring.get(), [&disappeared] { ++disappeared; });
    ring->hideWindow(ReactivatePrevious::Yes);
    desktop.clock.advance(AnimationClock::defaultDuration / 2);
    ring->hideWindow(ReactivatePrevious::Yes); // a second request begins nothing anew
    EXPECT_EQ(running.activated, std::vector{editor.serial});
    EXPECT_EQ(disappeared, 0);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&desktop.window, &key);
    EXPECT_FALSE(desktop.view().highlightedItem().isFound()) << "a ring that goes takes no keys";
    Q_EMIT desktop.stage.screensChanged(); // nor does it come back for another screen
    desktop.clock.advance(AnimationClock::defaultDuration / 2);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(disappeared, 1);
    EXPECT_FALSE(desktop.window.isVisible());
    desktop.settings.setMenuSizeSettings(MenuSize::Large);
    EXPECT_FALSE(desktop.window.isVisible()) << "a hidden ring is not brought back by a setting";
}

TEST_F(RingWindowControllerTest, givesTheKeyboardBackToNobodyWhoHasEnded)
{
    const auto editor = start(u"Editor"_s);
    running.bringToFront(editor);
    show();
    running.terminate(editor);
    ring->hideWindow(ReactivatePrevious::Yes);
    EXPECT_TRUE(running.activated.empty());
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

TEST_F(RingWindowControllerTest, keepsAnEntryWhileItIsEdited)
{
    const QVariantMap link{{u"class"_s, u"LinkMenuItem"_s}, {u"name"_s, u"Page"_s}, {u"url"_s, u"https://old"_s}};
    desktop.settings.setShowFinder(false);
    store({link});
    show();
    desktop.view().rightClickItem({0, 0});
    const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    desktop.editors.newText = u"https://new"_s;
    desktop.editors.whileOpen = [this] {
        ring->hideWindow(ReactivatePrevious::No, ForceHide::Yes);
        desktop.settings.setShowFinder(true);
        desktop.settings.setMenuSizeSettings(MenuSize::ExtraLarge);
        desktop.stage.plantedScreens = {{QRectF(0, 0, 600, 400)}};
        Q_EMIT desktop.stage.screensChanged();
        desktop.settle();
        EXPECT_EQ(ring->menuItems().count(), 1U) << "what changes meanwhile comes later";
        EXPECT_EQ(desktop.stage.presented, 1) << "the editor has the keyboard";
    };
    QAction *edit = menu->actions().first();
    edit->trigger();
    EXPECT_EQ(desktop.stage.lastFrame.width(), 800);
    desktop.settle();
    EXPECT_TRUE(desktop.window.isVisible());
    EXPECT_EQ(MemoryDesktop::names(ring->menuItems()), QStringList({u"Finder"_s, u"Page"_s}));
    ASSERT_EQ(desktop.editors.sessions.size(), 1U);
    EXPECT_EQ(desktop.editors.sessions[0].text, u"https://old"_s);
    const auto stored = PropertyList::read(desktop.container.itemFile());
    EXPECT_EQ(stored->toList()[0].toMap().value(u"url"_s), u"https://new"_s);
    EXPECT_GE(desktop.stage.presented, 2) << "the ring has the keyboard again";
    ring->hideWindow(ReactivatePrevious::No);
    edit->trigger();
    EXPECT_EQ(desktop.editors.sessions.size(), 1U) << "a ring that goes edits nothing any more";
    EXPECT_TRUE(desktop.notifications.notifications.isEmpty());
    ASSERT_TRUE(QDir(QFileInfo(desktop.container.itemFile()).path()).removeRecursively());
    desktop.container.write(u"data"_s, "no folder");
    ring->persistItems();
    ASSERT_EQ(desktop.notifications.notifications.size(), 1);
    EXPECT_TRUE(desktop.notifications.notifications[0].text.contains(desktop.container.itemFile()));
}

TEST_F(RingWindowControllerTest, doesNotComeForwardWhenAnEditorEndsBehindALocker)
{
    desktop.settings.setShowFinder(false);
    store({QVariantMap{{u"class"_s, u"LinkMenuItem"_s}, {u"name"_s, u"Page"_s}, {u"url"_s, u"https://old"_s}}});
    show();
    desktop.view().rightClickItem({0, 0});
    desktop.editors.whileOpen = [this] { desktop.session.setState(SessionState::State::Locked); };
    qobject_cast<QMenu *>(QApplication::activePopupWidget())->actions().first()->trigger();
    desktop.settle();
    EXPECT_EQ(desktop.stage.presented, 1);
    EXPECT_FALSE(desktop.window.isVisible());
}

TEST_F(RingWindowControllerTest, goesAtOnceWhereNothingCanFade)
{
    show();
    desktop.stage.setCompositing(false);
    ring->hideWindow(ReactivatePrevious::No);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(desktop.window.isVisible());
}

TEST_F(RingWindowControllerTest, marksTheEntryOfARoleWhileItsApplicationRunsAndShowsNoUnwantedOne)
{
    show();
    const auto isMarked = [&] { return desktop.view().itemFor({0, 5})->isHighlighted(); };
    EXPECT_FALSE(isMarked());
    const auto mail = start(u"Mail"_s);
    desktop.settings.addBlacklistedApplication(u"/apps/Unwanted.desktop"_s);
    start(u"Unwanted"_s);
    EXPECT_EQ(ring->menuItems().count(), 6U);
    EXPECT_TRUE(isMarked());
    running.terminate(mail);
    EXPECT_FALSE(isMarked());
    desktop.settings.removeBlacklistedApplication(u"/apps/Unwanted.desktop"_s);
    EXPECT_EQ(ring->menuItems().count(), 7U);
    desktop.settings.setWindowTintColor(Qt::black);
    EXPECT_EQ(desktop.view().itemFor({0, 5})->highlightColor(), QColor(Qt::white));
}

TEST_F(RingWindowControllerTest, showsRunningApplicationsInGreyOrInColor)
{
    QImage red(8, 8, QImage::Format_ARGB32_Premultiplied);
    red.fill(Qt::red);
    RunningApplication record;
    record.icon = Image::fromPixels(red);
    record.activationPolicy = ActivationPolicy::Regular;
    running.add(record);
    show();
    const auto image = [&] { return desktop.view().itemFor({0, 6})->image(); };
    const Image grey = image();
    EXPECT_NE(grey.render({8, 8}).pixelColor(4, 4), QColor(Qt::red));
    ring->refreshItems();
    EXPECT_EQ(image(), grey) << "or it would have to be rendered at every show";
    desktop.settings.setRunningAppsStyle(RunningAppsStyle::Colored);
    EXPECT_EQ(image().render({8, 8}).pixelColor(4, 4), QColor(Qt::red));
}

TEST_F(RingWindowControllerTest, opensOnceByHoveringInSwiftMode)
{
    desktop.workspace.coreApplications.insert(u"Mail"_s, u"/apps/mail.desktop"_s);
    desktop.settings.setSwiftMode(SwiftMode::Enabled);
    ring->showWindowAtScreenPosition({640, 400});
    hover(5);
    EXPECT_TRUE(desktop.workspace.actions.isEmpty()) << "not while the ring is hardly to be seen";
    desktop.settle();
    desktop.stage.buttonsUp = false;
    hover(5);
    EXPECT_TRUE(desktop.workspace.actions.isEmpty()) << "not with a button pressed";
    desktop.stage.buttonsUp = true;
    desktop.session.setState(SessionState::State::Locked);
    hover(5);
    EXPECT_TRUE(desktop.workspace.actions.isEmpty()) << "not behind a locker";
    desktop.session.setState(SessionState::State::Active);
    hover(5);
    EXPECT_EQ(desktop.workspace.actions.size(), 1);
}

TEST_F(RingWindowControllerTest, dimsAnEntryThatCannotBeReachedAndAsksNoDiskWhenApplicationsComeAndGo)
{
    const QString document = desktop.container.write(u"usb/letter.txt"_s, "Dear reader");
    desktop.settings.setShowFinder(false);
    const auto entry = FileMenuItem::fromPath(document, desktop.services);
    desktop.files.isMounted = false;
    store({*entry->dictionaryRepresentation()});
    show();
    const auto shownItem = [this] { return desktop.view().itemFor({0, 0}); };
    EXPECT_TRUE(shownItem()->isDimmed());
    EXPECT_EQ(shownItem()->title(), u"letter (offline)"_s);
    desktop.settings.setSwiftMode(SwiftMode::Enabled);
    hover(0);
    EXPECT_TRUE(desktop.notifications.notifications.isEmpty()) << "hovering does not open it in vain";

    desktop.workspace.iconRequests = 0;
    const qsizetype looked = desktop.files.looked.size();
    const auto tool = start(u"Tool"_s);
    EXPECT_EQ(ring->menuItems().count(), 2U);
    running.terminate(tool);
    EXPECT_EQ(desktop.files.looked.size(), looked);
    EXPECT_EQ(desktop.workspace.iconRequests, 0);

    desktop.files.isMounted = true;
    desktop.files.look(entry->dictionaryRepresentation()->value(u"bookmarkData"_s).toByteArray());
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(shownItem()->isDimmed()) << "the ring follows what comes back";
    EXPECT_EQ(shownItem()->title(), u"letter"_s);

    ASSERT_TRUE(QFile::remove(document));
    ring->refreshItems();
    EXPECT_EQ(shownItem()->title(), u"letter (gone)"_s);
    EXPECT_EQ(PropertyList::read(desktop.container.itemFile())->toList().size(), 1);
    ring->hideWindow(ReactivatePrevious::No);
    desktop.settle();
    EXPECT_TRUE(PropertyList::read(desktop.container.itemFile())->toList().isEmpty());
    EXPECT_EQ(desktop.notifications.notifications.size(), 1);
}

TEST_F(RingWindowControllerTest, keepsTheChoiceByKeyboardInSight)
{
    show();
    const auto first = start(u"First"_s);
    const auto second = start(u"Second"_s);
    const auto expectChosen = [this](qint64 position) {
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(desktop.view().highlightedItem().position, position);
        EXPECT_TRUE(desktop.view().itemFor({0, position})->isSelected());
    };
    hover(6);
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, 106 + 8, 0, 0); // as X numbers the key
    QCoreApplication::sendEvent(&desktop.window, &right);
    expectChosen(7);
    running.terminate(first);
    expectChosen(6);
    running.terminate(second);
    expectChosen(5);
    hover(2);
    start(u"Third"_s);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(desktop.view().itemFor({0, 2})->isSelected()) << "the pointer has taken over";
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
