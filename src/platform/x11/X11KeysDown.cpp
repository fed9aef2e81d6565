#include "platform/x11/X11KeysDown.h"

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11RawInput.h"

#include <xcb/xinput.h>
#define explicit explicit_ // a field's name there
#include <xcb/xkb.h>
#undef explicit

#include <utility>

namespace Orbita {

namespace {

constexpr quint32 rawKeys = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;

} // namespace

X11KeysDown::X11KeysDown(X11Connection &connection, X11RawInput &input, QObject *parent)
    : QObject(parent), m_connection(connection), m_input(input)
{
    connect(&connection, &X11Connection::rawKeyPressed, this, [this](quint8 key) {
        // Some devices repeat a key that is held by further presses.
        if (!m_follows || m_keys.test(key))
            return;
        m_keys.set(key);
        Q_EMIT pressed(key);
    });
    connect(&connection, &X11Connection::rawKeyReleased, this, &X11KeysDown::release);
    // While a passive grab of ours is active, the server tells us of the keyboard in this way alone.
    connect(&connection, &X11Connection::keyPressed, this, [this](quint8 key) { m_keys.set(key, m_follows); });
    connect(&connection, &X11Connection::keyReleased, this, &X11KeysDown::release);
}

X11KeysDown::~X11KeysDown()
{
    stop();
}

void X11KeysDown::follow()
{
    if (m_follows)
        return;
    m_follows = m_input.listen(rawKeys);
    m_keys.reset();
    const auto reply = m_connection.reply(xcb_query_keymap_reply, xcb_query_keymap(m_connection.xcb()));
    for (std::size_t key = 0; m_follows && reply && key < m_keys.size(); ++key)
        m_keys.set(key, (reply->keys[key / 8] >> (key % 8) & 1) != 0);
}

void X11KeysDown::release(quint8 key)
{
    m_keys.reset(key);
    Q_EMIT released(key);
}

bool X11KeysDown::countAtOnce() const
{
    if (!m_connection.watchKeyboard())
        return true;
    const auto controls = m_connection.reply(xcb_xkb_get_controls_reply,
                                             xcb_xkb_get_controls(m_connection.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    constexpr quint32 filters = XCB_XKB_BOOL_CTRL_SLOW_KEYS | XCB_XKB_BOOL_CTRL_BOUNCE_KEYS;
    return !controls || (controls->enabledControls & filters) == 0;
}

void X11KeysDown::stop()
{
    if (std::exchange(m_follows, false))
        m_input.ignore(rawKeys);
    m_keys.reset();
}

} // namespace Orbita
