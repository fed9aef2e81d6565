#pragma once

#include "model/BookmarkedFile.h"
#include "model/MenuItem.h"

namespace Orbita {

/// A file or folder that the user added, kept as a bookmark.
class FileMenuItem final : public MenuItem {
public:
    /// Null when there is nothing at \a path.
    [[nodiscard]] static std::shared_ptr<FileMenuItem> fromPath(const QString &path, ItemServices &services);
    /// Null, and logged, without a bookmark. A stale one is renewed.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    FileMenuItem(QString name, BookmarkedFile file, ItemServices &services);

    [[nodiscard]] QString path() const { return m_file.path(); }
    /// Whether it is a folder, and was there when it was last looked at.
    [[nodiscard]] bool isDirectory() const { return m_file.isDirectory(); }

    [[nodiscard]] QString identity() const override { return QStringLiteral("FileMenuItem") + m_file.path(); }
    [[nodiscard]] QString name() const override { return m_name; }
    [[nodiscard]] QString title() const override { return m_file.title(m_name); }
    [[nodiscard]] bool isAvailable() const override { return m_file.isAvailable(); }
    [[nodiscard]] bool isGone() const override { return m_file.isGone(); }
    [[nodiscard]] Image image() const override;
    /// Shows what a folder holds in the file manager; opens a file with its default application. The user is told where
    /// it cannot be reached.
    void open() override;
    /// The default application first; the others follow by the names that the user knows, without a default one in the
    /// desktop's order. None while the file cannot be reached.
    [[nodiscard]] QStringList openWithAppPaths() const override;
    void openWithAppPath(const QString &applicationPath) override;
    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override;

private:
    QString m_name;
    BookmarkedFile m_file;
    ItemServices &m_services;
};

} // namespace Orbita
