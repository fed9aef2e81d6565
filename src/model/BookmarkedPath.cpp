#include "model/BookmarkedPath.h"

#include "model/Log.h"
#include "platform/Bookmark.h"

namespace Orbita {

namespace {

const char *describe(Bookmark::Error error)
{
    return error == Bookmark::Error::Missing ? "what it stood for is gone" : "it is damaged";
}

} // namespace

std::optional<BookmarkedPath> BookmarkedPath::fromPath(const QString &path)
{
    auto bookmark = Bookmark::create(path);
    if (!bookmark) {
        qCWarning(lcModel, "No bookmark of %s could be made: there is no such file.", qUtf8Printable(path));
        return std::nullopt;
    }
    return BookmarkedPath{std::move(bookmark).value(), path};
}

std::optional<BookmarkedPath> BookmarkedPath::fromDictionary(const QVariantMap &dictionary)
{
    const QVariant stored = dictionary.value(QStringLiteral("bookmarkData"));
    if (stored.typeId() != QMetaType::QByteArray) {
        qCWarning(lcModel, "%s: No bookmark data available",
                  qUtf8Printable(dictionary.value(QStringLiteral("class")).toString()));
        return std::nullopt;
    }
    const QByteArray bookmarkData = stored.toByteArray();
    const auto resolved = Bookmark::resolve(bookmarkData);
    if (!resolved) {
        qCWarning(lcModel, "The bookmark of \"%s\" does not resolve: %s.",
                  qUtf8Printable(dictionary.value(QStringLiteral("name")).toString()), describe(resolved.error()));
        return std::nullopt;
    }
    if (resolved->isStale) {
        if (auto fresh = fromPath(resolved->path))
            return fresh;
    }
    return BookmarkedPath{bookmarkData, resolved->path};
}

QVariantMap BookmarkedPath::dictionary(const QString &className, const QString &name) const
{
    return {{QStringLiteral("class"), className},
            {QStringLiteral("name"), name},
            {QStringLiteral("bookmarkData"), bookmarkData}};
}

} // namespace Orbita
