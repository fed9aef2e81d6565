#pragma once

#include "platform/desktop/DesktopCatalog.h"

#include <QObject>
#include <QThreadPool>

#include <functional>

namespace Orbita {

/// Reads the desktop files of all installed applications that can be run, those not for menus too. Any thread.
[[nodiscard]] DesktopCatalog readInstalledApplications();

/// Keeps a catalog of the installed applications, read on a thread of its own because that takes a while.
class ApplicationIndex : public QObject {
    Q_OBJECT
public:
    using Reader = std::function<DesktopCatalog()>;

    /// Reads nothing yet. \a read is called on another thread, never twice at once.
    explicit ApplicationIndex(Reader read = readInstalledApplications, QObject *parent = nullptr);
    /// Waits for a reading that is under way.
    ~ApplicationIndex() override;

    /// Starts to read the catalog anew and returns at once. Call it when applications came, went or changed.
    void reload();
    /// Whether the catalog was read once.
    [[nodiscard]] bool isLoaded() const { return m_loaded; }
    /// Empty before.
    [[nodiscard]] const DesktopCatalog &catalog() const { return m_catalog; }

Q_SIGNALS:
    /// The catalog was read for the first time, or is another than before. What entries it lent are gone.
    void changed();

private:
    void take(DesktopCatalog catalog);

    Reader m_read;
    DesktopCatalog m_catalog;
    bool m_loaded = false;
    QThreadPool m_pool; ///< one thread, so that readings end in the order in which they began
};

} // namespace Orbita
