#include "platform/memory/MemoryFileLookup.h"

#include "platform/Bookmark.h"
#include "platform/Workspace.h"

#include <QFileInfo>

#include <utility>

namespace Orbita {

using Presence = KnownFile::Presence;

std::optional<KnownFile> MemoryFileLookup::known(const QByteArray &bookmark) const
{
    if (const auto found = m_known.constFind(bookmark); found != m_known.cend())
        return *found;
    const auto path = Bookmark::originalPath(bookmark);
    return path ? std::optional(KnownFile{Presence::Unknown, *path, bookmark, {}, false}) : std::nullopt;
}

void MemoryFileLookup::look(const QByteArray &bookmark, Answer then)
{
    const auto before = known(bookmark);
    if (!before)
        return;
    looked << bookmark;
    if (!answers) {
        m_unanswered.insert(bookmark);
        return;
    }
    m_unanswered.remove(bookmark);
    const KnownFile now = see(bookmark, *before);
    m_known.insert(bookmark, now);
    if (now != *before)
        QMetaObject::invokeMethod(this, &FileLookup::changed, Qt::QueuedConnection);
    if (then)
        then(now);
}

KnownFile MemoryFileLookup::see(const QByteArray &bookmark, const KnownFile &before) const
{
    KnownFile now = before;
    const auto resolved = Bookmark::resolve(bookmark);
    if (!isMounted || !resolved) {
        const bool isMissing = isMounted && resolved.error() == Bookmark::Error::Missing;
        now.presence = isMissing ? Presence::Missing : Presence::Unreachable;
        if (now.icon.isNull())
            now.icon = Image::named(QStringLiteral("Default"));
        return now;
    }
    const auto fresh = resolved->isStale ? Bookmark::create(resolved->path) : bookmark;
    return {Presence::Present, resolved->path, fresh ? *fresh : bookmark, m_workspace.icon(resolved->path),
            QFileInfo(resolved->path).isDir()};
}

} // namespace Orbita
