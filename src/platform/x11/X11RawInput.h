#pragma once

#include <QByteArray>
#include <QObject>

namespace Orbita {

class X11Connection;

/// Raw events of XInput 2, which arrive whatever window is under the pointer and whoever holds a grab. Nothing is asked
/// of the server that no tap listens to.
class X11RawInput final : public QObject {
    Q_OBJECT
public:
    /// \a connection is borrowed.
    explicit X11RawInput(X11Connection &connection, QObject *parent = nullptr);

    /// Whether the server now sends the events in \a mask (XCB_INPUT_XI_EVENT_MASK_RAW_...), beside those it sends
    /// already. Each mask belongs to one listener.
    [[nodiscard]] bool listen(quint32 mask);
    /// The server sends the events in \a mask no longer.
    void ignore(quint32 mask);
    /// As listen() for what has been listened to before, without waiting for the server.
    void resume(quint32 mask);

Q_SIGNALS:
    /// By their logical numbers: those a left-handed user has in mind, and not those of the device.
    void buttonPressed(quint32 button);
    void buttonReleased(quint32 button);
    void moved();
    /// The server has gone away.
    void lost();

private:
    void send();
    [[nodiscard]] quint32 logicalButton(quint32 physical);

    X11Connection &m_connection;
    quint32 m_mask = 0;          ///< what the server sends
    QByteArray m_logicalButtons; ///< by physical number from 1 on; empty when it has to be asked for
};

} // namespace Orbita
