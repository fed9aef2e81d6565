#include "app/ToolkitLink.h"

#include "app/Log.h"
#include "base/ProgramNames.h"
#include "model/StoredText.h"
#include "platform/Dialogs.h"
#include "platform/Scheduler.h"
#include "platform/UrlHandler.h"
#include "platform/Workspace.h"
#include "toolkit/Digest.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <QUrl>

using namespace std::chrono_literals;

namespace Orbita {

namespace {

const QString currentVersion = QStringLiteral("1.0");
/// Companions from before the messages know this scheme only, and "terminate" behind it.
const QString oldScheme = QStringLiteral("orbita-toolkit");

/// The script that is stored as \a entry; nothing for another kind of entry.
std::optional<QString> storedScript(const QVariantMap &entry)
{
    return storedText(entry, "class") == QLatin1String("AppleScriptMenuItem")
        ? std::optional(storedText(entry, "script"))
        : std::nullopt;
}

/// What is stored in the collection \a entry; nothing for another kind of entry.
QVariantList storedMembers(const QVariantMap &entry)
{
    return storedText(entry, "class") == QLatin1String("CollectionMenuItem")
        ? entry.value(QStringLiteral("subitems")).toList()
        : QVariantList();
}

} // namespace

std::optional<QString> scriptAskedFor(const QVariantList &entries, const QString &question)
{
    const auto isAskedFor
        = [&question](const std::optional<QString> &script) { return script && scriptQuestion(*script) == question; };
    for (const QVariant &entry : entries) {
        if (const auto script = storedScript(entry.toMap()); isAskedFor(script))
            return script;
        for (const QVariant &member : storedMembers(entry.toMap())) {
            if (const auto script = storedScript(member.toMap()); isAskedFor(script))
                return script;
        }
    }
    return std::nullopt;
}

ToolkitLink::ToolkitLink(const ToolkitServices &services, EntryReader readEntries, QObject *parent)
    : QObject(parent), m_services(services), m_readEntries(std::move(readEntries))
{
    m_services.center.setUrlSchemeForReceiving(orbitaNames.scheme);
    m_services.center.addObserver(
        this, [this](const VXRemoteAction &action) { return verifyApplescriptAction(action); },
        QStringLiteral("verifyApplescript"));
}

ToolkitLink::~ToolkitLink()
{
    m_services.center.removeObserver(this);
}

void ToolkitLink::connectOnce()
{
    if (m_services.center.urlSchemeOfRecipient().isNull())
        m_services.center.setUrlSchemeOfRecipient(toolkitNames.scheme);
}

void ToolkitLink::start()
{
    connectOnce();
    m_services.scheduler.after(1s, *this, [this] { checkVersion(); });
}

void ToolkitLink::handleUrl(const QString &url)
{
    connectOnce(); // a question may be what has started the program
    m_services.center.handleUrlString(url);
}

void ToolkitLink::terminate()
{
    if (m_services.center.isRecipientReachable())
        m_services.center.sendAction(VXRemoteAction(QStringLiteral("terminate")));
    m_services.urls.flush();
}

std::optional<VXRemoteAction> ToolkitLink::verifyApplescriptAction(const VXRemoteAction &action) const
{
    const auto hash = action.valueForParameter(QStringLiteral("hash"));
    const auto script = hash ? scriptAskedFor(m_readEntries(), *hash) : std::nullopt;
    if (!script)
        return std::nullopt;
    VXRemoteAction reply(QStringLiteral("verifyApplescriptResult"));
    reply.setValueForParameter(scriptAnswer(*script), QStringLiteral("result"));
    return reply;
}

void ToolkitLink::checkVersion()
{
    if (!m_services.center.isRecipientReachable()) {
        if (m_services.urls.isSchemeHandled(oldScheme))
            offerNewVersion();
        return;
    }
    m_services.center.sendAction(VXRemoteAction(QStringLiteral("version")), [](const VXRemoteAction *response) {
        if (response && response->valueForParameter(QStringLiteral("version")) == currentVersion)
            qCInfo(lcApp, "toolkit is up to date.");
    });
}

void ToolkitLink::offerNewVersion()
{
    const int pressed = m_services.dialogs.runAlert(
        {tr("New version of Orbita Toolkit available"),
         tr("Download and install the most recent version now to take advantage of the latest features.\n"
            "Restart Orbita afterwards."),
         {tr("OK"), tr("Later")}});
    if (pressed == 0)
        replaceOldToolkit();
}

void ToolkitLink::replaceOldToolkit()
{
    if (!m_services.workspace.openUrl(QUrl(QStringLiteral(ORBITA_HOMEPAGE "#toolkit"))))
        qCWarning(lcApp, "The page %s#toolkit could not be opened.", ORBITA_HOMEPAGE);
    m_services.urls.openUrl(oldScheme + u':');
    // It has to run before it can be asked to quit.
    m_services.scheduler.after(1s, *this, [this] {
        m_services.urls.openUrl(oldScheme + QStringLiteral(":terminate"));
        Q_EMIT quitRequested();
    });
}

} // namespace Orbita
