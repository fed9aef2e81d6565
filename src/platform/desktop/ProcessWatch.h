#pragma once

#include <QObject>

#include <map>
#include <memory>
#include <set>

class QSocketNotifier;

namespace Orbita {

/// Tells when processes end, without asking again and again.
class ProcessWatch : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Watches \a processes from now on, and no other. Returns those of them that can be watched: not one that has
    /// ended, nor any where the kernel has no means for it.
    std::set<qint64> watchOnly(const std::set<qint64> &processes);

Q_SIGNALS:
    /// It is no longer watched.
    void ended(qint64 processIdentifier);

private:
    bool watch(qint64 processIdentifier);

    /// Also closes the descriptor that was listened to.
    struct Closer {
        void operator()(QSocketNotifier *notifier) const;
    };
    std::map<qint64, std::unique_ptr<QSocketNotifier, Closer>> m_watched;
};

} // namespace Orbita
