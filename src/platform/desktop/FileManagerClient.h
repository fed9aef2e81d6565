#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace Orbita {

/// Asks the running desktop's file manager over D-Bus (interface org.freedesktop.FileManager1). Never waits for it.
class FileManagerClient : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Shows the folder at \a path, or the file selected in its folder. \a token lets the window come to the front.
    /// False when there is no session bus; otherwise refused() follows when nobody offers the service.
    [[nodiscard]] bool show(const QString &path, const QByteArray &token);

Q_SIGNALS:
    /// The request for \a path was refused: nothing was shown. A file manager that is only slow does not count.
    void refused(const QString &path);
};

} // namespace Orbita
