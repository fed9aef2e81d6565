#pragma once

#include "model/MenuItemArray.h"
#include "toolkit/VXRemoteAction.h"

#include <QObject>

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
    using ItemLoader = std::function<MenuItemArray()>;

    /// \a loadItems loads the user's entries as they are stored now.
    ToolkitLink(const ToolkitServices &services, ItemLoader loadItems, QObject *parent = nullptr);
    ~ToolkitLink() override;

    /// Starts the companion where it is installed, and asks for its version a second later.
    void start();
    /// Takes in an address that the program was asked to open, also before start().
    void handleUrl(const QString &url);
    /// Has the companion end with the program.
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
    ItemLoader m_loadItems;
};

/// The script that \a question (see scriptQuestion()) names, among \a items and the members that they hold, but not the
/// members of those. Nothing when none of them is it.
[[nodiscard]] std::optional<QString> scriptAskedFor(const MenuItemArray::Items &items, const QString &question);

} // namespace Orbita
