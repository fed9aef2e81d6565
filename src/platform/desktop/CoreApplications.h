#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace Orbita {

/// Which installed application plays the role of a core entry ("Finder" the file manager, "Safari" the browser, ...).
///
/// A table lists candidates per role, best first:
///  - "mime:TYPE" and "scheme:NAME" are the default application of that content type or URL scheme,
///  - "NAME.desktop" is a desktop file id,
///  - ":/..." is a bundled ".desktop" file that starts what no installed one does.
class CoreApplications {
public:
    using Table = QHash<QString, QStringList>;
    /// The path of the application that a candidate means on this desktop; nothing when there is none.
    using Lookup = std::function<std::optional<QString>(const QString &candidate)>;

    CoreApplications(Table table, Lookup lookup) : m_table(std::move(table)), m_lookup(std::move(lookup)) {}

    /// The path of the application in the role \a name. What was found is remembered until clear().
    [[nodiscard]] std::optional<QString> find(const QString &name) const;
    /// Forgets what was found: applications came or went.
    void clear() { m_found.clear(); }

    /// The bundled table.
    [[nodiscard]] static Table bundledTable();
    /// Looks \a candidate up through GIO. Passes over what another desktop is meant to show, and Orbita itself.
    [[nodiscard]] static std::optional<QString> lookUp(const QString &candidate);

private:
    Table m_table;
    Lookup m_lookup;
    mutable QHash<QString, std::optional<QString>> m_found;
};

} // namespace Orbita
