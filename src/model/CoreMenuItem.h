#pragma once

#include "model/ApplicationMenuItem.h"

namespace Orbita {

/// An entry that names a role on the desktop ("Finder", "Safari", ...); the desktop says which application plays it.
class CoreMenuItem final : public ApplicationMenuItem {
public:
    /// Never null: a dictionary without a name makes an entry without one.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    CoreMenuItem(QString name, ItemServices &services);

    [[nodiscard]] QString identity() const override { return QStringLiteral("CoreMenuItem") + m_name; }
    [[nodiscard]] QString name() const override { return m_name; }
    [[nodiscard]] Image image() const override;
    /// A role that no application plays is logged.
    void open() override;
    [[nodiscard]] bool canOpenPath(const QString &path) const override;
    void openPath(const QString &path) override;
    [[nodiscard]] bool representsRunningApplication(const RunningApplication &application) const override;
    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override;

private:
    [[nodiscard]] std::optional<QString> applicationPath() const;

    QString m_name;
};

} // namespace Orbita
