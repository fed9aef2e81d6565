#pragma once

#include "platform/UrlHandler.h"

#include <QDBusConnection>

#include <map>
#include <memory>

namespace Orbita {

class ApplicationClient;
class Scheduler;
class StartupNotifier;

/// The addresses of a freedesktop session: which program has which scheme GIO knows, and the session bus carries them.
///
/// A program whose entry says "DBusActivatable=true" gets its addresses over the bus, whole and in order, also those
/// that were opened while it was starting. Any other, and every one where there is no bus, gets each address on its
/// command line, which takes no more than some 120 KiB; longer ones are logged and not sent.
class GioUrlHandler final : public UrlHandler {
public:
    /// \a scheduler outlives the handler. \a bus need not be connected.
    GioUrlHandler(QDBusConnection bus, Scheduler &scheduler, std::unique_ptr<StartupNotifier> notifier);
    ~GioUrlHandler() override;

    /// A program that is not there although its entry is does not count.
    [[nodiscard]] bool isSchemeHandled(const QString &scheme) const override;
    void openUrl(const QString &url) override;
    void flush() override;

private:
    [[nodiscard]] ApplicationClient &client(const QString &desktopId);

    QDBusConnection m_bus;
    Scheduler &m_scheduler;
    std::unique_ptr<StartupNotifier> m_notifier;
    std::map<QString, std::unique_ptr<ApplicationClient>> m_clients; ///< by desktop id; made when first needed
};

} // namespace Orbita
