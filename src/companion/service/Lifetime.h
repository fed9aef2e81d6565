#pragma once

#include <QObject>

#include <chrono>

namespace Orbita {

class Scheduler;

/// Ends the companion some time after Orbita has gone, with the scripts that still run, so that nothing is left over
/// when Orbita was ended by a crash or an address has started the companion alone.
class Lifetime final : public QObject {
    Q_OBJECT
public:
    /// How long Orbita has to be gone: it may be about to start again.
    static constexpr std::chrono::seconds patience{15};

    /// \a scheduler outlives this object.
    explicit Lifetime(Scheduler &scheduler, QObject *parent = nullptr);

    void setOrbitaRunning(bool isRunning);
    void setRunningScripts(int count);
    /// Ends it as soon as no script runs any more.
    void endSoon();

Q_SIGNALS:
    void over();

private:
    void judge();

    Scheduler &m_scheduler;
    bool m_isOrbitaRunning = false;
    bool m_endsSoon = false;
    int m_runningScripts = 0;
    int m_changes = 0; ///< tells a wait from those before it
};

} // namespace Orbita
