#pragma once

#include "model/ApplicationMenuItem.h"
#include "model/BookmarkedFile.h"

namespace Orbita {

/// An application that the user added, kept as a bookmark of its bundle.
class AppMenuItem final : public ApplicationMenuItem {
public:
    /// Null when there is nothing at \a path.
    [[nodiscard]] static std::shared_ptr<AppMenuItem> fromPath(const QString &path, ItemServices &services);
    /// Null, and logged, without a bookmark. A stale one is renewed.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    AppMenuItem(QString name, BookmarkedFile file, ItemServices &services);

    [[nodiscard]] QString identity() const override;
    [[nodiscard]] QString name() const override { return m_name; }
    [[nodiscard]] QString title() const override { return m_file.title(m_name); }
    [[nodiscard]] bool isAvailable() const override { return m_file.isAvailable(); }
    [[nodiscard]] bool isGone() const override { return m_file.isGone(); }
    [[nodiscard]] Image image() const override;
    void open() override;
    [[nodiscard]] bool canOpenPath(const QString &) const override { return true; }
    void openPath(const QString &path) override;
    [[nodiscard]] bool representsRunningApplication(const RunningApplication &application) const override;
    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override;

private:
    QString m_name;
    BookmarkedFile m_file;
};

} // namespace Orbita
