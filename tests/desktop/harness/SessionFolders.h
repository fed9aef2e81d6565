#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

namespace Orbita {

/// The home of a session's user, removed with the session.
class SessionFolders {
public:
    /// Throws DesktopFailure when the folders cannot be made.
    SessionFolders();

    [[nodiscard]] QString home() const { return m_folder.filePath(QStringLiteral("home")); }
    [[nodiscard]] QString runtime() const { return m_folder.filePath(QStringLiteral("run")); }
    [[nodiscard]] QString configuration() const { return home() + QStringLiteral("/.config"); }
    [[nodiscard]] QString data() const { return home() + QStringLiteral("/.local/share"); }
    [[nodiscard]] QString cache() const { return home() + QStringLiteral("/.cache"); }
    [[nodiscard]] QString state() const { return home() + QStringLiteral("/.local/state"); }
    [[nodiscard]] QString busAddress() const { return QStringLiteral("unix:path=%1/bus").arg(runtime()); }
    /// Where programs look for the system bus. None is there unless a test starts it.
    [[nodiscard]] QString systemBusAddress() const { return QStringLiteral("unix:path=%1/system").arg(runtime()); }

    /// The folders as programs find them, with the little that has to come from outside: where programs, libraries
    /// and sanitizer options are.
    [[nodiscard]] QProcessEnvironment environment() const;

    /// Writes a file at \a path, below the home if it is not absolute, and returns its absolute path.
    QString write(const QString &path, const QByteArray &content) const;
    /// Makes the application \a id known to the session. \a entry is the content of its .desktop file.
    QString installApplication(const QString &id, const QByteArray &entry) const;

private:
    QTemporaryDir m_folder;
};

/// Ends, when destroyed, every process that was started with a session's folders, by whomever.
class SessionProcesses {
public:
    explicit SessionProcesses(const SessionFolders &folders) : m_folders(folders) {}
    ~SessionProcesses();
    SessionProcesses(const SessionProcesses &) = delete;
    SessionProcesses &operator=(const SessionProcesses &) = delete;

    /// The processes of the session that are alive.
    [[nodiscard]] QList<qint64> all() const;

private:
    const SessionFolders &m_folders;
};

} // namespace Orbita
