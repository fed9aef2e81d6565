#include "companion/service/ToolkitService.h"

#include "companion/service/Log.h"
#include "companion/service/ScriptRunner.h"
#include "toolkit/Digest.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <QPointer>

namespace Orbita {

namespace {

constexpr const char *protocolVersion = "1.0";
constexpr const char *tooManyRun = "a script, as too many run";

const QString resultKey = QStringLiteral("result");

void refuse(const char *why)
{
    qCWarning(lcCompanion, "Refused: %s", why);
}

} // namespace

ToolkitService::ToolkitService(VXSchemeCommunicationCenter &center, ScriptRunner &runner, Means means, QObject *parent)
    : QObject(parent), m_center(center), m_runner(runner), m_means(std::move(means))
{
    observe(QStringLiteral("executeApplescript"), &ToolkitService::executeApplescript);
    observe(QStringLiteral("terminate"), &ToolkitService::terminate);
    observe(QStringLiteral("verifyApplescriptResult"), &ToolkitService::refuseAnswer);
    const QString version = QStringLiteral("version");
    m_center.addObserver(
        this,
        [this, version](const VXRemoteAction &) {
            m_isUnderstood = true;
            VXRemoteAction reply(version);
            reply.setValueForParameter(QLatin1String(protocolVersion), version);
            return std::optional(reply);
        },
        version);
}

ToolkitService::~ToolkitService()
{
    m_center.removeObserver(this);
}

void ToolkitService::observe(const QString &name, Action action)
{
    const auto selector = [this, action](const VXRemoteAction &received) -> std::optional<VXRemoteAction> {
        m_isUnderstood = true;
        (this->*action)(received);
        return std::nullopt;
    };
    m_center.addObserver(this, selector, name);
}

void ToolkitService::open(const QString &url, Sender sender)
{
    m_sender = sender;
    // The bare scheme, with which Orbita makes sure that the companion runs.
    m_isUnderstood = url == m_center.urlSchemeForReceiving() + u':';
    if (!m_center.handleUrlString(url, sender == Sender::Orbita ? MayAnswer::Yes : MayAnswer::No))
        refuse("an address that holds no action");
    else if (!m_isUnderstood)
        refuse("an unknown action");
}

void ToolkitService::executeApplescript(const VXRemoteAction &action)
{
    const auto script = action.valueForParameter(QStringLiteral("script"));
    if (const char *why = obstacleFor(script))
        refuse(why);
    else
        ask(*script);
}

const char *ToolkitService::obstacleFor(const std::optional<QString> &script) const
{
    if (!script || script->isEmpty())
        return "no script in a request to run one";
    if (script->toUtf8().size() > maximumScriptSize)
        return "a script of more than 4 MiB";
    if (m_waitingScripts >= maximumWaitingScripts)
        return "a script, as too many wait for their verification";
    if (m_runner.runningCount() >= maximumRunningScripts)
        return tooManyRun;
    return nullptr;
}

void ToolkitService::ask(const QString &script)
{
    VXRemoteAction question(QStringLiteral("verifyApplescript"));
    question.setValueForParameter(scriptQuestion(script), QStringLiteral("hash"));
    ++m_waitingScripts;
    m_center.sendAction(question, [self = QPointer(this), script](const VXRemoteAction *answer) {
        if (!self)
            return;
        self->m_isUnderstood = true;
        self->takeAnswer(script, answer);
    });
}

const char *ToolkitService::doubtAbout(const QString &script, const VXRemoteAction *answer) const
{
    if (!answer)
        return "a script that was not verified in time";
    if (answer->name() != QLatin1String("verifyApplescriptResult")
        || answer->valueForParameter(resultKey) != scriptAnswer(script))
        return "a script whose verification failed";
    if (!m_means.isOwnScript(script))
        return "a script that is none of the user's items";
    return m_runner.runningCount() < maximumRunningScripts ? nullptr : tooManyRun;
}

void ToolkitService::takeAnswer(const QString &script, const VXRemoteAction *answer)
{
    --m_waitingScripts;
    if (const char *why = doubtAbout(script, answer))
        refuse(why);
    else
        m_runner.run(script);
}

void ToolkitService::refuseAnswer(const VXRemoteAction &)
{
    refuse(m_sender == Sender::Orbita ? "an answer that nobody waits for"
                                      : "an answer that is not known to be Orbita's");
}

void ToolkitService::terminate(const VXRemoteAction &action)
{
    if (m_sender != Sender::Orbita)
        return refuse("to quit an application or to end, as it is not known to be Orbita that asks");
    const auto processId = action.valueForParameter(QStringLiteral("processId"));
    if (!processId)
        return Q_EMIT endRequested();
    bool isNumber = false;
    const qint64 process = processId->toLongLong(&isNumber);
    if (!isNumber)
        return refuse("to quit an application without the number of its process");
    if (const auto asked = m_means.quit(process); !asked)
        qCWarning(lcCompanion).noquote() << "Not asked to quit:" << asked.error();
}

} // namespace Orbita
