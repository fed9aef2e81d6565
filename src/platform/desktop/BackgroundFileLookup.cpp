#include "platform/desktop/BackgroundFileLookup.h"

#include "platform/Bookmark.h"
#include "platform/Scheduler.h"

#include <utility>

namespace Orbita {

namespace {

using Presence = KnownFile::Presence;

constexpr int threads = 4;
constexpr qsizetype mostKnown = 4096; // files; rings hold some dozens

} // namespace

FileReport readFileReport(const QByteArray &bookmark)
{
    const auto resolved = Bookmark::resolve(bookmark);
    if (!resolved)
        return {resolved.error() == Bookmark::Error::Missing ? Presence::Missing : Presence::Unreachable, {}, {}};
    const auto fresh = resolved->isStale ? Bookmark::create(resolved->path) : bookmark;
    return {Presence::Present, fresh ? *fresh : bookmark, readFileLook(resolved->path)};
}

BackgroundFileLookup::BackgroundFileLookup(Scheduler &scheduler, IconChooser iconOf, Reader read)
    : m_scheduler(scheduler), m_iconOf(std::move(iconOf)), m_read(std::move(read)), m_jobs(threads)
{
}

std::optional<KnownFile> BackgroundFileLookup::known(const QByteArray &bookmark) const
{
    if (const auto entry = m_entries.constFind(bookmark); entry != m_entries.cend())
        return entry->file;
    const auto path = Bookmark::originalPath(bookmark);
    return path ? std::optional(KnownFile{Presence::Unknown, *path, bookmark, {}, false}) : std::nullopt;
}

void BackgroundFileLookup::look(const QByteArray &bookmark, Answer then)
{
    const auto file = known(bookmark);
    if (!file)
        return;
    forgetSome();
    Entry &entry = m_entries[bookmark];
    entry.file = *file;
    if (then)
        entry.waiting.push_back(std::move(then));
    if (!std::exchange(entry.isLooking, true))
        start(bookmark, entry);
}

void BackgroundFileLookup::start(const QByteArray &bookmark, Entry &entry)
{
    m_jobs.start([this, bookmark, read = m_read]() -> BackgroundJobs::Delivery {
        // Carried out here again, and only while this object is there.
        return [this, bookmark, report = read(bookmark)] { take(bookmark, report); };
    });
    m_scheduler.after(patience, *this, [this, bookmark, look = ++entry.looks] { giveUpWaiting(bookmark, look); });
}

void BackgroundFileLookup::take(const QByteArray &bookmark, const FileReport &report)
{
    Entry &entry = m_entries[bookmark];
    entry.isLooking = false;
    KnownFile file = entry.file;
    file.presence = report.presence;
    if (report.presence == Presence::Present)
        file = {report.presence, report.look.path, report.bookmark, m_iconOf(report.look), report.look.isDirectory};
    update(entry, file);
}

void BackgroundFileLookup::giveUpWaiting(const QByteArray &bookmark, int look)
{
    const auto entry = m_entries.find(bookmark);
    if (entry == m_entries.end() || !entry->isLooking || entry->looks != look)
        return;
    KnownFile file = entry->file;
    file.presence = Presence::Unreachable;
    update(*entry, file);
}

void BackgroundFileLookup::update(Entry &entry, const KnownFile &file)
{
    if (file != std::exchange(entry.file, file) && !std::exchange(m_isChangeDue, true))
        QMetaObject::invokeMethod(this, &BackgroundFileLookup::announceChange, Qt::QueuedConnection);
    if (entry.file.icon.isNull())
        entry.file.icon = m_iconOf(guessFileLook(file.path));
    const KnownFile answer = entry.file;
    for (const Answer &then : std::exchange(entry.waiting, {})) // may look again
        then(answer);
}

void BackgroundFileLookup::announceChange()
{
    m_isChangeDue = false;
    Q_EMIT changed();
}

void BackgroundFileLookup::forgetSome()
{
    if (m_entries.size() >= mostKnown)
        m_entries.removeIf([](auto entry) { return !entry->isLooking; });
}

} // namespace Orbita
