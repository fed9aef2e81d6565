// The icon in the tray, as a desktop's panel finds and uses it.

#include "desktop/OrbitaSession.h"

#include <QDBusConnection>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

/// The part of a panel that programs tell of their icons.
class TrayHost : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isReady)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    explicit TrayHost(QDBusConnection bus)
    {
        EXPECT_TRUE(bus.registerObject(u"/StatusNotifierWatcher"_s, this,
                                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties));
        EXPECT_TRUE(bus.registerService(u"org.kde.StatusNotifierWatcher"_s));
    }

    [[nodiscard]] bool isReady() const { return true; }
    [[nodiscard]] int protocolVersion() const { return 0; }

    /// Waits for an icon and returns the service that stands for it.
    [[nodiscard]] QString waitForIcon() const
    {
        waitUntil([this] { return !m_icon.isEmpty(); }, u"an icon is in the tray"_s);
        return m_icon;
    }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service) { m_icon = service; }

private:
    QString m_icon;
};

TEST(Tray, iconOpensTheSettings)
{
    OrbitaSession session;
    const Bus &bus = session.desktop().bus();
    const TrayHost host(bus.connection());
    session.show();
    session.dismiss();
    bus.call(host.waitForIcon(), u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, u"Activate"_s, {0, 0});
    session.waitForSettings();
}

} // namespace
} // namespace Orbita

#include "TrayTest.moc"
