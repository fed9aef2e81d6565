#include "model/DraftStore.h"

#include "model/Log.h"
#include "platform/AtomicFile.h"
#include "platform/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <utility>

namespace Orbita {

DraftStore::DraftStore(const QString &folder) : m_filePath(folder + QStringLiteral("/drafts.plist"))
{
    load();
}

DraftStore::~DraftStore()
{
    if (!m_isFileWritten)
        save();
}

void DraftStore::load()
{
    const auto root = PropertyList::read(m_filePath);
    if (!root && root.error() == PropertyList::ReadError::Missing)
        return;
    bool isIntact = root && root->typeId() == QMetaType::QVariantList;
    for (const QVariant &stored : root ? root->toList() : QVariantList()) {
        if (auto record = DraftRecord::fromPropertyList(stored))
            m_drafts.push_back({*std::move(record)});
        else
            isIntact = false;
    }
    if (isIntact)
        return;
    const bool mayBeIntact = !root && root.error() == PropertyList::ReadError::Unreadable;
    const QString aside = mayBeIntact ? QString() : setAsideDamagedFile(m_filePath);
    m_mayReplaceFile = !aside.isEmpty();
    if (!m_mayReplaceFile) {
        qCWarning(lcModel, "The drafts in %s cannot be read; none will be saved.", qUtf8Printable(m_filePath));
        return;
    }
    qCWarning(lcModel, "The file with the drafts is damaged; it was set aside as %s.", qUtf8Printable(aside));
    save();
}

std::vector<DraftStore::Kept>::iterator DraftStore::find(const QByteArray &entry)
{
    return std::ranges::find_if(m_drafts, [&entry](const Kept &kept) { return kept.entries.contains(entry); });
}

std::optional<Draft> DraftStore::draftOf(const QString &identity) const
{
    const QByteArray entry = identityDigest(identity);
    const auto found = std::ranges::find_if(m_drafts, [&](const Kept &kept) { return kept.entries.contains(entry); });
    if (found == m_drafts.end())
        return std::nullopt;
    if (!found->image && !found->picture.isEmpty())
        found->image = imageFromPng(found->picture);
    return Draft{found->text, found->image, found->changed};
}

void DraftStore::keep(const QString &identity, const Draft &draft)
{
    const QByteArray entry = identityDigest(identity);
    const auto found = find(entry);
    const bool isKept = found != m_drafts.end() && found->text == draft.text && found->image == draft.picture;
    if (isKept && m_isFileWritten)
        return;
    if (isKept) // the disk may have room by now
        save();
    else if (put(entry, entry, draft, Ends::Never))
        save();
}

void DraftStore::settle(const QString &before, const QString &now, const Draft &content)
{
    const QByteArray from = identityDigest(before);
    const auto found = find(from);
    const bool isKept = found != m_drafts.end();
    const bool isInItemFile = !isKept || found->entries.size() == 1;
    if (before != now || content.picture || !isInItemFile) {
        put(from, identityDigest(now), content, Ends::WhenSaved);
    } else if (isKept) {
        m_drafts.erase(found);
        save();
    }
}

bool DraftStore::put(const QByteArray &before, const QByteArray &now, const Draft &content, Ends ends)
{
    const auto old = find(before);
    const bool isKept = old != m_drafts.end();
    Kept kept{{isKept ? old->entries : QList{before}, content.text, {}, content.changed}, ends, content.picture};
    kept.entries.removeAll(now);
    kept.entries.append(now);
    if (content.picture) // making a picture's file takes longer than writing it
        kept.picture = isKept && old->image == content.picture ? old->picture : pngRepresentation(*content.picture);
    if (kept.size() > maximumSize) {
        qCWarning(lcModel, "A draft of %lld characters is too long to be kept.", qlonglong(content.text.size()));
        return false;
    }
    if (isKept)
        m_drafts.erase(old);
    m_drafts.push_back(std::move(kept));
    return true;
}

void DraftStore::keepUnsaved()
{
    bool isAnyKept = false;
    for (Kept &kept : m_drafts) {
        if (kept.ends != Ends::WhenSaved)
            continue;
        isAnyKept = true;
        // An entry of that identity need not have the new picture when the item file is saved later.
        if (!kept.picture.isEmpty())
            kept.ends = Ends::Never;
    }
    if (isAnyKept)
        save();
}

void DraftStore::entryWasRenamed(const QString &before, const QString &now)
{
    const auto found = find(identityDigest(before));
    if (found == m_drafts.end())
        return;
    const QByteArray entry = identityDigest(now);
    found->entries.removeAll(entry);
    found->entries.append(entry);
    save();
}

void DraftStore::entryWillBeRemoved(const QString &identity)
{
    const auto found = find(identityDigest(identity));
    if (found != m_drafts.end())
        found->ends = Ends::WhenRemoved;
}

void DraftStore::entriesWereSaved(const std::vector<MenuItem::Pointer> &items)
{
    const auto concerns = [](const Kept &kept) { return kept.ends != Ends::Never || kept.entries.size() > 1; };
    if (std::ranges::none_of(m_drafts, concerns))
        return;
    QSet<QByteArray> saved;
    for (const MenuItem::Pointer &item : items)
        saved.insert(identityDigest(item->identity()));
    std::erase_if(m_drafts, [&saved](const Kept &kept) {
        const auto isSaved = [&saved](const QByteArray &entry) { return saved.contains(entry); };
        return kept.ends == Ends::WhenRemoved ? std::ranges::none_of(kept.entries, isSaved)
                                              : kept.ends == Ends::WhenSaved && isSaved(kept.entries.last());
    });
    for (Kept &kept : m_drafts) {
        if (saved.contains(kept.entries.last()))
            kept.entries = {kept.entries.last()};
        if (kept.ends == Ends::WhenRemoved)
            kept.ends = Ends::Never; // an equal entry is left
    }
    save();
}

void DraftStore::makeRoom()
{
    qsizetype size = 0;
    for (const Kept &kept : m_drafts)
        size += kept.size();
    while (m_drafts.size() > maximumCount || size > maximumSize) {
        qCWarning(lcModel, "There are too many drafts; the oldest one, last changed %s, was dropped.",
                  qUtf8Printable(m_drafts.front().changed.toString(Qt::ISODate)));
        size -= m_drafts.front().size();
        m_drafts.erase(m_drafts.begin());
    }
}

void DraftStore::save()
{
    makeRoom();
    if (!m_mayReplaceFile)
        return;
    const bool wasWritten = std::exchange(m_isFileWritten, m_drafts.empty() ? removeFile() : writeFile());
    if (wasWritten && !m_isFileWritten)
        qCWarning(lcModel, "The drafts in %s could not be saved.", qUtf8Printable(m_filePath));
}

bool DraftStore::removeFile() const
{
    return QFile::remove(m_filePath) || !QFileInfo::exists(m_filePath);
}

bool DraftStore::writeFile() const
{
    QVariantList root;
    for (const Kept &kept : m_drafts)
        root.append(kept.toPropertyList());
    QDir().mkpath(QFileInfo(m_filePath).path());
    return PropertyList::write(m_filePath, root, PropertyList::Format::Binary).hasValue();
}

} // namespace Orbita
