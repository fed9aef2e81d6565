#include "desktop/harness/Wait.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace Orbita {

bool eventually(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(60'000);
    // What happens in other processes and in the X server wakes no event loop of ours, so a timer does.
    QTimer wake;
    wake.start(5);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void waitUntil(const std::function<bool()> &condition, const std::function<QString()> &description)
{
    if (!eventually(condition))
        throw DesktopFailure(QStringLiteral("waited in vain until ") + description());
}

void waitUntil(const std::function<bool()> &condition, const QString &description)
{
    waitUntil(condition, [&description] { return description; });
}

} // namespace Orbita
