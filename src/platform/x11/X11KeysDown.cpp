#include "platform/x11/X11KeysDown.h"

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11RawInput.h"

#include <xcb/xinput.h>

namespace Orbita {

namespace {

constexpr quint32 rawKeys = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;

} // namespace

X11KeysDown::X11KeysDown(X11Connection &connection, X11RawInput &input, QObject *parent)
    : QObject(parent), m_connection(connection), m_input(input)
{
    connect(&connection, &X11Connection::rawKeyPressed, this, [this](quint8 key, xcb_timestamp_t time) {
        if (!m_follows)
            return;
        m_keys.set(key);
        Q_EMIT pressed(key, time);
    });
    connect(&connection, &X11Connection::rawKeyReleased, this, [this](quint8 key) { m_keys.reset(key); });
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

void X11KeysDown::stop()
{
    if (std::exchange(m_follows, false))
        m_input.ignore(rawKeys);
    m_keys.reset();
}

} // namespace Orbita
