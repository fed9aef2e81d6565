#pragma once

#include "shortcut/MASShortcutMonitors.h"

#include <QObject>

namespace Orbita {

class UserDefaults;

/// The shortcut stored under \a userDefaultsKey; nothing when there is none, or no valid one.
[[nodiscard]] std::optional<MASShortcut> storedShortcut(const UserDefaults &defaults, const QString &userDefaultsKey);

/// A hot key that follows the shortcut stored in the preferences, for as long as the object lives.
///
/// While another monitor has the shortcut, or it cannot be taken, the handler does not run; the next change of what is
/// stored is the next try.
class MASShortcutUserDefaultsHotKey : public QObject {
    Q_OBJECT
public:
    using Handler = MASShortcutHotKey::Handler;

    /// \a defaults and \a monitors are borrowed. Takes the stored shortcut at once.
    MASShortcutUserDefaultsHotKey(UserDefaults &defaults, MASShortcutMonitors &monitors, const QString &userDefaultsKey,
                                  Handler handler);
    ~MASShortcutUserDefaultsHotKey() override;

    [[nodiscard]] const QString &userDefaultsKey() const { return m_userDefaultsKey; }
    /// The key of its monitor; nothing while it has none.
    [[nodiscard]] const std::optional<QString> &monitor() const { return m_monitor; }

private:
    void installHotKeyFromUserDefaults();
    void removeMonitor();

    UserDefaults &m_defaults;
    MASShortcutMonitors &m_monitors;
    QString m_userDefaultsKey;
    Handler m_handler;
    std::optional<QString> m_monitor;
};

} // namespace Orbita
