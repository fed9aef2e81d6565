// What one event costs from the tap to the decision whether it shows the ring, in a hand that does not. Fails when such
// an event allocates memory once everything has been allocated.

#include "AllocationCount.h"

#include "platform/evdev/TouchDecoder.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "settings/AppSettings.h"
#include "support/MemoryTriggers.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

#include <linux/input-event-codes.h>

#include <cmath>

namespace {

using namespace Orbita;
using namespace std::chrono_literals;

/// Handlers for one trigger whose time a benchmark turns.
struct Desk {
    explicit Desk(GestureTrigger trigger)
        : handlers(
            triggers.sources, [this] { return gestureTriggerFromStored(defaults.integer(key)); },
            [this] { return now; })
    {
        defaults.setValue(key, int(trigger));
        handlers.start();
        QObject::connect(&handlers, &TriggerHandlers::shouldShow, &handlers, [this] { ++shown; });
        QObject::connect(&handlers, &TriggerHandlers::shouldHide, &handlers, [this] { ++hidden; });
    }

    const QString key = QStringLiteral("gestureSettings");
    TriggerHandlers::Time now;
    MemoryUserDefaults defaults;
    MemoryTriggers triggers{defaults};
    TriggerHandlers handlers;
    int shown = 0;
    int hidden = 0;
};

/// Runs \a event over and over, at first until it has allocated what it will.
template <typename Event>
void measure(benchmark::State &state, Event event)
{
    for (int i = 0; i < 10'000; ++i)
        event();
    const std::uint64_t before = allocationCount();
    std::uint64_t during = 0;
    for (auto _ : state) {
        event();
        during = allocationCount() - before;
    }
    if (during > 0)
        state.SkipWithError("an event allocated memory");
}

void rawMotion(benchmark::State &state)
{
    Desk desk(GestureTriggerMouseCircle);
    int step = 0;
    measure(state, [&] { // a hand that draws circles the wrong way round, with a mouse that tells 1,000 times a second
        desk.now += 1ms;
        ++step;
        desk.triggers.stage.pointer = {640 - 90 * std::sin(step * 0.008), 400 + 90 * std::cos(step * 0.008)};
        desk.triggers.taps.mouseMoved.move();
    });
    if (desk.shown > 0)
        state.SkipWithError("the ring was shown");
}
BENCHMARK(rawMotion);

/// Three fingers that draw lines on a pad, side by side, 125 frames a second.
void touchFrame(benchmark::State &state)
{
    Desk desk(GestureTrigger(state.range(0)));
    TouchDecoder decoder({{0, 1000}, {0, 1000}, 5}, nextTouchpadNumber());
    const auto place = [&](int finger, int x, int y) {
        (void)decoder.take(EV_ABS, ABS_MT_SLOT, finger);
        (void)decoder.take(EV_ABS, ABS_MT_POSITION_X, x);
        (void)decoder.take(EV_ABS, ABS_MT_POSITION_Y, y);
    };
    for (int finger = 0; finger < 3; ++finger) {
        place(finger, 300 + 200 * finger, 500);
        (void)decoder.take(EV_ABS, ABS_MT_TRACKING_ID, finger);
    }
    int frame = 0;
    measure(state, [&] {
        desk.now += 8ms;
        ++frame;
        for (int finger = 0; finger < 3; ++finger) // never where they were 0.3 s before
            place(finger, 300 + 200 * finger, 300 + 3 * frame % 400);
        if (decoder.take(EV_SYN, SYN_REPORT, 0))
            desk.triggers.taps.touch.touch(decoder.touching());
        desk.handlers.makeRestChecks();
    });
    if (desk.shown > 0)
        state.SkipWithError("the ring was shown");
}
BENCHMARK(touchFrame)->Arg(GestureTriggerThreeFingerRest)->Arg(GestureTriggerThreeFingerSpread);

void buttonRelease(benchmark::State &state)
{
    Desk desk(GestureTriggerNone);
    measure(state, [&] { desk.triggers.taps.mouseUp.release(); });
    if (desk.hidden == 0)
        state.SkipWithError("no release was heard");
}
BENCHMARK(buttonRelease);

void otherButtonPress(benchmark::State &state)
{
    QLoggingCategory::setFilterRules(QStringLiteral("orbita.settings.info=false")); // a line of the log costs more
    Desk desk(GestureTriggerButton4);
    measure(state, [&] { desk.triggers.taps.otherMouseDown.press(4); });
    if (desk.shown > 0)
        state.SkipWithError("the ring was shown");
}
BENCHMARK(otherButtonPress);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
