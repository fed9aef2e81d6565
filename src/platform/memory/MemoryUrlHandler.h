#pragma once

#include "platform/UrlHandler.h"

#include <QSet>
#include <QStringList>

#include <functional>

namespace Orbita {

/// Schemes that a test registers, and the addresses that were opened.
class MemoryUrlHandler final : public UrlHandler {
public:
    [[nodiscard]] bool isSchemeHandled(const QString &scheme) const override { return schemes.contains(scheme); }
    void openUrl(const QString &url) override
    {
        opened.append(url);
        if (receiver)
            receiver(url);
    }
    /// Nothing waits here; writes down how much of what was opened has been seen to.
    void flush() override { flushed = opened.size(); }

    QSet<QString> schemes;
    QStringList opened;
    qsizetype flushed = 0;                         ///< how many of the opened addresses the last flush() has seen to
    std::function<void(const QString &)> receiver; ///< stands for the program on the other side; may be empty
};

} // namespace Orbita
