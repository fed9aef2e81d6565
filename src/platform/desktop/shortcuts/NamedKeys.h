#pragma once

#include <QKeyCombination>

#include <functional>
#include <optional>

namespace Orbita {

class KeyboardLayout;

/// Finds the virtual key code of the key that types a keysym without modifiers.
using KeyFinder = std::function<std::optional<quint16>(quint32 keysym)>;

/// The key with \a keysym that is called by its name and does the same in all layouts: arrows, F-keys, Return, the
/// keypad, and keyAboveTab.
[[nodiscard]] std::optional<quint16> namedKey(quint32 keysym);

/// The key that types \a keysym on a US keyboard.
[[nodiscard]] std::optional<quint16> keyOnUsLayout(quint32 keysym);

/// Finds keys in \a layout, which is borrowed, as it is when it is asked. What it does not type is looked for on a US
/// keyboard, as desktops do: Super+S is to work in a Cyrillic layout too.
[[nodiscard]] KeyFinder keysOn(const KeyboardLayout &layout);

/// The keysym of the key in \a combination, without Shift; nothing when it has none or none that we know.
[[nodiscard]] std::optional<quint32> keysymFromQt(QKeyCombination combination);

} // namespace Orbita
