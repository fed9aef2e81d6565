#pragma once

#include "app/RingWindowController.h"
#include "app/SettingsStandInWindow.h"

#include <QObject>

#include <memory>
#include <optional>

namespace Orbita {

class CommandService;
class RingWindow;
class StatusItem;
class ToolkitLink;
enum class ShowEvent;

/// Brings the program up, answers show and hide requests with the ring, and takes it down.
class AppDelegate final : public QObject {
    Q_OBJECT
public:
    /// \a window is the hidden window that every ring is shown in; \a appearance is asked for the tray's colour.
    AppDelegate(RingWindow &window, const ControllerServices &services, ToolkitLink &toolkit,
                const DesktopAppearance &appearance, QObject *parent = nullptr);
    ~AppDelegate() override;

    /// Starts to listen to triggers. A ring that was asked for need not wait for that.
    void listenToTriggers();
    /// Answers triggers and, on the very first run, opens the settings.
    void applicationDidFinishLaunching(TakesKeyboard settingsKeyboard = TakesKeyboard::Yes);
    /// Does what can wait until the program has nothing else to do: makes the native window, the pictures of the stored
    /// entries and the tray's icon, and looks for the companion.
    void prepareAtLeisure();
    void applicationWillTerminate();
    void follow(CommandService &commands);

    // Nothing is shown, by whatever way, while the session is not usable.

    /// Shows the ring, or, for the shortcut with the pointer on a shown ring, hides it.
    void orbitaShouldShow(ShowEvent event);
    /// Hides the ring unless the pointer is over it.
    void orbitaShouldHide();
    /// Shows the ring as a command asks for it, also where one is just fading out.
    void showRing();
    void showSettings();

private:
    void followSession();
    void preparePictures();
    void presentSettings(TakesKeyboard keyboard);
    [[nodiscard]] QPointF centreFor(QPointF pointer) const;
    /// Brings a dialog that waits for its answer to the front, minimised or not. False when there is none.
    bool presentDialog();
    void showAt(QPointF pointer, ShowEvent event);
    void toggle();
    [[nodiscard]] RingWindowController &ensureController();
    void ringWindowDidDisappear();

    RingWindow &m_window;
    ControllerServices m_services;
    ToolkitLink &m_toolkit;
    const DesktopAppearance &m_appearance;
    std::optional<MenuItemArray> m_preparedItems;             ///< from the start to the first ring
    std::unique_ptr<RingWindowController> m_windowController; ///< none while no ring exists
    std::unique_ptr<SettingsStandInWindow> m_settingsWindow;
    std::unique_ptr<StatusItem> m_statusItem;
};

} // namespace Orbita
