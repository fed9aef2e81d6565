#pragma once

#include "platform/BackgroundJobs.h"
#include "platform/FileLookup.h"
#include "platform/desktop/FileLook.h"

#include <QHash>

#include <atomic>
#include <memory>
#include <vector>

namespace Orbita {

class Scheduler;

/// What a look at the file of a bookmark came to.
struct FileReport {
    KnownFile::Presence presence = KnownFile::Presence::Unreachable;
    QByteArray bookmark; ///< a fresh one where the old one was stale; set with the look where the file is present
    FileLook look;
};

/// Looks at the file of \a bookmark. Waits for its disk, which may take for ever. Any thread.
[[nodiscard]] FileReport readFileReport(const QByteArray &bookmark);

/// Looks at files on threads of its own.
class BackgroundFileLookup final : public FileLookup {
    Q_OBJECT
public:
    using Reader = std::function<FileReport(const QByteArray &bookmark)>;
    using IconChooser = std::function<Image(const FileLook &look)>;

    /// How long a disk may take before it counts as one that does not answer.
    static constexpr std::chrono::seconds patience{2};

    /// \a iconOf chooses pictures, on the thread of this object. \a read is called on any. \a scheduler outlives the
    /// object.
    BackgroundFileLookup(Scheduler &scheduler, IconChooser iconOf, Reader read = &readFileReport);

    [[nodiscard]] std::optional<KnownFile> known(const QByteArray &bookmark) const override;
    void look(const QByteArray &bookmark, Answer then = {}) override;
    [[nodiscard]] bool isLooking(const QByteArray &bookmark) const override;

private:
    /// A look that has not come back.
    struct Look {
        std::atomic<bool> isBegun = false; ///< set by the thread that looks: until then it waits for others
    };
    struct Entry {
        KnownFile file;
        std::vector<Answer> waiting;
        std::shared_ptr<Look> look; ///< null where nobody is looking
    };

    void start(const QByteArray &bookmark, Entry &entry);
    void take(const QByteArray &bookmark, const FileReport &report);
    /// Gives up waiting for \a look, when the disk has had its time for it.
    void beImpatient(const QByteArray &bookmark, const std::weak_ptr<Look> &look);
    void giveUpWaiting(const QByteArray &bookmark, const std::weak_ptr<Look> &look);
    void update(Entry &entry, const KnownFile &file);
    void announceChange();
    void forgetSome();

    Scheduler &m_scheduler;
    IconChooser m_iconOf;
    Reader m_read;
    QHash<QByteArray, Entry> m_entries; ///< by bookmark
    bool m_isChangeDue = false;         ///< changed() follows with the next turn of the event loop
    BackgroundJobs m_jobs;
};

} // namespace Orbita
