#pragma once

#include "platform/EventTap.h"

#include <QByteArray>

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

    /// Raw events tell which button it is on the device; a left-handed user has others in mind.
    [[nodiscard]] quint32 logicalButton(quint32 physical);

    X11Connection &m_connection;
    QByteArray m_logicalButtons; ///< by physical number from 1 on; empty when it has to be asked for
    bool m_enabled = false;
};

} // namespace Orbita
