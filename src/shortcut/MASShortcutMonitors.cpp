#include "shortcut/MASShortcutMonitors.h"

#include "shortcut/Log.h"

#include <algorithm>
#include <utility>

namespace Orbita {

namespace {

const char *reason(GrabError error)
{
    switch (error) {
    case GrabError::TakenByOther:
        return "taken by another program";
    case GrabError::NoSuchKey:
        return "no such key";
    case GrabError::NotSupported:
        break;
    }
    return "hot keys are not supported here";
}

} // namespace

MASShortcutMonitors::MASShortcutMonitors(HotKeyService &service, const KeyboardLayout &layout, QObject *parent)
    : QObject(parent), m_service(service), m_layout(layout)
{
}

std::optional<QString> MASShortcutMonitors::addGlobalHotkeyMonitor(const MASShortcut &shortcut, Handler handler)
{
    const QString monitor = shortcut.description(m_layout);
    if (m_hotKeys.contains(monitor))
        return {};
    auto hotKey = MASShortcutHotKey::create(m_service, ++m_lastId, shortcut, std::move(handler));
    if (!hotKey) {
        qCInfo(lcShortcut).nospace() << "The shortcut " << monitor << " does not work: " << reason(hotKey.error());
        return {};
    }
    if (m_hotKeys.empty())
        m_listening = connect(&m_service, &HotKeyService::pressed, this, &MASShortcutMonitors::dispatch);
    m_hotKeys.emplace(monitor, std::move(hotKey).value());
    return monitor;
}

void MASShortcutMonitors::removeGlobalHotkeyMonitor(const QString &monitor)
{
    m_hotKeys.erase(monitor);
    if (m_hotKeys.empty())
        disconnect(m_listening);
}

void MASShortcutMonitors::dispatch(HotKeyId id) const
{
    const auto pressed = std::find_if(m_hotKeys.begin(), m_hotKeys.end(),
                                      [id](const auto &hotKey) { return hotKey.second->carbonHotKeyID() == id; });
    if (pressed == m_hotKeys.end())
        return;
    const Handler handler = pressed->second->handler(); // outlives the monitor, should that be removed meanwhile
    if (handler)
        handler();
}

} // namespace Orbita
