#pragma once

#include "model/DraftRecord.h"
#include "model/MenuItem.h"

#include <vector>

namespace Orbita {

/// What users have written in editors and not saved, one draft per entry, in "drafts.plist". There is no such file
/// while there is no draft.
///
/// A draft belongs to the entry of the identity that it was kept under. That changes when the entry is saved or
/// renamed, and the item file follows later or, on a full disk, not at all. So a draft is found under the old identity
/// too until the item file is known to hold the new one.
///
/// A damaged file is set aside; one that may not be read is left alone, and then nothing is kept beyond the program's
/// end. The log tells of both, and of a file that cannot be written.
class DraftStore {
public:
    /// When there are more drafts, or more bytes, those that were kept longest ago make room, which is logged.
    static constexpr std::size_t maximumCount = 100;
    static constexpr qsizetype maximumSize = 15 * 1024 * 1024; ///< bytes

    /// Keeps its file in \a folder and reads it.
    explicit DraftStore(const QString &folder);
    /// Tries once more to write what could not be written.
    ~DraftStore();
    DraftStore(const DraftStore &) = delete;
    DraftStore &operator=(const DraftStore &) = delete;

    /// The draft of the entry \a identity; nothing where there is none.
    [[nodiscard]] std::optional<Draft> draftOf(const QString &identity) const;
    /// Keeps \a draft as that of the entry \a identity, in place of an older one, and writes the file. Nothing happens
    /// when it is kept and written already. One that is larger than maximumSize is not kept, which is logged.
    void keep(const QString &identity, const Draft &draft);
    /// The user wants what the entry \a before holds by now, under the identity \a now: \a content, its picture given
    /// where it is another one than before. The entry's draft is gone once entriesWereSaved() says so, or at once where
    /// nothing has changed.
    void settle(const QString &before, const QString &now, const Draft &content);
    /// Keeps what was settled and has not been saved. To be called after the attempt to save it.
    void keepUnsaved();
    /// The draft of the entry \a before goes with it.
    void entryWasRenamed(const QString &before, const QString &now);
    /// The draft of the entry \a identity is gone once entriesWereSaved() is called without that entry.
    void entryWillBeRemoved(const QString &identity);
    /// The item file holds \a items now, and nothing else.
    void entriesWereSaved(const std::vector<MenuItem::Pointer> &items);

private:
    /// When a draft goes by itself.
    enum class Ends { Never, WhenSaved, WhenRemoved };
    struct Kept : DraftRecord {
        Ends ends = Ends::Never;
        mutable std::optional<Image> image = {}; ///< made of the picture when it is asked for
    };

    void load();
    void save();
    void makeRoom();
    [[nodiscard]] bool removeFile() const;
    [[nodiscard]] bool writeFile() const;
    [[nodiscard]] std::vector<Kept>::iterator find(const QByteArray &entry);
    /// Puts \a content behind all others, as the draft of what was the entry \a before and is \a now. False when it is
    /// too large.
    bool put(const QByteArray &before, const QByteArray &now, const Draft &content, Ends ends);

    QString m_filePath;
    std::vector<Kept> m_drafts;   // in the order in which they were kept
    bool m_mayReplaceFile = true; ///< false where it may hold what was never read
    bool m_isFileWritten = true;  ///< false after a failure, which is told once
};

} // namespace Orbita
