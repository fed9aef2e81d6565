#pragma once

#include "platform/EventTap.h"

namespace Orbita {

class X11Connection;

/// Hears the left button through raw events of XInput 2, which arrive whatever window is under the pointer and
/// whoever holds a grab.
class X11MouseUpEventTap final : public MouseUpEventTap {
    Q_OBJECT
public:
    /// Disabled at first.
    explicit X11MouseUpEventTap(X11Connection &connection, QObject *parent = nullptr);
    ~X11MouseUpEventTap() override;

    [[nodiscard]] bool isEnabled() const override { return m_enabled; }
    bool setEnabled(bool enabled) override;

private:
    /// Whether the server now sends releases, or no longer does.
    [[nodiscard]] bool select(bool releases);

    X11Connection &m_connection;
    bool m_enabled = false;
};

} // namespace Orbita
