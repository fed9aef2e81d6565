#pragma once

#include "desktop/harness/XServer.h"

#include <QPoint>
#include <QString>

namespace Orbita {

enum class Button { Left = 1, Middle = 2, Right = 3, WheelUp = 4, Back = 8, Forward = 9 };

/// Keyboard and pointer of the session, as devices: what is sent passes through grabs, focus and raw events just as
/// that of a real keyboard and mouse. Coordinates are pixels of the whole screen, y downwards.
/// Every function returns when the server has handled the input; the programs may not have seen it yet.
class Input {
public:
    explicit Input(const XConnection &connection) : m_connection(connection) {}

    /// What goes down for \a chord, in that order. \a chord is a key's X name after any modifiers: "Escape", "a",
    /// "Control+space", "Shift+Alt+F4". Throws DesktopFailure for a key that the keyboard does not have.
    [[nodiscard]] QList<quint8> keyCodes(const QString &chord) const;
    /// Presses \a codes in their order, or releases them in the opposite one.
    void pressKeys(const QList<quint8> &codes) const;
    void releaseKeys(const QList<quint8> &codes) const;
    /// Presses and releases \a chord.
    void tap(const QString &chord) const;
    /// Types \a text; the keyboard layout must have every character, with or without Shift.
    void type(const QString &text) const;

    [[nodiscard]] QPoint pointer() const;
    void moveTo(QPoint position) const;
    void moveBy(QPoint distance) const;
    void press(Button button = Button::Left) const;
    void release(Button button = Button::Left) const;
    /// Moves to \a position, presses and releases.
    void click(QPoint position, Button button = Button::Left) const;

    /// Moves to \a to in \a steps equal steps. For drag and drop between programs, wait for each program's answer
    /// before and after it: a source that sees press and release at once drags nothing.
    void glide(QPoint to, int steps) const;

private:
    void fake(quint8 type, quint8 detail, QPoint position = {}) const;

    const XConnection &m_connection;
};

} // namespace Orbita
