#pragma once

#include "desktop/harness/Bus.h"

#include <QDBusVirtualObject>

namespace Orbita {

/// logind as programs see it on a bus: the session "c1" of the user's, which is locked or leaves the screen when a test
/// says so; and beside it the session "2" of the user's service manager, as if it were locked in the background.
class FakeLogind final : public QDBusVirtualObject {
public:
    /// How a program finds "c1".
    enum class Found {
        ByProcess,    ///< it was started in that session
        ByIdentifier, ///< only by XDG_SESSION_ID
        AsDisplay,    ///< only as the display of its user; its own process is in "2"
    };

    /// Appears on the bus at \a busAddress, and goes with this object.
    explicit FakeLogind(const QString &busAddress, Found found = Found::ByProcess);

    void setLocked(bool locked) { set(QStringLiteral("LockedHint"), locked); }
    void setActive(bool active) { set(QStringLiteral("Active"), active); }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    void set(const QString &property, bool value);
    [[nodiscard]] QDBusMessage answer(const QDBusMessage &question) const;
    /// The path of the session \a id.
    [[nodiscard]] static QDBusMessage session(const QDBusMessage &question, const QString &id);

    Bus m_bus;
    Found m_found;
    QVariantMap m_session;
};

} // namespace Orbita
