#include "companion/service/AnsweringUrlHandler.h"

#include "companion/service/Log.h"

namespace Orbita {

AnsweringUrlHandler::AnsweringUrlHandler(UrlHandler &urls, std::function<bool()> isRecipientRunning)
    : m_urls(urls), m_isRecipientRunning(std::move(isRecipientRunning))
{
}

bool AnsweringUrlHandler::isSchemeHandled(const QString &scheme) const
{
    return m_isRecipientRunning() && m_urls.isSchemeHandled(scheme);
}

void AnsweringUrlHandler::openUrl(const QString &url)
{
    if (m_isRecipientRunning())
        m_urls.openUrl(url);
    else
        qCWarning(lcCompanion, "Orbita does not run: what is for it is not sent.");
}

} // namespace Orbita
