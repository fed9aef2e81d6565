#pragma once

#include "base/ProgramNames.h"
#include "platform/UrlHandler.h"
#include "platform/desktop/CallableNames.h"

#include <QDBusConnection>
#include <QList>

#include <map>
#include <memory>
#include <optional>

namespace Orbita {

class ApplicationClient;
class Scheduler;
class StartupNotifier;

/// The addresses of a freedesktop session: which program has which scheme GIO knows, and the session bus carries them.
///
/// A program whose entry says "DBusActivatable=true" gets its addresses over the bus, whole and in order, also those
/// that were opened while it was starting. Any other, and every one where there is no bus, gets each address on its
/// command line, which takes no more than some 120 KiB; longer ones are logged and not sent.
///
/// Every program may say that it opens a scheme, and GIO prefers one whose entry lies in an earlier folder. So a
/// program of this project is reached by its name on the bus and by its own entry, always over the bus, and its scheme
/// is asked for only where there is neither. Its addresses hold messages, and any process can read command lines: on
/// one goes the bare scheme with its colon, which just starts the program, and nothing else; the rest is logged and not
/// sent.
class GioUrlHandler final : public UrlHandler {
public:
    /// \a scheduler outlives the handler. \a bus need not be connected. \a ownPrograms are those of this project that
    /// this one sends addresses to.
    GioUrlHandler(QDBusConnection bus, Scheduler &scheduler, std::unique_ptr<StartupNotifier> notifier,
                  QList<ProgramNames> ownPrograms);
    ~GioUrlHandler() override;

    /// A program that is not there although its entry is does not count, unless the bus knows its name.
    [[nodiscard]] bool isSchemeHandled(const QString &scheme) const override;
    void openUrl(const QString &url) override;
    void flush() override;

private:
    struct Recipient;

    [[nodiscard]] const ProgramNames *ownProgram(const QString &scheme) const;
    [[nodiscard]] std::optional<Recipient> recipientOf(const QString &scheme) const;
    [[nodiscard]] ApplicationClient &client(const QString &busName);
    void openByCommand(const QString &url, const Recipient &recipient);

    QDBusConnection m_bus;
    Scheduler &m_scheduler;
    std::unique_ptr<StartupNotifier> m_notifier;
    QList<ProgramNames> m_ownPrograms;
    CallableNames m_callableNames;
    std::map<QString, std::unique_ptr<ApplicationClient>> m_clients; ///< by bus name; made when first needed
};

} // namespace Orbita
