#pragma once

#include "toolkit/VXRemoteAction.h"

#include <QObject>
#include <QVariantList>

#include <functional>
#include <optional>

namespace Orbita {

class Dialogs;
class Scheduler;
class UrlHandler;
class VXSchemeCommunicationCenter;
class Workspace;

/// What the link to the companion needs. Borrowed: all of it outlives the link.
struct ToolkitServices {
    VXSchemeCommunicationCenter &center;
    UrlHandler &urls;
    Workspace &workspace;
    Dialogs &dialogs;
    Scheduler &scheduler;
};

/// The program's side of what it and its companion have to say to each other.
class ToolkitLink final : public QObject {
    Q_OBJECT
public:
    /// Reads the user's entries as they are stored now; without one there are none.
    using EntryReader = std::function<QVariantList()>;

    ToolkitLink(const ToolkitServices &services, EntryReader readEntries, QObject *parent = nullptr);
    ~ToolkitLink() override;

    /// Starts the companion where it is installed, and asks for its version a second later.
    void start();
    /// Takes in an address that the program was asked to open, also before start().
    void handleUrl(const QString &url);
    /// Has the companion end with the program, which may wait for that. Needs the program's name on the bus: the
    /// companion ends for nobody else.
    void terminate();

    /// Answers with a digest under another salt when \a action asks for a script that is the user's own.
    [[nodiscard]] std::optional<VXRemoteAction> verifyApplescriptAction(const VXRemoteAction &action) const;

Q_SIGNALS:
    /// The user goes and fetches a new companion; the program has to be started again with it.
    void quitRequested();

private:
    void connectOnce();
    void checkVersion();
    void offerNewVersion();
    void replaceOldToolkit();

    ToolkitServices m_services;
    EntryReader m_readEntries;
};

/// The script that \a question (see scriptQuestion()) names, among the stored \a entries and the members that they
/// hold, but not the members of those. Nothing when none of them is it.
[[nodiscard]] std::optional<QString> scriptAskedFor(const QVariantList &entries, const QString &question);

} // namespace Orbita
