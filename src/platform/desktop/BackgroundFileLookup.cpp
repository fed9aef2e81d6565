#include "platform/desktop/BackgroundFileLookup.h"

#include "platform/Bookmark.h"
#include "platform/Scheduler.h"

#include <utility>

namespace Orbita {

namespace {

using Presence = KnownFile::Presence;

constexpr int threads = 8;              // they mostly wait
constexpr qsizetype mostKnown = 20'000; // files; rings hold some dozens

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
    // Whoever asks while a look goes on for long is answered in time as well.
    const bool isAwaited = then && entry.waiting.empty();
    if (then)
        entry.waiting.push_back(std::move(then));
    if (!entry.look)
        start(bookmark, entry);
    else if (isAwaited)
        beImpatient(bookmark, entry.look);
}

bool BackgroundFileLookup::isLooking(const QByteArray &bookmark) const
{
    const auto entry = m_entries.constFind(bookmark);
    return entry != m_entries.cend() && entry->look;
}

void BackgroundFileLookup::start(const QByteArray &bookmark, Entry &entry)
{
    entry.look = std::make_shared<Look>();
    m_jobs.start([this, bookmark, look = entry.look, read = m_read]() -> BackgroundJobs::Delivery {
        look->isBegun = true;
        // Carried out here again, and only while this object is there.
        return [this, bookmark, report = read(bookmark)] { take(bookmark, report); };
    });
    beImpatient(bookmark, entry.look);
}

void BackgroundFileLookup::beImpatient(const QByteArray &bookmark, const std::weak_ptr<Look> &look)
{
    m_scheduler.after(patience, *this, [this, bookmark, look] { giveUpWaiting(bookmark, look); });
}

void BackgroundFileLookup::take(const QByteArray &bookmark, const FileReport &report)
{
    KnownFile file = m_entries[bookmark].file;
    file.presence = report.presence;
    if (report.presence == Presence::Present) {
        file = {report.presence, report.look.path, report.bookmark, m_iconOf(report.look), report.look.isDirectory};
        if (report.bookmark != bookmark)
            m_entries[report.bookmark].file = file; // by which it will be asked for once it is stored
    }
    Entry &entry = m_entries[bookmark];
    entry.look.reset();
    update(entry, file);
}

void BackgroundFileLookup::giveUpWaiting(const QByteArray &bookmark, const std::weak_ptr<Look> &look)
{
    const auto entry = m_entries.find(bookmark);
    const auto awaited = look.lock();
    if (entry == m_entries.end() || !awaited || entry->look != awaited)
        return;
    if (!awaited->isBegun)
        return beImpatient(bookmark, look); // nobody has asked the disk yet
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
        m_entries.removeIf([](auto entry) { return !entry->look; });
}

} // namespace Orbita
