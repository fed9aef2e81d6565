#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace Orbita {

/// Whether Orbita runs, and which connection is its, told by its name on the session bus. Without a bus it does not
/// run, as far as one can know.
///
/// The bus delivers its news of names and the calls of others in one order. So what Orbita has sent before it gave up
/// its name is handled while it is still known to have it, provided that the presence was made before calls could come.
class OrbitaPresence final : public QObject {
    Q_OBJECT
public:
    explicit OrbitaPresence(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] bool isRunning() const { return !m_owner.isEmpty(); }
    /// Whether \a connection, a unique name, is that by which Orbita has its name; an empty one never is.
    [[nodiscard]] bool isOrbitas(const QString &connection) const { return isRunning() && connection == m_owner; }

Q_SIGNALS:
    void changed();

private:
    QDBusServiceWatcher m_watcher;
    QString m_owner; ///< The unique name of the connection that has Orbita's name; empty for none.
};

} // namespace Orbita
