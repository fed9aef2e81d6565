#pragma once

#include <QtGlobal>

#include <optional>

class QKeyEvent;

/// Virtual key codes in the numbering that the program stores. They name key positions, not letters.
namespace Orbita::KeyCodes {

inline constexpr quint16 Return = 36;
inline constexpr quint16 Space = 49;
inline constexpr quint16 Escape = 53;
inline constexpr quint16 LeftArrow = 123;
inline constexpr quint16 RightArrow = 124;

/// The evdev key code (KEY_...) of \a virtualKeyCode; nothing when there is no such key.
[[nodiscard]] std::optional<quint16> toEvdev(quint16 virtualKeyCode);
[[nodiscard]] std::optional<quint16> fromEvdev(quint16 evdevCode);

/// The virtual key code of a key event. Keys that move or command (Return, Escape, arrows, F1, ...) go by their
/// meaning in the current layout, so that a remapped Escape works; all others by their position.
[[nodiscard]] std::optional<quint16> fromKeyEvent(const QKeyEvent &event);

} // namespace Orbita::KeyCodes
