#pragma once

#include "toolkit/RemoteActionSender.h"
#include "toolkit/VXActionObserverEntry.h"

#include <QHash>
#include <QObject>

#include <chrono>
#include <functional>
#include <vector>

namespace Orbita {

class Scheduler;
class UrlHandler;

/// Whether an address may hold the answer to a question: not where it is known to come from another program than the
/// one that was asked.
enum class MayAnswer { No, Yes };

/// Exchanges actions with one other program, each packed into an address of the receiver's own scheme.
class VXSchemeCommunicationCenter final : public QObject, public RemoteActionSender {
    Q_OBJECT
public:
    /// Given the answer, or null when none came within responseTimeout.
    using ResponseHandler = std::function<void(const VXRemoteAction *response)>;
    static constexpr std::chrono::seconds responseTimeout{10};
    /// Longer addresses are refused, as nobody sends them in earnest.
    static constexpr qsizetype maximumUrlLength = 16 * 1024 * 1024;

    /// \a urls and \a scheduler outlive the center.
    VXSchemeCommunicationCenter(UrlHandler &urls, Scheduler &scheduler, QObject *parent = nullptr);

    /// This program's own scheme, without the colon.
    void setUrlSchemeForReceiving(const QString &scheme) { m_urlSchemeForReceiving = scheme; }
    /// The other program's scheme, without the colon. Starts that program where it is installed; a null string starts
    /// nothing.
    void setUrlSchemeOfRecipient(const QString &scheme);
    [[nodiscard]] const QString &urlSchemeForReceiving() const { return m_urlSchemeForReceiving; }
    [[nodiscard]] const QString &urlSchemeOfRecipient() const { return m_urlSchemeOfRecipient; }

    /// Whether the other program is installed; it need not run.
    [[nodiscard]] bool isRecipientReachable() const override;

    /// \a observer tells registrations apart; it must be removed before what \a selector uses is gone.
    void addObserver(const void *observer, ActionSelector selector, const QString &name);
    void removeObserver(const void *observer);
    void removeObserver(const void *observer, const QString &name);

    void sendAction(const VXRemoteAction &action) override { sendAction(action, {}); }
    /// Sends \a action. With a \a handler an answer is asked for, and the handler called exactly once. What it throws
    /// when there was no answer is logged.
    void sendAction(VXRemoteAction action, ResponseHandler handler);

    /// Takes in an address that this program was asked to open: an answer goes to its handler, another action to the
    /// observers of its name. So does what looks like an answer and must not be one; its handler goes on waiting.
    /// False when the address is none of ours or makes no sense.
    bool handleUrlString(const QString &url, MayAnswer mayAnswer = MayAnswer::Yes);

private:
    void awaitResponse(const QString &responseId, ResponseHandler handler);
    bool answer(const QString &responseId, const VXRemoteAction *response);
    void tellObservers(const VXRemoteAction &action);

    UrlHandler &m_urls;
    Scheduler &m_scheduler;
    QString m_urlSchemeForReceiving;
    QString m_urlSchemeOfRecipient;
    std::vector<VXActionObserverEntry> m_actionObservers;
    QHash<QString, ResponseHandler> m_responseBlocks; ///< by response id
};

} // namespace Orbita
