#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QStringList>

namespace Orbita {

/// The screen savers and lockers that desktops offer on the session bus: "org.freedesktop.ScreenSaver", and those of
/// GNOME, Cinnamon, MATE and Xfce, which have the same under names of their own.
class ScreenSavers final : public QObject {
    Q_OBJECT
public:
    explicit ScreenSavers(QObject *parent = nullptr);

    /// Follows them on \a sessionBus, also those that come later. Waits for none of them, and starts none.
    void follow(const QDBusConnection &sessionBus);

    /// Whether one of them covers the screen. False as long as nothing is known.
    [[nodiscard]] bool areActive() const { return !m_active.isEmpty(); }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void activeChanged(const QDBusMessage &signal);

private:
    /// Asks \a service at the first of \a paths, and at the next where it is not to be found there.
    void ask(const QString &service, QStringList paths);
    void setActive(const QString &service, bool active);

    QDBusConnection m_bus{QString()};
    QDBusServiceWatcher m_watcher;
    QSet<QString> m_active; ///< names of services
};

} // namespace Orbita
