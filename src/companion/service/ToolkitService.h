#pragma once

#include "base/Result.h"
#include "toolkit/VXRemoteAction.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace Orbita {

class ScriptRunner;
class VXSchemeCommunicationCenter;

/// What the companion does for Orbita: it runs the scripts of the user's items and asks applications to quit.
///
/// Anybody may have the desktop open an address of the companion's scheme, a web page included, and the salts of the
/// digests are no secret. So a script runs only after Orbita itself has said that it is one of the user's items, and
/// nobody but Orbita may have an application quit or the companion end.
class ToolkitService final : public QObject {
    Q_OBJECT
public:
    static constexpr int maximumWaitingScripts = 16;
    static constexpr int maximumRunningScripts = 32;
    static constexpr qsizetype maximumScriptSize = 4 * 1024 * 1024; ///< bytes of UTF-8

    /// Who has sent an address.
    enum class Sender {
        Orbita,
        Anybody, ///< perhaps Orbita, where the bus does not vouch for the sender
    };

    /// What the service has done by others.
    struct Means {
        /// Asks a process to quit; a failure is one sentence.
        std::function<Result<void, QString>(qint64 processIdentifier)> quit;
        /// Whether a script is that of one of the user's items, letter for letter. The digests leave out the end of one
        /// with characters outside ASCII, so that Orbita's answer alone fits other scripts too.
        std::function<bool(const QString &script)> isOwnScript;
    };

    /// All that is borrowed outlives the service. \a center has its schemes already.
    ToolkitService(VXSchemeCommunicationCenter &center, ScriptRunner &runner, Means means, QObject *parent = nullptr);
    ~ToolkitService() override;

    /// Takes in an address that the companion was asked to open. What is not understood is logged, without its content.
    void open(const QString &url, Sender sender);

Q_SIGNALS:
    /// The companion is to end.
    void endRequested();

private:
    using Action = void (ToolkitService::*)(const VXRemoteAction &);
    void observe(const QString &name, Action action);
    void executeApplescript(const VXRemoteAction &action);
    void terminate(const VXRemoteAction &action);
    void refuseAnswer(const VXRemoteAction &answer);

    [[nodiscard]] const char *obstacleFor(const std::optional<QString> &script) const;
    void ask(const QString &script);
    /// Whether \a answer, which may be null, lets \a script run; null for that it does, otherwise why not.
    [[nodiscard]] const char *doubtAbout(const QString &script, const VXRemoteAction *answer) const;
    void takeAnswer(const QString &script, const VXRemoteAction *answer);

    VXSchemeCommunicationCenter &m_center;
    ScriptRunner &m_runner;
    Means m_means;
    Sender m_sender = Sender::Anybody; ///< of the address at hand
    bool m_isUnderstood = false;       ///< whether the address at hand reached somebody
    int m_waitingScripts = 0;
};

} // namespace Orbita
