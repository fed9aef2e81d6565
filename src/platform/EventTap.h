#pragma once

#include <QObject>

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

} // namespace Orbita
