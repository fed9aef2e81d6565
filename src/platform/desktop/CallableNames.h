#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <optional>

namespace Orbita {

/// Which of some names on a bus can be called: a program has the name, or the bus can start one for it.
///
/// The bus is asked at the first question, and again only after it has said that something changed, so that any other
/// question costs next to nothing.
class CallableNames final : public QObject {
    Q_OBJECT
public:
    CallableNames(QDBusConnection bus, const QStringList &names);

    /// Whether \a name, one of those given, can be called. Never where the bus is not connected.
    [[nodiscard]] bool contains(const QString &name) const;

private Q_SLOTS:
    void forget() { m_known.reset(); }

private:
    /// Nothing when the bus does not answer.
    [[nodiscard]] std::optional<QSet<QString>> ask() const;

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    mutable std::optional<QSet<QString>> m_known; ///< Nothing when the bus has to be asked.
};

} // namespace Orbita
