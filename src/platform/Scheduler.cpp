#include "platform/Scheduler.h"

#include <QTimer>

namespace Orbita {

void TimerScheduler::after(std::chrono::milliseconds delay, QObject &context, std::function<void()> action)
{
    QTimer::singleShot(delay, &context, std::move(action));
}

} // namespace Orbita
