#include "desktop/harness/Input.h"
#include "desktop/harness/Wait.h"

#include <QStringList>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>

namespace Orbita {

namespace {

/// What makes \a symbol in the present layout: a key, Shift before it if need be.
/// The keyboard is read anew for each use: a test may change the layout at any time.
QList<quint8> codesFor(const XConnection &connection, xkb_keysym_t symbol, const QString &name)
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
            if (symbols[key * perKey + level] != symbol)
                continue;
            const auto shift
                = level == 1 ? codesFor(connection, XKB_KEY_Shift_L, QStringLiteral("Shift")) : QList<quint8>();
            return shift + QList<quint8>{static_cast<quint8>(setup->min_keycode + key)};
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

} // namespace

void Input::fake(quint8 type, quint8 detail, QPoint position) const
{
    xcb_test_fake_input(m_connection, type, detail, XCB_CURRENT_TIME, m_connection.root(),
                        static_cast<qint16>(position.x()), static_cast<qint16>(position.y()), 0);
    m_connection.sync();
}

QList<quint8> Input::keyCodes(const QString &chord) const
{
    QList<quint8> codes;
    for (const QString &name : chord.split(QLatin1Char('+'))) {
        for (const quint8 code : codesFor(m_connection, symbolOf(name), name)) {
            if (!codes.contains(code))
                codes += code;
        }
    }
    return codes;
}

void Input::pressKeys(const QList<quint8> &codes) const
{
    for (const quint8 code : codes)
        fake(XCB_KEY_PRESS, code);
}

void Input::releaseKeys(const QList<quint8> &codes) const
{
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        fake(XCB_KEY_RELEASE, *code);
}

void Input::tap(const QString &chord) const
{
    pressKeys(keyCodes(chord));
    releaseKeys(keyCodes(chord));
}

void Input::type(const QString &text) const
{
    for (const char32_t character : text.toStdU32String()) {
        const auto symbol = character == U'\n' ? XKB_KEY_Return : xkb_utf32_to_keysym(character);
        const QList<quint8> codes = codesFor(m_connection, symbol, QString::fromUcs4(&character, 1));
        pressKeys(codes);
        releaseKeys(codes);
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

} // namespace Orbita
