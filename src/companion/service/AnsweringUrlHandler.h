#pragma once

#include "platform/UrlHandler.h"
#include "platform/desktop/ApplicationClient.h"

namespace Orbita {

class OrbitaPresence;

/// Sends addresses to Orbita while it runs: an answer must not start the program that it is for, since nobody there
/// waits for it any more. Where Orbita goes away meanwhile, they are lost.
class AnsweringUrlHandler final : public UrlHandler {
public:
    /// \a orbita and \a scheduler outlive the handler.
    AnsweringUrlHandler(const QDBusConnection &bus, const OrbitaPresence &orbita, Scheduler &scheduler);

    /// Whether \a scheme is Orbita's, and Orbita runs.
    [[nodiscard]] bool isSchemeHandled(const QString &scheme) const override;
    /// What nobody takes is logged, without its content. The bare scheme, which would only start Orbita, is not sent.
    void openUrl(const QString &url) override;
    void flush() override { m_client.flush(); }

private:
    const OrbitaPresence &m_orbita;
    ApplicationClient m_client;
};

} // namespace Orbita
