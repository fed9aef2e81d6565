#pragma once

#include "model/DraftStore.h"
#include "model/ImageCache.h"
#include "model/ImageStore.h"
#include "model/ItemEditors.h"
#include "model/ItemServices.h"
#include "model/MenuItem.h"
#include "model/Notices.h"
#include "platform/memory/MemoryFileLookup.h"
#include "platform/memory/MemoryRunningApplications.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "platform/memory/MemoryUserNotifications.h"
#include "platform/memory/MemoryWorkspace.h"
#include "settings/AppSettings.h"
#include "support/MemoryTriggers.h"
#include "support/TemporaryContainer.h"
#include "toolkit/RemoteActionSender.h"

#include <vector>

namespace Orbita {

/// A companion program that a test switches on and whose letters it reads.
class RecordingRecipient final : public RemoteActionSender {
public:
    [[nodiscard]] bool isRecipientReachable() const override { return isReachable; }
    void sendAction(const VXRemoteAction &action) override { sent.push_back(action); }

    bool isReachable = false;
    std::vector<VXRemoteAction> sent;
};

/// Editors in which a user does what a test says.
class PlantedEditors final : public ItemEditors {
public:
    struct Session {
        QString text;
        QString title; ///< of a script's editor
        Image image;
        std::optional<Draft> draft;
    };

    void editScript(const EditorText &script, const QString &title, const Image &image,
                    const Handlers &handlers) override
    {
        run({script.stored, title, image, script.draft}, handlers);
    }
    void editLink(const EditorText &urlString, const Image &image, const Handlers &handlers) override
    {
        run({urlString.stored, {}, image, urlString.draft}, handlers);
    }

    std::vector<Session> sessions;  ///< what was edited
    std::optional<QString> newText; ///< nothing: the user discards
    std::optional<Image> newImage;
    bool isClosed = false;           ///< the user closes the editor with the new text and image, or with none, unsaved
    std::function<void()> whileOpen; ///< what happens meanwhile; may be empty

private:
    void run(const Session &session, const Handlers &handlers)
    {
        sessions.push_back(session);
        if (whileOpen)
            whileOpen();
        if (!isClosed)
            handlers.finish(newText.value_or(session.text), newText ? newImage : std::nullopt);
        else if (newText)
            handlers.keepDraft(Draft{*newText, newImage, QDateTime::currentDateTimeUtc()});
        else
            handlers.keepDraft(std::nullopt);
    }
};

/// A whole desktop in memory, with folders and settings of its own.
struct MemoryDesktop {
    TemporaryContainer container;
    MemoryUserDefaults defaults;
    MemoryTriggers triggers{defaults};
    AppSettings settings{defaults, triggers.sources};
    MemoryWorkspace workspace;
    MemoryRunningApplications runningApplications;
    RecordingRecipient toolkit;
    ImageCache imageCache;
    ImageStore imageStore{container.directories().container};
    DraftStore drafts{container.directories().container};
    PlantedEditors editors;
    MemoryFileLookup files{workspace};
    MemoryUserNotifications notifications;
    Notices notices{notifications};
    ItemServices services{workspace, files,  runningApplications, toolkit, imageCache, imageStore, drafts,
                          editors,   notices};

    /// Makes a file that stands for an application bundle in the temporary folder and returns its path.
    [[nodiscard]] QString plantApplication(const QString &fileName) const
    {
        return container.write(fileName, "[Desktop Entry]\n");
    }
    /// The names of \a items in order.
    template <typename Items>
    [[nodiscard]] static QStringList names(const Items &items)
    {
        QStringList result;
        for (const auto &item : items)
            result.append(item->name());
        return result;
    }
};

} // namespace Orbita
