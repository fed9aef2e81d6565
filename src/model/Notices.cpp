#include "model/Notices.h"

#include "platform/UserNotifications.h"

namespace Orbita {

void Notices::tell(const QString &title, const QString &text)
{
    m_notifications.notify(title, text);
}

void Notices::tellOnce(const QString &title, const QString &text)
{
    if (m_told.contains(text))
        return;
    m_told.insert(text);
    tell(title, text);
}

} // namespace Orbita
