#include "desktop/harness/Wait.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace Orbita {

void waitUntil(const std::function<bool()> &condition, const std::function<QString()> &description,
               std::chrono::milliseconds bound)
{
    const QDeadlineTimer deadline(bound);
    // What happens in other processes and in the X server wakes no event loop of ours, so a timer does.
    QTimer wake;
    wake.start(std::chrono::milliseconds(5));
    while (!condition()) {
        if (deadline.hasExpired())
            throw DesktopFailure(QStringLiteral("waited in vain until ") + description());
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void waitUntil(const std::function<bool()> &condition, const QString &description, std::chrono::milliseconds bound)
{
    waitUntil(
        condition, [&description] { return description; }, bound);
}

} // namespace Orbita
