#pragma once

#include <QObject>

#include <bitset>

namespace Orbita {

class X11Connection;
class X11RawInput;

/// Which keys are down, whatever program they are pressed for.
class X11KeysDown final : public QObject {
    Q_OBJECT
public:
    using Keys = std::bitset<256>; ///< by key code

    /// Both are borrowed.
    X11KeysDown(X11Connection &connection, X11RawInput &input, QObject *parent = nullptr);
    ~X11KeysDown() override;

    /// Follows the keys from now on. Costs a round trip.
    void follow();
    void stop();
    /// Nothing while they are not followed.
    [[nodiscard]] const Keys &keys() const { return m_keys; }

Q_SIGNALS:
    /// \a key went down, at the server's time \a time. It is among keys() by then.
    void pressed(quint8 key, quint32 time);

private:
    X11Connection &m_connection;
    X11RawInput &m_input;
    Keys m_keys;
    bool m_follows = false;
};

} // namespace Orbita
