#pragma once

#include "base/Result.h"
#include "platform/Image.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace Orbita {

/// The desktop's knowledge of applications and files.
///
/// An application is named by the path of its bundle: a ".desktop" file, an AppImage, or an "X.app"-style folder.
class Workspace : public QObject {
    Q_OBJECT
public:
    enum class Error {
        Missing,       ///< There is no such file or application.
        NoApplication, ///< Nothing is installed that opens it.
        Untrusted,     ///< It would start an application that openFile() does not start.
        LaunchFailed,  ///< It is there but could not be started.
        Unsupported,   ///< This desktop has no such service.
    };
    using QObject::QObject;

    /// Starts the application at \a path with a startup-notification id and an activation token.
    /// Success means that it was started; it may still fail by itself afterwards.
    [[nodiscard]] virtual Result<void, Error> launchApplication(const QString &path) = 0;
    /// Opens \a url with the default application of its scheme, a file URL as openFile() does.
    [[nodiscard]] virtual Result<void, Error> openUrl(const QUrl &url) = 0;
    /// Opens the file or folder at \a path with its default application.
    ///
    /// An application is started instead, but Error::Untrusted where that could be somebody else's doing: it must lie
    /// in a folder of installed applications, or its program must be marked executable, and that and the folders above
    /// must belong to the user or the system and not be for others to write.
    [[nodiscard]] virtual Result<void, Error> openFile(const QString &path) = 0;
    [[nodiscard]] virtual Result<void, Error> openFile(const QString &path, const QString &applicationPath) = 0;
    /// Shows the folder at \a path, or the file selected in its folder, in the file manager.
    [[nodiscard]] virtual Result<void, Error> showInFileManager(const QString &path) = 0;

    /// What the user calls the file or application at \a path: Calculator, not org.gnome.Calculator.desktop.
    [[nodiscard]] virtual QString displayName(const QString &path) const = 0;
    /// The icon of the file or application at \a path. Never null: at worst the bundled "Default".
    /// A document may be shown by a picture of what it holds; equal as long as that is the same.
    [[nodiscard]] virtual Image icon(const QString &path) const = 0;
    /// The path of the application that openFile() hands the file or folder at \a path to.
    [[nodiscard]] virtual std::optional<QString> defaultApplicationForFile(const QString &path) const = 0;
    /// The paths of all applications that say that they open what is at \a path, in the desktop's order.
    [[nodiscard]] virtual QStringList applicationsForFile(const QString &path) const = 0;
    /// The path of the application that opens URLs of \a scheme.
    [[nodiscard]] virtual std::optional<QString> defaultApplicationForScheme(const QString &scheme) const = 0;
    /// The path of the application that plays the role of the core entry \a name ("Finder", "Safari", ...);
    /// nothing when no candidate is installed or \a name is no core entry.
    [[nodiscard]] virtual std::optional<QString> coreApplication(const QString &name) const = 0;

Q_SIGNALS:
    /// Applications were installed, removed or changed. Reported once per burst of changes.
    void applicationsChanged();
};

/// Whether \a path names an application: it ends in ".desktop" or ".AppImage", or contains ".app".
[[nodiscard]] bool isApplicationPath(const QString &path);

} // namespace Orbita
