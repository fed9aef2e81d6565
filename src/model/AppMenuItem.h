#pragma once

#include "model/ApplicationMenuItem.h"
#include "model/BookmarkedPath.h"

namespace Orbita {

/// An application that the user added, kept as a bookmark of its bundle.
class AppMenuItem final : public ApplicationMenuItem {
public:
    /// Null when there is nothing at \a path.
    [[nodiscard]] static std::shared_ptr<AppMenuItem> fromPath(const QString &path, ItemServices &services);
    /// Null, and logged, when the bookmark is missing or stands for nothing any more. A stale one is renewed.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    AppMenuItem(QString name, BookmarkedPath file, ItemServices &services);

    [[nodiscard]] QString identity() const override;
    [[nodiscard]] QString name() const override { return m_name; }
    [[nodiscard]] Image image() const override;
    void open() override { activateOrLaunch(m_file.path); }
    [[nodiscard]] bool canOpenPath(const QString &) const override { return true; }
    void openPath(const QString &path) override { openFile(path, m_file.path); }
    [[nodiscard]] bool representsRunningApplication(const RunningApplication &application) const override;
    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override;

private:
    QString m_name;
    BookmarkedPath m_file;
};

} // namespace Orbita
