#include "platform/BackgroundJobs.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace Orbita {

namespace {

using Clock = std::chrono::steady_clock;

/// How long a thread without a job waits for the next one: rings ask for pictures in bursts.
constexpr std::chrono::seconds idleTime{10};

/// Counts a job as long as anything of it is there.
class Running {
public:
    Running() { ++s_count; }
    ~Running() { --s_count; }
    Q_DISABLE_COPY_MOVE(Running)

    [[nodiscard]] static bool isAny() { return s_count > 0; }

private:
    inline static std::atomic<int> s_count = 0;
};

} // namespace

/// What the threads and their owner share. Everything is guarded by the mutex.
struct BackgroundJobs::Shared : std::enable_shared_from_this<BackgroundJobs::Shared> {
    std::mutex mutex;
    std::condition_variable jobCame;
    std::condition_variable jobEnded;
    std::deque<Job> waiting;
    std::map<std::thread::id, Clock::time_point> running; ///< since when
    BackgroundJobs *owner = nullptr;                      ///< null when it is gone
    int usualThreads = 1;
    int threads = 0;
    int idleThreads = 0;

    /// Starts threads for what waits.
    void provideThreads()
    {
        const int most = allowedThreads();
        for (auto needed = int(waiting.size()) - idleThreads; needed > 0 && threads < most; --needed) {
            try {
                std::thread([self = shared_from_this()] { self->work(); }).detach();
                ++threads;
            } catch (const std::system_error &) {
                return; // the system has none left; the owner tries again as long as jobs wait
            }
        }
    }

    [[nodiscard]] int allowedThreads() const
    {
        const auto stuck = std::ranges::count_if(
            running, [now = Clock::now()](const auto &job) { return now - job.second > patience; });
        return std::min(usualThreads + int(stuck), mostThreads);
    }

    void work()
    {
        std::unique_lock lock(mutex);
        while (awaitJob(lock)) {
            const Running mark;
            Job job = std::move(waiting.front());
            waiting.pop_front();
            running.emplace(std::this_thread::get_id(), Clock::now());
            lock.unlock();
            Delivery delivery = job();
            job = {};
            lock.lock();
            running.erase(std::this_thread::get_id());
            if (owner)
                QMetaObject::invokeMethod(
                    owner, [owner = owner, delivery] { owner->deliver(delivery); }, Qt::QueuedConnection);
            jobEnded.notify_all();
        }
        --threads;
    }

    /// False when none comes, or there are threads enough without this one.
    bool awaitJob(std::unique_lock<std::mutex> &lock)
    {
        if (threads > allowedThreads())
            return false;
        ++idleThreads;
        const auto hasNews = [this] { return !waiting.empty() || !owner; };
        jobCame.wait_for(lock, idleTime, hasNews);
        --idleThreads;
        return owner && !waiting.empty();
    }
};

BackgroundJobs::BackgroundJobs(int threads, QObject *parent) : QObject(parent), m_shared(std::make_shared<Shared>())
{
    m_shared->owner = this;
    m_shared->usualThreads = threads;
    m_watch.setInterval(patience);
    connect(&m_watch, &QTimer::timeout, this, [this] {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->provideThreads();
        if (m_shared->waiting.empty())
            m_watch.stop();
    });
}

BackgroundJobs::~BackgroundJobs()
{
    std::unique_lock lock(m_shared->mutex);
    m_shared->owner = nullptr;
    const auto dropped = std::exchange(m_shared->waiting, {});
    m_shared->jobCame.notify_all();
    // Most are about to end, and what they use is better still there.
    m_shared->jobEnded.wait_for(lock, farewell, [this] { return m_shared->running.empty(); });
}

void BackgroundJobs::start(Job job)
{
    ++m_pending;
    const std::lock_guard lock(m_shared->mutex);
    m_shared->waiting.push_back(std::move(job));
    m_shared->provideThreads();
    m_shared->jobCame.notify_one();
    if (!m_watch.isActive())
        m_watch.start();
}

void BackgroundJobs::waitUntilIdle()
{
    while (!isIdle()) {
        {
            std::unique_lock lock(m_shared->mutex);
            m_shared->jobEnded.wait(lock, [this] { return m_shared->waiting.empty() && m_shared->running.empty(); });
        }
        QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    }
}

bool BackgroundJobs::isAnyRunning()
{
    return Running::isAny();
}

void BackgroundJobs::deliver(const Delivery &delivery)
{
    --m_pending;
    if (delivery)
        delivery();
}

} // namespace Orbita
