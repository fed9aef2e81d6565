#pragma once

#include "platform/RunningApplications.h"

namespace Orbita {

/// Applications that a test starts, ends and brings to the front.
class MemoryRunningApplications final : public RunningApplications {
    Q_OBJECT
public:
    using RunningApplications::RunningApplications;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override { return m_records; }
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
    bool activate(const RunningApplication &application) override;
    [[nodiscard]] bool isTerminated(const RunningApplication &application) const override;

    /// Starts a regular application and returns its record; \a path is its bundle, \a name what it is called.
    RunningApplication start(const QString &path, const QString &name);
    /// Adds \a record with a serial of its own.
    RunningApplication add(RunningApplication record);
    void terminate(const RunningApplication &application);
    void bringToFront(const RunningApplication &application);

    std::vector<quint64> activated; ///< serials that activate() was asked for, in order
    bool canActivate = true;        ///< what activate() answers for an application that runs

private:
    std::vector<RunningApplication> m_records;
    quint64 m_nextSerial = 1;
    quint64 m_frontmost = 0;
};

} // namespace Orbita
