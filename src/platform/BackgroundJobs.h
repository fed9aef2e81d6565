#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace Orbita {

/// Runs jobs on threads of its own and brings what they found back to the thread that it lives in.
///
/// A job may never return, since what it reads may lie on a disk that does not answer. Such a job costs its thread and
/// nothing else: other jobs go on, and neither this object's end nor the program's waits for it for longer than
/// farewell.
class BackgroundJobs final : public QObject {
    Q_OBJECT
public:
    /// Carried out on the owner's thread when the job is done, from its event loop; may be empty.
    using Delivery = std::function<void()>;
    /// Carried out on another thread. It must own what it uses: it may outlive everything else.
    using Job = std::function<Delivery()>;

    /// A job that has run for longer counts as stuck: another one may run beside it.
    static constexpr std::chrono::milliseconds patience{500};
    /// How long the end of this object waits for jobs that are running.
    static constexpr std::chrono::milliseconds farewell{500};
    /// There are never more threads, stuck or not. Further jobs wait until one of them returns.
    static constexpr int mostThreads = 64;

    /// At most \a threads jobs run at a time, besides stuck ones; more for a moment when stuck ones return.
    explicit BackgroundJobs(int threads, QObject *parent = nullptr);
    /// Drops jobs that have not begun, and the deliveries of those that have.
    ~BackgroundJobs() override;

    /// Runs \a job after those that were started before it.
    void start(Job job);
    /// Whether every job was done and delivered.
    [[nodiscard]] bool isIdle() const { return m_pending == 0; }
    /// Waits for all jobs and delivers them, stuck or not.
    void waitUntilIdle();

    /// Whether a job of anyone is running, also of those that are gone. A program that returns from its main function
    /// meanwhile takes away what the job uses, and may crash: it ends by std::_Exit() instead.
    [[nodiscard]] static bool isAnyRunning();

private:
    struct Shared;

    void deliver(const Delivery &delivery);

    std::shared_ptr<Shared> m_shared; ///< with the threads
    QTimer m_watch;                   ///< looks for stuck jobs while others wait
    int m_pending = 0;                ///< jobs that were not delivered yet
};

} // namespace Orbita
