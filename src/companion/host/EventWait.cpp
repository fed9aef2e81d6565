#include "companion/host/EventWait.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>

namespace Orbita {

namespace {

using namespace std::chrono_literals;

/// Longer waits are made of several: a timer's interval is a 32-bit number of milliseconds.
constexpr std::chrono::milliseconds longestTimer = 24h;

} // namespace

bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    QTimer alarm; // wakes the loop when the time is up
    alarm.setSingleShot(true);
    QCoreApplication::processEvents();
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        alarm.start(
            std::min(longestTimer, std::chrono::ceil<std::chrono::milliseconds>(deadline.remainingTimeAsDuration())));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void waitSeconds(double seconds)
{
    constexpr double aYear = 365.0 * 24 * 60 * 60;
    if (seconds > 0) // not for what is no number, either
        waitFor([] { return false; }, std::chrono::milliseconds(qint64(std::min(seconds, aYear) * 1000)));
}

} // namespace Orbita
