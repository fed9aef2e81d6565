#pragma once

#include "platform/HotKeyService.h"
#include "platform/x11/X11Keyboard.h"

#include <QTimer>

#include <optional>
#include <vector>

namespace Orbita {

/// Takes hot keys by passive grabs on the root window, each with and without every lock.
///
/// A grab keeps the keys from other programs. It is silent while another program has the whole keyboard for itself, as
/// menus do; so presses are heard through raw events, too, and told once.
///
/// What is taken stays taken when the keyboard changes: a grab follows its modifiers to other bits. While it cannot
/// be had it is not pressed, and it is tried for again at each further change.
class X11HotKeyService final : public HotKeyService {
    Q_OBJECT
public:
    /// Asks the server for nothing before the first grab. Both are borrowed.
    X11HotKeyService(X11Connection &connection, X11RawInput &input, QObject *parent = nullptr);
    /// Gives all hot keys back.
    ~X11HotKeyService() override;

    [[nodiscard]] Result<void, GrabError> grab(HotKeyId id, KeyCombination combination) override;
    void release(HotKeyId id) override;
    [[nodiscard]] bool isTakenByOther(KeyCombination combination) override;

private:
    struct HotKey {
        HotKeyId id;
        KeyCombination combination;
        std::optional<X11KeyGrab> grab; ///< what the server has given; nothing while it cannot be had
        bool missReported = false;
    };

    [[nodiscard]] bool isOurs(const X11KeyGrab &grab) const;
    [[nodiscard]] Result<void, GrabError> take(const X11KeyGrab &grab);
    void giveBack(const X11KeyGrab &grab);
    void followKeyboard();
    void retake(HotKey &hotKey, const std::optional<X11KeyGrab> &grab);
    /// One going down or up of a key.
    struct Stroke {
        quint8 key = 0;
        xcb_timestamp_t time = 0;

        friend bool operator==(const Stroke &, const Stroke &) = default;
    };
    void hearThroughGrab(Stroke press, quint16 state);
    void hearRaw(quint8 key);
    [[nodiscard]] std::optional<HotKeyId> hotKeyOf(quint8 key, quint16 modifiers) const;

    X11Connection &m_connection;
    std::vector<HotKey> m_hotKeys;
    std::optional<X11Keyboard> m_keyboard; ///< as of the last change; only while there are hot keys
    X11KeysDown m_keysDown;
    std::optional<Stroke> m_lastRelease; ///< that a grab told
    std::optional<quint8> m_toldKey;     ///< that is down, and of which a raw event has told
    QTimer m_keyboardSettles;
};

} // namespace Orbita
