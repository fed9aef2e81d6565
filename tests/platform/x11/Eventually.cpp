#include "Eventually.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace Orbita {

bool eventually(const std::function<bool()> &condition)
{
    QTimer look; // what changes elsewhere wakes no event loop
    look.start(5);
    const QDeadlineTimer deadline(30'000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace Orbita
