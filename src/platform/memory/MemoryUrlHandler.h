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

    QSet<QString> schemes;
    QStringList opened;
    std::function<void(const QString &)> receiver; ///< stands for the program on the other side; may be empty
};

} // namespace Orbita
