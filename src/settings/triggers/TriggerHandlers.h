#pragma once

#include "settings/SettingValues.h"
#include "settings/triggers/CircleDetector.h"
#include "settings/triggers/FingerRestDetector.h"
#include "settings/triggers/FingerSpreadDetector.h"

#include <QObject>
#include <QQueue>
#include <QTimer>

#include <functional>

namespace Orbita {

class EventTap;
class MASShortcutUserDefaultsHotKeys;
class MouseMovedEventTap;
class MouseUpEventTap;
class OtherMouseDownEventTap;
class Stage;
class TouchEventTap;

/// What asked for the ring: the keyboard shortcut, or any other trigger.
enum class ShowEvent { Shortcut, Trackpad };

/// Where triggers come from.
struct TriggerSources {
    MouseUpEventTap &mouseUp;
    OtherMouseDownEventTap &otherMouseDown;
    MouseMovedEventTap &mouseMoved;
    TouchEventTap &touch;
    Stage &stage; ///< knows where the pointer is
    MASShortcutUserDefaultsHotKeys &shortcuts;
};

/// Watches the input of the whole session for what shows and hides the ring, while it is started.
///
/// What the detectors have seen outlives a stop; it ages, or the next events take its place.
class TriggerHandlers : public QObject {
    Q_OBJECT
public:
    using Time = CircleDetector::Time;

    /// \a sources are borrowed. \a trigger is asked for the trigger that is wanted now, \a clock for the time.
    TriggerHandlers(const TriggerSources &sources, std::function<GestureTrigger()> trigger,
                    std::function<Time()> clock = &std::chrono::steady_clock::now, QObject *parent = nullptr);
    ~TriggerHandlers() override;

    /// Stops, then takes the shortcut and enables the taps, unless they are suspended, and the watchdog.
    void start();
    void stop();
    /// While suspended no tap is enabled, whether started or not; the shortcut stays taken. The end of it enables all
    /// taps anew, so that they find the devices that came meanwhile.
    void setSuspended(bool suspended);
    [[nodiscard]] bool isStarted() const { return m_watchdogTimer.isActive(); }
    /// Enables again each tap that ought to be enabled; none while suspended. The watchdog does so every 8 seconds.
    void check();
    /// Makes those checks on resting fingers whose time has come. A timer does so while there are any.
    void makeRestChecks();

Q_SIGNALS:
    /// A trigger fired.
    void shouldShow(Orbita::ShowEvent event);
    /// The left mouse button was released somewhere.
    void shouldHide();

private:
    [[nodiscard]] EventTap *tapOfTrigger() const;
    void disableTaps();
    void otherMouseDown(int buttonNumber);
    void touched(const Touches &touching);
    void pinched();
    void scheduleRestCheck();
    void mouseMoved();
    void fire() { Q_EMIT shouldShow(ShowEvent::Trackpad); }

    TriggerSources m_sources;
    std::function<GestureTrigger()> m_trigger;
    std::function<Time()> m_clock;
    QTimer m_watchdogTimer{this};
    bool m_isSuspended = false;
    FingerRestDetector m_fingerRest;
    QQueue<Time> m_restChecks; ///< when the detector's checks are to be made, the next first
    QTimer m_restTimer;        ///< ticks while there are such checks
    FingerSpreadDetector m_fingerSpread;
    CircleDetector m_circle;
};

} // namespace Orbita
