#include "platform/BackgroundJobs.h"

#include "desktop/harness/Wait.h"

#include <QStringList>
#include <QThread>

#include <gtest/gtest.h>

#include <future>

namespace Orbita {
namespace {

/// A job that does not return before it is let go.
class StuckJob {
public:
    ~StuckJob() { letGo(); }

    [[nodiscard]] BackgroundJobs::Job job(BackgroundJobs::Delivery delivery = {})
    {
        return [begun = m_begun, gate = m_gate, delivery] {
            begun->set_value();
            gate.wait();
            return delivery;
        };
    }
    void waitUntilBegun() { m_begun->get_future().wait(); }
    void letGo()
    {
        if (!std::exchange(m_isLetGo, true))
            m_opened.set_value();
    }

private:
    std::shared_ptr<std::promise<void>> m_begun = std::make_shared<std::promise<void>>();
    std::promise<void> m_opened;
    std::shared_future<void> m_gate = m_opened.get_future().share();
    bool m_isLetGo = false;
};

TEST(BackgroundJobs, workElsewhereAndDeliverHereInOrder)
{
    BackgroundJobs jobs(1);
    QStringList delivered;
    for (const char *name : {"first", "second", "third"}) {
        jobs.start([&delivered, name, here = QThread::currentThread()] {
            const bool isElsewhere = QThread::currentThread() != here;
            return [&delivered, name, here, isElsewhere] {
                if (isElsewhere && QThread::currentThread() == here)
                    delivered << QString::fromLatin1(name);
            };
        });
    }
    EXPECT_FALSE(jobs.isIdle());
    EXPECT_TRUE(eventually([&jobs] { return jobs.isIdle(); }));
    EXPECT_EQ(delivered.join(u' ').toStdString(), "first second third");
}

TEST(BackgroundJobs, goOnBesideStuckOnes)
{
    StuckJob stuck;
    StuckJob another;
    BackgroundJobs jobs(2);
    jobs.start(stuck.job());
    jobs.start(another.job());
    bool isDelivered = false;
    jobs.start([&isDelivered] { return [&isDelivered] { isDelivered = true; }; });
    EXPECT_TRUE(eventually([&isDelivered] { return isDelivered; }));
    EXPECT_FALSE(jobs.isIdle());
    stuck.letGo();
    another.letGo();
    jobs.waitUntilIdle();
}

TEST(BackgroundJobs, keepNobodyFromEnding)
{
    StuckJob stuck;
    const auto carriedOut = std::make_shared<QStringList>();
    {
        BackgroundJobs jobs(1);
        jobs.start(stuck.job([carriedOut] { carriedOut->append(QStringLiteral("the delivery of the stuck job")); }));
        jobs.start([carriedOut] {
            carriedOut->append(QStringLiteral("the job behind it"));
            return BackgroundJobs::Delivery();
        });
        stuck.waitUntilBegun();
    } // would hang here
    EXPECT_TRUE(BackgroundJobs::isAnyRunning());
    stuck.letGo();
    EXPECT_TRUE(eventually([&carriedOut] { return carriedOut.use_count() == 1; })) << "its thread is done";
    EXPECT_TRUE(carriedOut->isEmpty()) << qPrintable(carriedOut->join(u','));
    EXPECT_TRUE(eventually([] { return !BackgroundJobs::isAnyRunning(); }));
}

} // namespace
} // namespace Orbita
