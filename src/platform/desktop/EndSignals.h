#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace Orbita {

/// Turns the signals SIGTERM, SIGINT and SIGHUP into one of the event loop. At most one object exists.
class EndSignals final : public QObject {
    Q_OBJECT
public:
    explicit EndSignals(QObject *parent = nullptr);
    /// From here on the signals end the program at once, as they do by default.
    ~EndSignals() override;

Q_SIGNALS:
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace Orbita
