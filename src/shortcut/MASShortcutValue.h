#pragma once

#include "shortcut/MASShortcut.h"

#include <QObject>

namespace Orbita {

/// The shortcut that a recorder shows, if any.
class MASShortcutValue : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] const std::optional<MASShortcut> &shortcutValue() const { return m_shortcutValue; }
    void setShortcutValue(const std::optional<MASShortcut> &shortcutValue)
    {
        m_shortcutValue = shortcutValue;
        Q_EMIT shortcutValueChanged();
    }

Q_SIGNALS:
    /// The value was set, whether or not to another one.
    void shortcutValueChanged();

private:
    std::optional<MASShortcut> m_shortcutValue;
};

} // namespace Orbita
