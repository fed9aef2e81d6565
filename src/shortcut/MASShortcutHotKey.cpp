#include "shortcut/MASShortcutHotKey.h"

#include <utility>

namespace Orbita {

namespace {

constexpr quint32 signature = 0x4D415353; // "MASS"

} // namespace

MASShortcutHotKey::MASShortcutHotKey(HotKeyService &service, HotKeyId id, const MASShortcut &shortcut, Handler handler)
    : m_service(service), m_id(id), m_shortcut(shortcut), m_handler(std::move(handler))
{
}

Result<std::unique_ptr<MASShortcutHotKey>, GrabError>
MASShortcutHotKey::create(HotKeyService &service, quint32 id, const MASShortcut &shortcut, Handler handler)
{
    if (!shortcut.hasKey())
        return Failure(GrabError::NoSuchKey);
    const HotKeyId hotKeyId{signature, id};
    if (const auto grabbed = service.grab(hotKeyId, {shortcut.carbonKeyCode(), shortcut.carbonFlags()}); !grabbed)
        return Failure(grabbed.error());
    return std::unique_ptr<MASShortcutHotKey>(new MASShortcutHotKey(service, hotKeyId, shortcut, std::move(handler)));
}

void MASShortcutHotKey::uninstallExisitingHotKey()
{
    if (std::exchange(m_isInstalled, false))
        m_service.release(m_id);
}

} // namespace Orbita
