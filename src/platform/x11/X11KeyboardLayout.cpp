#include "platform/x11/X11KeyboardLayout.h"

#include "platform/KeyCodes.h"
#include "platform/x11/DeadKeys.h"
#include "platform/x11/X11Connection.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <chrono>

namespace Orbita {

namespace {

// Each gives back through its library what that made.
struct XkbDeleter {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};
template <typename T>
using XkbPointer = std::unique_ptr<T, XkbDeleter>;

QString textOf(xkb_keysym_t symbol)
{
    if (const char16_t accent = spacingAccent(symbol); accent != 0)
        return QString(QChar(accent));
    const char32_t character = xkb_keysym_to_utf32(symbol);
    // Return, Escape and the like have control characters.
    return character == 0 || QChar::category(character) == QChar::Other_Control ? QString()
                                                                                : QString::fromUcs4(&character, 1);
}

/// What the key at \a code types without modifiers in the group that \a state shows.
QString textOf(xkb_keymap *keymap, xkb_state *state, xkb_keycode_t code)
{
    const xkb_layout_index_t layout = xkb_state_key_get_layout(state, code);
    if (layout == XKB_LAYOUT_INVALID)
        return {};
    const xkb_keysym_t *symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, code, layout, 0, &symbols);
    QString text;
    for (int i = 0; i < count; ++i)
        text += textOf(symbols[i]);
    return text;
}

} // namespace

X11KeyboardLayout::X11KeyboardLayout(X11Connection &connection, QObject *parent)
    : KeyboardLayout(parent), m_connection(connection)
{
    using namespace std::chrono_literals;
    m_settles.setSingleShot(true);
    m_settles.setInterval(50ms); // one change of the layout arrives as several notices
    connect(&m_settles, &QTimer::timeout, this, &KeyboardLayout::changed);
    connect(&connection, &X11Connection::keyboardChanged, this, &X11KeyboardLayout::forget);
    connect(&connection, &X11Connection::keyboardGroupChanged, this, &X11KeyboardLayout::forget);
}

QString X11KeyboardLayout::text(quint16 virtualKeyCode) const
{
    if (virtualKeyCode >= std::tuple_size_v<Texts>)
        return {};
    if (!m_texts)
        m_texts = std::make_unique<Texts>(read());
    return (*m_texts)[virtualKeyCode];
}

X11KeyboardLayout::Texts X11KeyboardLayout::read() const
{
    Texts texts;
    if (!m_connection.watchKeyboard())
        return texts;
    // Only what the server sends is used, so that no files of the keyboard database are needed.
    const XkbPointer<xkb_context> context(
        xkb_context_new(xkb_context_flags(XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES)));
    xcb_connection_t *xcb = m_connection.xcb();
    const int32_t device = xkb_x11_get_core_keyboard_device_id(xcb);
    const XkbPointer<xkb_keymap> keymap(
        xkb_x11_keymap_new_from_device(context.get(), xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    const XkbPointer<xkb_state> state(keymap ? xkb_x11_state_new_from_device(keymap.get(), xcb, device) : nullptr);
    m_connection.deliverLater();
    if (!state)
        return texts;
    constexpr xkb_keycode_t offset = 8; // between evdev codes and the server's
    for (std::size_t key = 0; key < texts.size(); ++key) {
        if (const auto evdev = KeyCodes::toEvdev(quint16(key)))
            texts[key] = textOf(keymap.get(), state.get(), *evdev + offset);
    }
    return texts;
}

void X11KeyboardLayout::forget()
{
    // Nobody holds a text of a keymap that was never read.
    if (m_texts || m_settles.isActive())
        m_settles.start();
    m_texts.reset();
}

} // namespace Orbita
