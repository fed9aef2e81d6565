#pragma once

#include "desktop/harness/SessionFolders.h"
#include "desktop/harness/Wait.h"

#include <QMap>
#include <QStringList>

namespace Orbita {

/// Folders of this test program's own in place of the user's, which its main function sets up.
namespace PrivateSession {

[[nodiscard]] const SessionFolders &folders();
[[nodiscard]] QString path(const QByteArray &name);
/// Writes \a content to the file called \a name below the home folder and returns its path.
QString write(const QByteArray &name, const QByteArray &content);
QString install(const QByteArray &id, const QByteArray &content);
/// Makes the application \a id one for \a type, and the default one.
void associate(const QByteArray &type, const QByteArray &id);
/// Takes away all applications, defaults and what else tests wrote.
void clear();

} // namespace PrivateSession

/// A program that writes down how it was started, once.
class Probe {
public:
    /// What it wrote down: each "argument", its "process" and the "session" that it is in, the numbers of its open
    /// "file"s, and the variables of its environment by their names.
    using Start = QMap<QByteArray, QStringList>;

    /// \a name may hold anything that a file name may.
    explicit Probe(const QByteArray &name);

    [[nodiscard]] QString program() const { return m_program; }
    /// A ".desktop" file for it: \a exec has "%p" where the program's path stands; \a more are further lines.
    [[nodiscard]] QByteArray desktopFile(const QByteArray &exec = "%p %U", const QByteArray &more = {}) const;
    /// Waits until it was started; throws DesktopFailure if it never is.
    [[nodiscard]] Start waitForStart() const;
    [[nodiscard]] bool wasStarted() const;

private:
    QString m_program;
    QString m_report;
};

} // namespace Orbita
