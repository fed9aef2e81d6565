#pragma once

#include "platform/Workspace.h"

#include <QCache>
#include <QTimer>

#include <memory>

struct _GAppInfoMonitor;

namespace Orbita {

class CoreApplications;
class FileManagerClient;
class StartupNotifier;
class ThemeIcons;
class Thumbnails;
struct FileLook;

/// The workspace of a freedesktop session, through GIO and the session bus.
///
/// Cheap to make: installed applications and the icon theme are read when they are first asked for. Changes of the
/// installed applications arrive through GLib's main loop, which Qt's event loop drives.
class GioWorkspace final : public Workspace {
    Q_OBJECT
public:
    explicit GioWorkspace(std::unique_ptr<StartupNotifier> notifier, QObject *parent = nullptr);
    ~GioWorkspace() override;

    [[nodiscard]] Result<void, Error> launchApplication(const QString &path) override;
    [[nodiscard]] Result<void, Error> openUrl(const QUrl &url) override;
    [[nodiscard]] Result<void, Error> openFile(const QString &path) override;
    [[nodiscard]] Result<void, Error> openFile(const QString &path, const QString &applicationPath) override;
    [[nodiscard]] Result<void, Error> showInFileManager(const QString &path) override;
    [[nodiscard]] QString displayName(const QString &path) const override;
    [[nodiscard]] Image icon(const QString &path) const override;
    [[nodiscard]] std::optional<QString> defaultApplicationForFile(const QString &path) const override;
    [[nodiscard]] QStringList applicationsForFile(const QString &path) const override;
    [[nodiscard]] std::optional<QString> defaultApplicationForScheme(const QString &scheme) const override;
    [[nodiscard]] std::optional<QString> coreApplication(const QString &name) const override;

    /// The picture of what looks like \a look. Asks only the disks of the icon theme and of the thumbnails.
    [[nodiscard]] Image iconOf(const FileLook &look) const;

protected:
    void connectNotify(const QMetaMethod &signal) override;

private:
    void startMonitoring();
    void reportChange();
    [[nodiscard]] Result<void, Error> openWithDefault(const QString &path);

    std::unique_ptr<StartupNotifier> m_notifier;
    std::unique_ptr<ThemeIcons> m_icons;
    std::unique_ptr<Thumbnails> m_thumbnails;
    std::unique_ptr<CoreApplications> m_coreApplications;
    std::unique_ptr<FileManagerClient> m_fileManager;
    mutable QCache<QString, Image> m_applicationIcons; ///< by path; desktop files need not be parsed for each again
    QTimer m_changeTimer;
    _GAppInfoMonitor *m_monitor = nullptr;
};

} // namespace Orbita
