#include "companion/service/AnsweringUrlHandler.h"

#include "base/ProgramNames.h"
#include "companion/service/Log.h"
#include "companion/service/OrbitaPresence.h"

namespace Orbita {

AnsweringUrlHandler::AnsweringUrlHandler(const QDBusConnection &bus, const OrbitaPresence &orbita, Scheduler &scheduler)
    : m_orbita(orbita), m_client(bus, orbitaNames.bus, scheduler, ApplicationClient::Starts::No)
{
}

bool AnsweringUrlHandler::isSchemeHandled(const QString &scheme) const
{
    return scheme == orbitaNames.scheme && m_orbita.isRunning();
}

void AnsweringUrlHandler::openUrl(const QString &url)
{
    if (url == orbitaNames.scheme + u':')
        return;
    if (m_orbita.isRunning())
        m_client.open(url);
    else
        qCWarning(lcCompanion, "Orbita does not run: what is for it is not sent.");
}

} // namespace Orbita
