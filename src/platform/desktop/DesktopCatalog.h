#pragma once

#include <QHash>
#include <QString>

#include <vector>

namespace Orbita {

/// What a desktop file says about its application and the windows of that.
struct DesktopEntry {
    QString id;             ///< without ".desktop"
    QString path;           ///< of the desktop file
    QString name;           ///< in the user's language
    QString startupWmClass; ///< may be empty
    QString program;        ///< the file name of what Exec starts; may be empty
    bool isHidden = false;  ///< not for menus
    QString icon;           ///< a theme's name for it or a path; may be empty

    friend bool operator==(const DesktopEntry &, const DesktopEntry &) = default;
};

/// What a window and its process tell of the application that they belong to. Each may be empty.
struct WindowIdentity {
    QString gtkApplicationId;
    QString windowClass;
    QString windowInstance;
    QString launchedDesktopFile; ///< path of the desktop file that the process itself was launched from
    QString executablePath;

    friend bool operator==(const WindowIdentity &, const WindowIdentity &) = default;
};

/// The installed applications, arranged for finding the one that a window belongs to. A value.
class DesktopCatalog {
public:
    DesktopCatalog() = default;
    explicit DesktopCatalog(std::vector<DesktopEntry> entries);

    /// The application of a window, or null. Where several entries fit equally, one that is shown in menus wins over
    /// a hidden one, then the first in the order of their ids. Lives as long as this catalog.
    ///
    /// Asked in this order: the id that the program names itself; StartupWMClass, then the id, then the last part of
    /// a reversed domain name, each against the window's class and instance; the file it was launched from; and the
    /// program it runs, unless that is an interpreter, which may run anything.
    [[nodiscard]] const DesktopEntry *entryFor(const WindowIdentity &window) const;

    [[nodiscard]] const std::vector<DesktopEntry> &entries() const { return m_entries; }

private:
    using Lookup = QHash<QString, std::size_t>;
    [[nodiscard]] const DesktopEntry *find(const Lookup &lookup, const QString &key) const;

    std::vector<DesktopEntry> m_entries;
    Lookup m_byId; ///< keys of all are in lower case, but for the paths
    Lookup m_byWindowClass;
    Lookup m_byLastPart;
    Lookup m_byPath;
    Lookup m_byProgram;
};

} // namespace Orbita
