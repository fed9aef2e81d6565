#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace Orbita {

/// What the kernel tells of a process in its folder below /proc. All of it is empty for a process that there is not.
namespace ProcessFiles {

/// The values of the line \a key of "status".
[[nodiscard]] QList<QByteArray> statusValues(qint64 process, const QByteArray &key);

/// The name of the executable's file; empty for a process of the kernel's own, and where it may not be known.
[[nodiscard]] QString executableName(qint64 process);

/// What \a variable was when the process was started; empty where it was not set or may not be known.
[[nodiscard]] QByteArray environmentValue(qint64 process, const QByteArray &variable);

/// Whether \a process is \a descendant itself, or one that it descends from.
[[nodiscard]] bool isOrStarted(qint64 process, qint64 descendant);

} // namespace ProcessFiles

} // namespace Orbita
