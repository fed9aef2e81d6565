#pragma once

#include "base/Result.h"
#include "toolkit/VXRemoteAction.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace Orbita {

class Scheduler;
class ScriptRunner;
class VXSchemeCommunicationCenter;

/// What the companion does for Orbita: it runs the scripts of the user's items and asks applications to quit.
///
/// Anybody may have the desktop open an address of the companion's scheme, a web page included, and the salts of the
/// digests are no secret. So a script runs only after Orbita has said that it is one of the user's items, and what
/// makes its answer believable is the random response id of the question. That must not be found by trying: an answer
/// that nobody asked for refuses every script that waits, and any other in the next while.
class ToolkitService final : public QObject {
    Q_OBJECT
public:
    static constexpr int maximumWaitingScripts = 16;
    static constexpr int maximumRunningScripts = 32;
    static constexpr qsizetype maximumScriptSize = 4 * 1024 * 1024; ///< bytes of UTF-8
    /// How long a true answer that comes too late is not mistaken for a guess. Each is forgiven once.
    static constexpr std::chrono::minutes lateAnswerPatience{1};
    /// How long no script is taken after an answer that nobody had asked for.
    static constexpr std::chrono::seconds closedAfterGuess{10};

    /// What the service has done by others.
    struct Means {
        /// Asks a process to quit; a failure is one sentence.
        std::function<Result<void, QString>(qint64 processIdentifier)> quit;
        /// Whether a script is that of one of the user's items, letter for letter. The digests leave out the end of one
        /// with characters outside ASCII, so that Orbita's answer alone fits other scripts too.
        std::function<bool(const QString &script)> isOwnScript;
    };

    /// All that is borrowed outlives the service. \a center has its schemes already.
    ToolkitService(VXSchemeCommunicationCenter &center, Scheduler &scheduler, ScriptRunner &runner, Means means,
                   QObject *parent = nullptr);
    ~ToolkitService() override;

    /// Takes in an address that the companion was asked to open. What is not understood is logged, without its content.
    void open(const QString &url);

Q_SIGNALS:
    /// The companion is to end: at once when it was asked to, or, after a guess, once it would take scripts again.
    void endRequested();

private:
    using Action = void (ToolkitService::*)(const VXRemoteAction &);
    void observe(const QString &name, Action action);
    void executeApplescript(const VXRemoteAction &action);
    void terminate(const VXRemoteAction &action);
    void end();
    void refuseGuess(const VXRemoteAction &answer);
    void expectLateAnswer(const QString &result);

    [[nodiscard]] const char *obstacleFor(const std::optional<QString> &script) const;
    void ask(const QString &script);
    /// Whether \a answer, which may be null, lets \a script run; null for that it does, otherwise why not.
    [[nodiscard]] const char *doubtAbout(const QString &script, const VXRemoteAction *answer) const;
    void takeAnswer(const QString &script, const VXRemoteAction *answer);

    VXSchemeCommunicationCenter &m_center;
    Scheduler &m_scheduler;
    ScriptRunner &m_runner;
    Means m_means;
    QStringList m_lateAnswers;   ///< the results of questions that nobody answered in time
    bool m_isUnderstood = false; ///< whether the address at hand reached somebody
    bool m_isClosed = false;     ///< after a guess
    bool m_endsOnceOpen = false; ///< it was asked to end while closed
    int m_waitingScripts = 0;
    int m_round = 0; ///< counts guesses: answers to questions of earlier rounds no longer matter
};

} // namespace Orbita
