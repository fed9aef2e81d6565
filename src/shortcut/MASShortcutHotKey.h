#pragma once

#include "base/Result.h"
#include "platform/HotKeyService.h"
#include "shortcut/MASShortcut.h"

#include <functional>
#include <memory>

namespace Orbita {

/// A shortcut that is taken from the whole session, for as long as the object lives.
class MASShortcutHotKey {
public:
    using Handler = std::function<void()>;

    /// Takes \a shortcut from \a service, which is borrowed, under \a id, which must never have been used before.
    [[nodiscard]] static Result<std::unique_ptr<MASShortcutHotKey>, GrabError>
    create(HotKeyService &service, quint32 id, const MASShortcut &shortcut, Handler handler);
    ~MASShortcutHotKey() { uninstallExisitingHotKey(); }
    Q_DISABLE_COPY_MOVE(MASShortcutHotKey)

    [[nodiscard]] const MASShortcut &shortcut() const { return m_shortcut; }
    /// What to do when it is pressed; may be empty.
    [[nodiscard]] const Handler &handler() const { return m_handler; }
    [[nodiscard]] HotKeyId carbonHotKeyID() const { return m_id; }
    /// Gives the shortcut back; nothing happens when that has been done.
    void uninstallExisitingHotKey();

private:
    MASShortcutHotKey(HotKeyService &service, HotKeyId id, const MASShortcut &shortcut, Handler handler);

    HotKeyService &m_service;
    HotKeyId m_id;
    MASShortcut m_shortcut;
    Handler m_handler;
    bool m_isInstalled = true;
};

} // namespace Orbita
