#pragma once

#include "platform/x11/X11Connection.h"

#include <QImage>
#include <QString>

#include <span>
#include <utility>
#include <vector>

namespace Orbita {

/// Asks for a property of \a window, at most \a maxBytes of it (a multiple of 4), whatever its type.
[[nodiscard]] xcb_get_property_cookie_t requestProperty(X11Connection &connection, xcb_window_t window,
                                                        xcb_atom_t property, quint32 maxBytes = 4096);

using PropertyReply = XcbPointer<xcb_get_property_reply_t>;
[[nodiscard]] PropertyReply propertyReply(X11Connection &connection, xcb_get_property_cookie_t cookie);

/// The 32-bit items of \a reply; empty when there is no such property or it holds something else.
[[nodiscard]] std::span<const quint32> cardinals(const xcb_get_property_reply_t *reply);
/// The first of the cardinals, or \a fallback.
[[nodiscard]] quint32 cardinal(const xcb_get_property_reply_t *reply, quint32 fallback = 0);
/// The text of \a reply up to its first NUL, on one line, without space around it.
[[nodiscard]] QString text(const xcb_get_property_reply_t *reply, xcb_atom_t utf8String);
/// Instance and class out of WM_CLASS, both without NULs; either may be empty.
[[nodiscard]] std::pair<QString, QString> instanceAndClass(const xcb_get_property_reply_t *reply);

/// The best picture in the data of _NET_WM_ICON (width, height, then ARGB pixels, repeated): the largest complete one
/// with sides of at most 512 pixels. Null when there is none. Never reads past \a data, whatever it claims.
[[nodiscard]] QImage iconFromCardinals(std::span<const quint32> data);

} // namespace Orbita
