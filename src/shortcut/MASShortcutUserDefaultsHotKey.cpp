#include "shortcut/MASShortcutUserDefaultsHotKey.h"

#include "platform/UserDefaults.h"

#include <utility>

namespace Orbita {

std::optional<MASShortcut> storedShortcut(const UserDefaults &defaults, const QString &userDefaultsKey)
{
    const QVariant stored = defaults.value(userDefaultsKey);
    if (stored.typeId() != QMetaType::QByteArray)
        return {};
    return MASShortcut::withData(stored.toByteArray());
}

MASShortcutUserDefaultsHotKey::MASShortcutUserDefaultsHotKey(UserDefaults &defaults, MASShortcutMonitors &monitors,
                                                             const QString &userDefaultsKey, Handler handler)
    : m_defaults(defaults), m_monitors(monitors), m_userDefaultsKey(userDefaultsKey), m_handler(std::move(handler))
{
    connect(&m_defaults, &UserDefaults::changed, this, [this](const QString &key) {
        if (key != m_userDefaultsKey)
            return;
        removeMonitor();
        installHotKeyFromUserDefaults();
    });
    installHotKeyFromUserDefaults();
}

MASShortcutUserDefaultsHotKey::~MASShortcutUserDefaultsHotKey()
{
    removeMonitor();
}

void MASShortcutUserDefaultsHotKey::installHotKeyFromUserDefaults()
{
    if (const auto shortcut = storedShortcut(m_defaults, m_userDefaultsKey))
        m_monitor = m_monitors.addGlobalHotkeyMonitor(*shortcut, m_handler);
}

void MASShortcutUserDefaultsHotKey::removeMonitor()
{
    if (const auto monitor = std::exchange(m_monitor, {}))
        m_monitors.removeGlobalHotkeyMonitor(*monitor);
}

} // namespace Orbita
