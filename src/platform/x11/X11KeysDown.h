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
    /// Whether a key counts as soon as it is down. False for a user who has slow keys, which have to be held, or bounce
    /// keys, of which a second press in a row is none. Costs a round trip.
    [[nodiscard]] bool countAtOnce() const;

Q_SIGNALS:
    /// \a key went down. It is among keys() by then.
    void pressed(quint8 key);
    void released(quint8 key);

private:
    void release(quint8 key);

    X11Connection &m_connection;
    X11RawInput &m_input;
    Keys m_keys;
    bool m_follows = false;
};

} // namespace Orbita
