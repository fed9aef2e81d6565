#pragma once

#include "shortcut/MASShortcutUserDefaultsHotKey.h"

#include <map>

namespace Orbita {

/// The hot keys that follow the preferences, by the key that each follows.
class MASShortcutUserDefaultsHotKeys {
public:
    using Handler = MASShortcutHotKey::Handler;
    using HotKeys = std::map<QString, std::unique_ptr<MASShortcutUserDefaultsHotKey>>;

    /// Both are borrowed.
    MASShortcutUserDefaultsHotKeys(UserDefaults &defaults, MASShortcutMonitors &monitors);

    /// Has \a handler run each time that the shortcut stored under \a userDefaultsKey is pressed.
    ///
    /// Unregister the key first if it is registered: the new hot key cannot take what the old one still holds, and
    /// nothing works until the stored shortcut changes.
    void registerGlobalShortcut(const QString &userDefaultsKey, Handler handler);
    /// Nothing happens when the key is not registered. A handler may unregister its own key.
    void unregisterGlobalShortcut(const QString &userDefaultsKey);
    /// Stores \a shortcut under \a userDefaultsKey, or removes the key when there is none.
    void setGlobalShortcut(const std::optional<MASShortcut> &shortcut, const QString &userDefaultsKey);

    [[nodiscard]] const HotKeys &registeredUserDefaultsHotKeys() const { return m_hotKeys; }

private:
    UserDefaults &m_defaults;
    MASShortcutMonitors &m_monitors;
    HotKeys m_hotKeys;
};

} // namespace Orbita
