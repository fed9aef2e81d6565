#include "desktop/harness/Input.h"
#include "desktop/harness/Wait.h"

#include <QStringList>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>

namespace Orbita {

namespace {

/// How the present layout makes a key symbol.
struct Key {
    quint8 code;
    bool needsShift;
};

/// The keyboard is read anew for each use: a test may change the layout at any time.
Key findKey(const XConnection &connection, xkb_keysym_t symbol, const QString &name)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const XReply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, static_cast<quint8>(count)), nullptr));
    if (!reply)
        throw DesktopFailure(QStringLiteral("the X server has gone"));
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    const int perKey = reply->keysyms_per_keycode;
    for (const int level : {0, 1}) {
        for (int key = 0; key < count && level < perKey; ++key) {
            if (symbols[key * perKey + level] == symbol)
                return {static_cast<quint8>(setup->min_keycode + key), level == 1};
        }
    }
    throw DesktopFailure(QStringLiteral("the keyboard has no key \"%1\"").arg(name));
}

xkb_keysym_t symbolOf(const QString &name)
{
    static const QHash<QString, QString> modifiers{{QStringLiteral("Control"), QStringLiteral("Control_L")},
                                                   {QStringLiteral("Shift"), QStringLiteral("Shift_L")},
                                                   {QStringLiteral("Alt"), QStringLiteral("Alt_L")},
                                                   {QStringLiteral("Super"), QStringLiteral("Super_L")}};
    return xkb_keysym_from_name(modifiers.value(name, name).toUtf8().constData(), XKB_KEYSYM_NO_FLAGS);
}

xkb_keysym_t symbolOf(char32_t character)
{
    return character == U'\n' ? XKB_KEY_Return : xkb_utf32_to_keysym(character);
}

} // namespace

void Input::send(quint8 type, quint8 detail, QPoint position) const
{
    xcb_test_fake_input(m_connection, type, detail, XCB_CURRENT_TIME, m_connection.root(),
                        static_cast<qint16>(position.x()), static_cast<qint16>(position.y()), 0);
}

void Input::fake(quint8 type, quint8 detail, QPoint position) const
{
    send(type, detail, position);
    m_connection.sync();
}

QList<quint8> Input::keyCodes(const QString &chord) const
{
    QList<quint8> codes;
    for (const QString &name : chord.split(QLatin1Char('+'))) {
        const Key key = findKey(m_connection, symbolOf(name), name);
        const quint8 shift = findKey(m_connection, XKB_KEY_Shift_L, QStringLiteral("Shift")).code;
        if (key.needsShift && !codes.contains(shift))
            codes += shift;
        codes += key.code;
    }
    return codes;
}

void Input::pressKeys(const QList<quint8> &codes) const
{
    for (const quint8 code : codes)
        send(XCB_KEY_PRESS, code);
    m_connection.sync();
}

void Input::releaseKeys(const QList<quint8> &codes) const
{
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        send(XCB_KEY_RELEASE, *code);
    m_connection.sync();
}

void Input::tap(const QString &chord) const
{
    pressKeys(chord);
    releaseKeys(chord);
}

void Input::type(const QString &text) const
{
    const quint8 shift = findKey(m_connection, XKB_KEY_Shift_L, QStringLiteral("Shift")).code;
    for (const char32_t character : text.toStdU32String()) {
        const Key key = findKey(m_connection, symbolOf(character), QString::fromUcs4(&character, 1));
        if (key.needsShift)
            fake(XCB_KEY_PRESS, shift);
        fake(XCB_KEY_PRESS, key.code);
        fake(XCB_KEY_RELEASE, key.code);
        if (key.needsShift)
            fake(XCB_KEY_RELEASE, shift);
    }
}

QPoint Input::pointer() const
{
    const XReply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_connection.root()), nullptr));
    return reply ? QPoint(reply->root_x, reply->root_y) : QPoint();
}

void Input::moveTo(QPoint position) const
{
    constexpr quint8 absolute = 0;
    fake(XCB_MOTION_NOTIFY, absolute, position);
}

void Input::moveBy(QPoint distance) const
{
    constexpr quint8 relative = 1;
    fake(XCB_MOTION_NOTIFY, relative, distance);
}

void Input::press(Button button) const
{
    fake(XCB_BUTTON_PRESS, static_cast<quint8>(button));
}

void Input::release(Button button) const
{
    fake(XCB_BUTTON_RELEASE, static_cast<quint8>(button));
}

void Input::click(QPoint position, Button button) const
{
    moveTo(position);
    press(button);
    release(button);
}

void Input::glide(QPoint to, int steps) const
{
    const QPoint from = pointer();
    for (int step = 1; step <= steps; ++step)
        moveTo(from + (to - from) * step / steps);
}

void Input::drag(QPoint from, QPoint to, int steps) const
{
    moveTo(from);
    press();
    glide(to, steps);
    release();
}

} // namespace Orbita
