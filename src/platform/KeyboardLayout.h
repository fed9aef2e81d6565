#pragma once

#include <QObject>
#include <QString>

namespace Orbita {

/// What stands on the keys in the keyboard layout that the user types with at the moment.
class KeyboardLayout : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// What the key types without modifiers, for a dead key its accent by itself; empty when it types nothing, is not
    /// on the keyboard, or there is no layout.
    [[nodiscard]] virtual QString text(quint16 virtualKeyCode) const = 0;

Q_SIGNALS:
    /// Other texts may stand on the keys now.
    void changed();
};

} // namespace Orbita
