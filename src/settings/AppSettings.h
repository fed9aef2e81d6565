#pragma once

#include "settings/SettingValues.h"
#include "settings/triggers/TriggerHandlers.h"

#include <QColor>
#include <QObject>
#include <QStringList>

namespace Orbita {

class UserDefaults;

/// The user's preferences, and what watches for the triggers of the ring.
///
/// A getter reads the store afresh, and gives the default where the stored value is missing, of another type or out of
/// range. A setter writes at once and then emits the signal of its setting, if it has one, whether or not the value is
/// another. The signals are also emitted when another program has changed what a getter returns.
class AppSettings : public QObject {
    Q_OBJECT
public:
    /// \a defaults and \a sources are borrowed.
    AppSettings(UserDefaults &defaults, const TriggerSources &sources, QObject *parent = nullptr);

    /// Three-finger rest by default. Setting it starts the handlers anew.
    [[nodiscard]] GestureTrigger gestureSettings() const;
    void setGestureSettings(GestureTrigger trigger);

    /// Whether items grow under the pointer; true by default.
    [[nodiscard]] bool magnifySettings() const;
    void setMagnifySettings(bool magnify);

    /// White by default.
    [[nodiscard]] QColor windowTintColor() const;
    void setWindowTintColor(const QColor &color);

    /// Normal by default. The first reading stores it: hidden where an earlier version was told to show no running
    /// applications.
    [[nodiscard]] RunningAppsStyle runningAppsStyle();
    void setRunningAppsStyle(RunningAppsStyle style);

    [[nodiscard]] MenuSize menuSizeSettings() const;
    void setMenuSizeSettings(MenuSize size);

    [[nodiscard]] MenuPosition menuPositionSettings() const;
    void setMenuPositionSettings(MenuPosition position);

    [[nodiscard]] SwiftMode swiftMode() const;
    void setSwiftMode(SwiftMode mode);

    [[nodiscard]] TitleDisplay titleDisplay() const;
    void setTitleDisplay(TitleDisplay display);

    /// Whether the ring holds the file manager; true by default.
    [[nodiscard]] bool showFinder() const;
    void setShowFinder(bool show);

    /// False by default.
    [[nodiscard]] bool launchAtLogin() const;
    void setLaunchAtLogin(bool launch);

    /// True once the first launch is over.
    [[nodiscard]] bool launchedBefore() const;
    void setLaunchedBefore(bool launched);

    /// Paths of the applications that never appear among the running ones.
    [[nodiscard]] QStringList blacklistedApplications() const;
    /// Adds \a path unless it is in the list.
    void addBlacklistedApplication(const QString &path);
    void removeBlacklistedApplication(const QString &path);

    /// Writes three-finger rest and magnification, and nothing else. Emits nothing and restarts nothing.
    void reset();

    void startHandlers();
    void stopHandlers() { m_handlers.stop(); }
    void checkHandlers() { m_handlers.check(); }
    void setHandlersSuspended(bool suspended) { m_handlers.setSuspended(suspended); }

Q_SIGNALS:
    void magnifySettingsChanged();
    void windowTintSettingsChanged();
    void runningAppsStyleChanged();
    void menuSizeSettingsChanged();
    void showFinderChanged();
    void blacklistedApplicationsChanged();

    /// The handlers are about to be started, perhaps for another trigger than before.
    void handlersStarting();
    /// A trigger fired.
    void shouldShow(Orbita::ShowEvent event);
    /// The left mouse button was released somewhere.
    void shouldHide();

private:
    /// The settings of which others are told when they change.
    struct Announced {
        GestureTrigger trigger = GestureTriggerThreeFingerRest;
        bool magnify = true;
        QColor tint;
        RunningAppsStyle style = RunningAppsStyle::Normal;
        MenuSize size = MenuSize::Small;
        bool showFinder = true;
        QStringList blacklist;
    };

    [[nodiscard]] Announced current() const;
    [[nodiscard]] RunningAppsStyle effectiveRunningAppsStyle() const;
    void setBlacklistedApplications(const QStringList &paths);
    void announceChanges();

    UserDefaults &m_defaults;
    TriggerHandlers m_handlers;
    Announced m_announced; ///< as of the last change
};

} // namespace Orbita
