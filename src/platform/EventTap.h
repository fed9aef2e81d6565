#pragma once

#include "platform/Touch.h"

#include <QObject>

#include <chrono>

namespace Orbita {

/// Listens to one kind of input in the whole session, whatever program has the focus or holds a grab, and takes
/// nothing away from anybody. A tap that lost its source is disabled until it is enabled again.
class EventTap : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isEnabled() const = 0;
    /// True when the tap is now in the state asked for.
    virtual bool setEnabled(bool enabled) = 0;
};

/// Releases of the left mouse button.
class MouseUpEventTap : public EventTap {
    Q_OBJECT
public:
    using EventTap::EventTap;

Q_SIGNALS:
    void mouseUp();
};

/// Presses of the mouse buttons other than the left and the right one. Turning a wheel presses none.
class OtherMouseDownEventTap : public EventTap {
    Q_OBJECT
public:
    using EventTap::EventTap;

Q_SIGNALS:
    /// \a buttonNumber is 2 for the middle button, 3 and 4 for those that go back and forward, and so on.
    void otherMouseDown(int buttonNumber);
};

/// Movements of the pointer.
class MouseMovedEventTap : public EventTap {
    Q_OBJECT
public:
    using EventTap::EventTap;

    /// Tells of no movement for \a duration, which costs nothing, and then goes on; for who has seen enough for now.
    virtual void pause(std::chrono::milliseconds duration) = 0;

Q_SIGNALS:
    void mouseMoved();
};

/// Fingers on the touchpads.
class TouchEventTap : public EventTap {
    Q_OBJECT
public:
    using EventTap::EventTap;

Q_SIGNALS:
    /// Something changed on a pad, which is now touched by \a touching; by none when the last finger was lifted or the
    /// pad vanished.
    void gesture(const Orbita::Touches &touching);
    /// The fingers that touch a pad have moved apart or together by more than a tenth since they touched it, or since
    /// the last time. Follows the gesture of that moment.
    void magnify();
};

} // namespace Orbita
