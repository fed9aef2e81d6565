#pragma once

#include "platform/UrlHandler.h"

#include <functional>

namespace Orbita {

/// Sends addresses only while somebody is there to take them: an answer must not start the program that it is for,
/// since nobody there waits for it any more.
class AnsweringUrlHandler final : public UrlHandler {
public:
    /// \a urls carries the addresses and outlives the handler. \a isRecipientRunning is asked each time.
    AnsweringUrlHandler(UrlHandler &urls, std::function<bool()> isRecipientRunning);

    /// Whether the recipient runs, and its addresses of \a scheme are handled.
    [[nodiscard]] bool isSchemeHandled(const QString &scheme) const override;
    /// What nobody takes is logged, without its content.
    void openUrl(const QString &url) override;
    void flush() override { m_urls.flush(); }

private:
    UrlHandler &m_urls;
    std::function<bool()> m_isRecipientRunning;
};

} // namespace Orbita
