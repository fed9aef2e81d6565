#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

namespace Orbita {

/// Folders of this test program's own in place of the user's, set up by its main function.
namespace PrivateSession {

/// The path of \a name below the session's home folder.
[[nodiscard]] QString path(const QString &name);
/// Writes \a content to the file called \a name below the home folder and returns its path.
QString write(const QString &name, const QByteArray &content);
/// Installs \a content as \a id for the user and returns its path.
QString install(const QString &id, const QByteArray &content);
/// Makes \a id an application for \a type, and the default one.
void associate(const QString &type, const QString &id);
/// Takes away all applications, defaults and what else tests wrote.
void clear();

} // namespace PrivateSession

/// Runs the event loop until \a condition holds. False when it still does not after half a minute.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition);

/// A program that writes down how it was started, once.
class Probe {
public:
    struct Start {
        QStringList arguments;
        QMap<QString, QString> environment;
        qint64 session = 0; ///< the process that leads its session
        qint64 process = 0;
        QStringList openFiles; ///< descriptor numbers
    };

    /// \a name may hold anything that a file name may.
    explicit Probe(const QString &name);

    [[nodiscard]] QString program() const { return m_program; }
    /// A ".desktop" file for it: \a exec has "%p" where the program's path stands; \a more are further lines.
    [[nodiscard]] QByteArray desktopFile(const QByteArray &exec = "%p %U", const QByteArray &more = {}) const;
    /// Waits until it was started.
    [[nodiscard]] std::optional<Start> waitForStart() const;
    [[nodiscard]] bool wasStarted() const;

private:
    QString m_program;
    QString m_report;
};

} // namespace Orbita
