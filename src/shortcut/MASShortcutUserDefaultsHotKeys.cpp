#include "shortcut/MASShortcutUserDefaultsHotKeys.h"

#include "platform/UserDefaults.h"

#include <utility>

namespace Orbita {

MASShortcutUserDefaultsHotKeys::MASShortcutUserDefaultsHotKeys(UserDefaults &defaults, MASShortcutMonitors &monitors)
    : m_defaults(defaults), m_monitors(monitors)
{
}

void MASShortcutUserDefaultsHotKeys::registerGlobalShortcut(const QString &userDefaultsKey, Handler handler)
{
    // It is there before the old one goes, as the header says.
    auto hotKey
        = std::make_unique<MASShortcutUserDefaultsHotKey>(m_defaults, m_monitors, userDefaultsKey, std::move(handler));
    m_hotKeys.insert_or_assign(userDefaultsKey, std::move(hotKey));
}

void MASShortcutUserDefaultsHotKeys::unregisterGlobalShortcut(const QString &userDefaultsKey)
{
    m_hotKeys.erase(userDefaultsKey);
}

void MASShortcutUserDefaultsHotKeys::setGlobalShortcut(const std::optional<MASShortcut> &shortcut,
                                                       const QString &userDefaultsKey)
{
    m_defaults.setValue(userDefaultsKey, shortcut ? QVariant(shortcut->data()) : QVariant());
}

} // namespace Orbita
