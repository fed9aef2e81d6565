#pragma once

#include "platform/Image.h"

#include <QCache>
#include <QString>

#include <array>

namespace Orbita {

/// The small pictures of files that other programs keep in the shared thumbnail folder. None is ever made here.
///
/// Their places, and what makes one valid, are those of the freedesktop Thumbnail Managing Standard.
class Thumbnails {
public:
    /// Keeps to the folder \a root, $XDG_CACHE_HOME/thumbnails for instance.
    explicit Thumbnails(QString root);

    /// A picture of the file at \a path, which was changed at \a timeOfChange (nanoseconds since 1970): its thumbnail
    /// as it fits the size that is drawn, and \a typeIcon where there is no valid one. Does not look at the file, and
    /// opens no other; thumbnails are read when they are drawn, on any thread. The same picture again as long as the
    /// file, its thumbnails and \a typeIcon have not changed.
    [[nodiscard]] Image icon(const QString &path, qint64 timeOfChange, const Image &typeIcon);

private:
    /// Times of change in nanoseconds: of the file, then of its thumbnail in each size, 0 for none.
    using Times = std::array<qint64, 5>;
    struct Known {
        Times times;
        Image typeIcon;
        Image image;
    };

    QString m_root;
    QCache<QString, Known> m_known; ///< by path
};

} // namespace Orbita
