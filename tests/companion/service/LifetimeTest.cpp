#include "companion/service/Lifetime.h"

#include "platform/memory/MemoryScheduler.h"

#include <gtest/gtest.h>

using namespace Orbita;
using namespace std::chrono_literals;

namespace {

TEST(Lifetime, is_over_some_time_without_orbita_or_at_once_when_asked)
{
    MemoryScheduler scheduler;
    Lifetime lifetime(scheduler);
    int ends = 0;
    QObject::connect(&lifetime, &Lifetime::over, &lifetime, [&] { ++ends; });

    scheduler.advance(14s);
    lifetime.setOrbitaRunning(true);
    scheduler.advance(1h);
    EXPECT_EQ(ends, 0) << "while Orbita runs";
    lifetime.setRunningScripts(1);
    lifetime.setOrbitaRunning(false);
    scheduler.advance(14s);
    EXPECT_EQ(ends, 0) << "it may be about to start again";
    scheduler.advance(1s);
    EXPECT_EQ(ends, 1);

    lifetime.setOrbitaRunning(true);
    lifetime.setRunningScripts(2);
    lifetime.endSoon();
    scheduler.advance(1h);
    EXPECT_EQ(ends, 1) << "the scripts end first";
    lifetime.setRunningScripts(0);
    scheduler.advance(0s);
    EXPECT_EQ(ends, 2);
}

} // namespace
