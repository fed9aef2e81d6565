#include "app/AppDelegate.h"

#include "app/CommandService.h"
#include "app/OrbitaApplication.h"
#include "app/RingDesktop.h"
#include "model/FileMenuItem.h"

#include <QDialog>
#include <QKeyEvent>

#include <gtest/gtest.h>

#include <algorithm>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

struct AppDelegateTest : testing::Test {
    RingDesktop desktop;
    AppDelegate delegate{desktop.window, desktop.controllerServices, desktop.toolkitLink, desktop.clock.appearance};

    AppDelegateTest()
    {
        desktop.settings.setLaunchedBefore(true);
        delegate.listenToTriggers();
        delegate.applicationDidFinishLaunching();
    }
    [[nodiscard]] bool isShown()
    {
        desktop.settle();
        return desktop.window.isVisible();
    }
};

TEST_F(AppDelegateTest, preparesThePicturesOfFilesThatBecomeKnownWithoutLookingAgain)
{
    const QString file = desktop.container.write(QStringLiteral("letter.txt"), "Dear reader");
    desktop.storeEntries({*FileMenuItem::fromPath(file, desktop.services)->dictionaryRepresentation()});
    delegate.prepareAtLeisure();
    desktop.pictures.waitUntilIdle();
    desktop.workspace.icons.insert(file, Image::fromPixels(QImage(8, 8, QImage::Format_RGB32)));
    const QByteArray bookmark = desktop.files.looked.last();
    desktop.files.look(bookmark);
    const qsizetype looks = desktop.files.looked.size();
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(desktop.pictures.isIdle()) << "it looks different";
    EXPECT_EQ(desktop.files.looked.size(), looks) << "or a disk that answers late would be asked for ever";
    desktop.pictures.waitUntilIdle();
}

TEST_F(AppDelegateTest, togglesByTheShortcutOverTheRingOnly)
{
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Shortcut);
    EXPECT_TRUE(isShown());
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad);
    EXPECT_TRUE(isShown()) << "a gesture over the ring leaves it";
    desktop.stage.pointer = {1000, 500};
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Shortcut);
    EXPECT_TRUE(isShown()) << "it moves to the pointer";
    EXPECT_EQ(desktop.stage.lastFrame.center(), desktop.stage.pointer);
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Shortcut);
    EXPECT_FALSE(isShown());
}

TEST_F(AppDelegateTest, hidesForAReleaseOutsideTheWindowsSquare)
{
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad);
    EXPECT_TRUE(isShown());
    desktop.stage.pointer = {441, 599};
    desktop.triggers.taps.mouseUp.release();
    EXPECT_TRUE(isShown());
    desktop.stage.pointer = {439, 400};
    desktop.triggers.taps.mouseUp.release();
    EXPECT_FALSE(isShown());
}

TEST_F(AppDelegateTest, hidesForASecondToggleHoweverSoonItComes)
{
    CommandService commands;
    delegate.follow(commands);
    Q_EMIT commands.toggleRequested();
    EXPECT_TRUE(desktop.window.isVisible());
    Q_EMIT commands.toggleRequested();
    EXPECT_FALSE(isShown());
}

TEST_F(AppDelegateTest, showsForACommandThatComesWhileTheRingFadesOut)
{
    CommandService commands;
    delegate.follow(commands);
    for (const auto command : {&CommandService::toggleRequested, &CommandService::showRequested}) {
        Q_EMIT commands.showRequested();
        desktop.settle();
        Q_EMIT commands.hideRequested();
        desktop.clock.advance(AnimationClock::defaultDuration / 4);
        Q_EMIT(commands.*command)();
        EXPECT_TRUE(isShown());
    }
}

TEST_F(AppDelegateTest, presentsAnOpenDialogInsteadOfTheRing)
{
    CommandService commands;
    delegate.follow(commands);
    QDialog dialog;
    dialog.setModal(true);
    dialog.showMinimized();
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad);
    Q_EMIT commands.showRequested();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(desktop.stage.presented, 2);
    EXPECT_FALSE(dialog.isMinimized());
    dialog.close();
    Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad);
    EXPECT_TRUE(isShown());
}

TEST_F(AppDelegateTest, keepsARingThatIsShownAgainWhileTheFormerOneGoes)
{
    const auto show = [this] { Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad); };
    // The end of the fade, or the news of it, is on its way when the next trigger comes.
    for (const Qt::ConnectionType comes : {Qt::DirectConnection, Qt::QueuedConnection}) {
        show();
        desktop.settle();
        desktop.stage.pointer = {0, 0};
        desktop.triggers.taps.mouseUp.release();
        desktop.clock.advance(AnimationClock::defaultDuration);
        desktop.stage.pointer = {640, 400};
        QMetaObject::invokeMethod(&delegate, show, comes);
        desktop.settle(); // the news comes after the show
        EXPECT_TRUE(isShown());
        EXPECT_NE(desktop.window.findChild<RingView *>(), nullptr);
    }
}

TEST_F(AppDelegateTest, showsNothingUntilTheUserSitsBeforeTheSessionAgain)
{
    CommandService commands;
    delegate.follow(commands);
    MemoryTouchEventTap &touchpads = desktop.triggers.taps.touch;
    for (const SessionState::State state : {SessionState::State::Locked, SessionState::State::InBackground}) {
        const auto editor = desktop.runningApplications.start(u"/apps/editor.desktop"_s, u"Editor"_s);
        desktop.runningApplications.bringToFront(editor);
        Q_EMIT commands.showRequested();
        EXPECT_TRUE(isShown());
        const int presented = desktop.stage.presented;
        desktop.session.setState(state);
        QCoreApplication::sendPostedEvents();
        EXPECT_FALSE(desktop.window.isVisible()) << "at once, without a fade";
        EXPECT_TRUE(desktop.runningApplications.activated.empty()) << "no window is raised above a locker";
        EXPECT_FALSE(touchpads.isEnabled());
        Q_EMIT desktop.settings.shouldShow(ShowEvent::Shortcut);
        Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad);
        Q_EMIT commands.showRequested();
        Q_EMIT commands.toggleRequested();
        delegate.showSettings(); // as a click on the tray does
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        Q_EMIT commands.showRequested();
        Q_EMIT desktop.settings.shouldShow(ShowEvent::Trackpad);
        dialog.close();
        EXPECT_FALSE(isShown());
        EXPECT_EQ(desktop.stage.presented, presented);
        EXPECT_EQ(std::ranges::count_if(QApplication::topLevelWidgets(), &QWidget::isVisible), 0);

        desktop.session.setState(SessionState::State::Active);
        EXPECT_TRUE(touchpads.isEnabled()) << "not only when the watchdog comes";
        EXPECT_FALSE(isShown()) << "nothing comes back by itself";
    }
}

TEST(EditingShortcuts, reachAFieldThroughItsParentsUnlessCapsLockIsOn)
{
    const auto operation = [](int key, Qt::KeyboardModifiers modifiers, quint32 native = 0) {
        return editingOperation(QKeyEvent(QEvent::KeyPress, key, modifiers, 0, 0, native));
    };
    EXPECT_STREQ(operation(Qt::Key_X, Qt::ControlModifier), "cut");
    EXPECT_STREQ(operation(Qt::Key_C, Qt::ControlModifier), "copy");
    EXPECT_STREQ(operation(Qt::Key_V, Qt::ControlModifier), "paste");
    EXPECT_STREQ(operation(Qt::Key_A, Qt::ControlModifier), "selectAll");
    EXPECT_EQ(operation(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier), nullptr);
    EXPECT_EQ(operation(Qt::Key_V, Qt::NoModifier), nullptr);
    EXPECT_EQ(operation(Qt::Key_V, Qt::ControlModifier, 2), nullptr);
    EXPECT_EQ(operation(Qt::Key_B, Qt::ControlModifier), nullptr);
}

} // namespace
} // namespace Orbita
