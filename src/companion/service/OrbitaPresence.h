#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace Orbita {

/// Whether Orbita runs, told by its name on the session bus. Without a bus it does not, as far as one can know.
class OrbitaPresence final : public QObject {
    Q_OBJECT
public:
    explicit OrbitaPresence(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] bool isRunning() const { return m_isRunning; }

Q_SIGNALS:
    void changed();

private:
    void set(bool isRunning);

    QDBusServiceWatcher m_watcher;
    bool m_isRunning = false;
};

} // namespace Orbita
