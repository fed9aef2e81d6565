#pragma once

#include "model/BookmarkedPath.h"
#include "model/MenuItem.h"

namespace Orbita {

/// A file or folder that the user added, kept as a bookmark.
class FileMenuItem final : public MenuItem {
public:
    /// Null when there is nothing at \a path.
    [[nodiscard]] static std::shared_ptr<FileMenuItem> fromPath(const QString &path, ItemServices &services);
    /// Null, and logged, when the bookmark is missing or stands for nothing any more. A stale one is renewed.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    FileMenuItem(QString name, BookmarkedPath file, ItemServices &services);

    [[nodiscard]] const QString &path() const { return m_file.path; }
    /// Whether it is a folder, and still there.
    [[nodiscard]] bool isDirectory() const;

    [[nodiscard]] QString identity() const override { return QStringLiteral("FileMenuItem") + m_file.path; }
    [[nodiscard]] QString name() const override { return m_name; }
    [[nodiscard]] Image image() const override;
    /// Shows what a folder holds in the file manager; opens a file with its default application. Nothing happens when
    /// it is gone.
    void open() override;
    /// The default application first; the others follow by the names that the user knows, without a default one in the
    /// desktop's order.
    [[nodiscard]] QStringList openWithAppPaths() const override;
    void openWithAppPath(const QString &applicationPath) override;
    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override;

private:
    QString m_name;
    BookmarkedPath m_file;
    ItemServices &m_services;
};

} // namespace Orbita
