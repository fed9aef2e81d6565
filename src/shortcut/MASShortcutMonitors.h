#pragma once

#include "shortcut/MASShortcutHotKey.h"

#include <QObject>

#include <map>

namespace Orbita {

/// The hot keys that the program listens to, one for each description of a shortcut.
///
/// It listens to the service only while there are any. A handler may remove its own monitor, or destroy this.
class MASShortcutMonitors : public QObject {
    Q_OBJECT
public:
    using Handler = MASShortcutHotKey::Handler;

    /// Both are borrowed. No other monitors may use \a service, since hot keys are told apart by their numbers alone.
    MASShortcutMonitors(HotKeyService &service, const KeyboardLayout &layout, QObject *parent = nullptr);

    /// Has \a handler run each time that \a shortcut is pressed, and returns the key of that monitor. Nothing when the
    /// shortcut has a monitor, which stays, or cannot be taken, of which the log says why.
    [[nodiscard]] std::optional<QString> addGlobalHotkeyMonitor(const MASShortcut &shortcut, Handler handler);
    /// Gives back the shortcut under the key \a monitor. Nothing happens when there is no such monitor.
    void removeGlobalHotkeyMonitor(const QString &monitor);

private:
    void dispatch(HotKeyId id) const;

    HotKeyService &m_service;
    const KeyboardLayout &m_layout;
    std::map<QString, std::unique_ptr<MASShortcutHotKey>> m_hotKeys;
    quint32 m_lastId = 0;
    QMetaObject::Connection m_listening;
};

} // namespace Orbita
