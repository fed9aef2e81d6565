#include "toolkit/VXSchemeCommunicationCenter.h"

#include "platform/Scheduler.h"
#include "platform/UrlHandler.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/Log.h"

#include <QRandomGenerator>

#include <exception>

namespace Orbita {

namespace {

const QString responseIdKey = QStringLiteral("_RemoteActionResponseId");

} // namespace

VXSchemeCommunicationCenter::VXSchemeCommunicationCenter(UrlHandler &urls, Scheduler &scheduler, QObject *parent)
    : QObject(parent), m_urls(urls), m_scheduler(scheduler)
{
}

void VXSchemeCommunicationCenter::setUrlSchemeOfRecipient(const QString &scheme)
{
    m_urlSchemeOfRecipient = scheme;
    if (!scheme.isNull() && isRecipientReachable())
        m_urls.openUrl(scheme + u':');
}

bool VXSchemeCommunicationCenter::isRecipientReachable() const
{
    return m_urls.isSchemeHandled(m_urlSchemeOfRecipient);
}

void VXSchemeCommunicationCenter::addObserver(const void *observer, ActionSelector selector, const QString &name)
{
    m_actionObservers.push_back({observer, std::move(selector), name});
}

void VXSchemeCommunicationCenter::removeObserver(const void *observer)
{
    std::erase_if(m_actionObservers, [observer](const auto &entry) { return entry.observer == observer; });
}

void VXSchemeCommunicationCenter::removeObserver(const void *observer, const QString &name)
{
    std::erase_if(m_actionObservers,
                  [&](const auto &entry) { return entry.observer == observer && entry.name == name; });
}

void VXSchemeCommunicationCenter::sendAction(VXRemoteAction action, ResponseHandler handler)
{
    if (handler) {
        // From the system's own generator: whoever can guess an id can answer in the other program's place.
        const QString responseId = QString::number(QRandomGenerator::system()->generate());
        action.setValueForParameter(responseId, responseIdKey);
        awaitResponse(responseId, std::move(handler));
    }
    m_urls.openUrl(m_urlSchemeOfRecipient + u':' + stringByAddingEscapeCharacters(action.jsonRepresentation()));
}

void VXSchemeCommunicationCenter::awaitResponse(const QString &responseId, ResponseHandler handler)
{
    m_responseBlocks.insert(responseId, std::move(handler));
    m_scheduler.after(responseTimeout, *this, [this, responseId] {
        try {
            answer(responseId, nullptr);
        } catch (const std::exception &exception) {
            qCWarning(lcToolkit, "%s", exception.what());
        } catch (...) {
            qCWarning(lcToolkit, "an unknown exception");
        }
    });
}

bool VXSchemeCommunicationCenter::answer(const QString &responseId, const VXRemoteAction *response)
{
    const ResponseHandler handler = m_responseBlocks.take(responseId);
    if (handler)
        handler(response);
    return bool(handler);
}

bool VXSchemeCommunicationCenter::handleUrlString(const QString &url, MayAnswer mayAnswer)
{
    if (m_urlSchemeForReceiving.isEmpty() || url.size() > maximumUrlLength || !url.startsWith(m_urlSchemeForReceiving))
        return false;
    const auto json = stringByRemovingEscapeCharacters(QString(url).remove(m_urlSchemeForReceiving + u':'));
    if (!json)
        return false;
    if (json->isEmpty())
        return true;
    const auto action = VXRemoteAction::fromJson(*json);
    if (!action)
        return false;
    const auto responseId = action->valueForParameter(responseIdKey);
    if (mayAnswer == MayAnswer::No || !responseId || !answer(*responseId, &*action))
        tellObservers(*action);
    return true;
}

void VXSchemeCommunicationCenter::tellObservers(const VXRemoteAction &action)
{
    const auto responseId = action.valueForParameter(responseIdKey);
    // A copy: an observer may add or remove registrations.
    for (const VXActionObserverEntry &entry : std::vector(m_actionObservers)) {
        if (entry.name != action.name())
            continue;
        if (auto reply = entry.selector(action)) {
            if (responseId)
                reply->setValueForParameter(*responseId, responseIdKey);
            sendAction(*reply);
        }
    }
}

} // namespace Orbita
