#pragma once

#include "platform/FileLookup.h"

#include <QHash>
#include <QSet>

namespace Orbita {

class Workspace;

/// Looks at real files at once, but for what a test plants. Pictures are those of a workspace.
class MemoryFileLookup final : public FileLookup {
    Q_OBJECT
public:
    /// \a workspace outlives the object.
    explicit MemoryFileLookup(const Workspace &workspace) : m_workspace(workspace) {}

    [[nodiscard]] std::optional<KnownFile> known(const QByteArray &bookmark) const override;
    void look(const QByteArray &bookmark, Answer then = {}) override;
    [[nodiscard]] bool isLooking(const QByteArray &bookmark) const override { return m_unanswered.contains(bookmark); }

    bool answers = true;      ///< false: disks do not answer, not even that they do not
    bool isMounted = true;    ///< false: nothing can be reached
    QList<QByteArray> looked; ///< the bookmarks that were asked about

private:
    [[nodiscard]] KnownFile see(const QByteArray &bookmark, const KnownFile &before) const;

    const Workspace &m_workspace;
    QHash<QByteArray, KnownFile> m_known;
    QSet<QByteArray> m_unanswered;
};

} // namespace Orbita
