#pragma once

#include <QObject>
#include <QTimer>

namespace Orbita {

class MouseUpEventTap;

/// Watches the input of the whole session for what shows and hides the ring, while it is started.
class TriggerHandlers : public QObject {
    Q_OBJECT
public:
    /// \a mouseUpEventTap is borrowed.
    explicit TriggerHandlers(MouseUpEventTap &mouseUpEventTap, QObject *parent = nullptr);

    /// Stops, then enables the taps and the watchdog.
    void start();
    void stop();
    [[nodiscard]] bool isStarted() const { return m_watchdogTimer.isActive(); }
    /// Enables again each tap that ought to be enabled. The watchdog does so every 8 seconds.
    void check();

Q_SIGNALS:
    /// The left mouse button was released somewhere.
    void shouldHide();

private:
    MouseUpEventTap &m_mouseUpEventTap;
    QTimer m_watchdogTimer{this};
};

} // namespace Orbita
