#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Orbita {

/// What became of a program that was run to its end.
struct ChildOutcome {
    enum class End { Exited, NotStarted, TooMuchOutput };

    End end = End::Exited;
    int status = 0; ///< as a shell counts it: 128 and the signal for a killed one
    QByteArray output;
    QByteArray errors;
};

/// The bytes of standard output, or of standard error, beyond which a child is ended.
inline constexpr qsizetype maximumChildOutput = 16 * 1024 * 1024;

/// Runs \a program with \a input on its standard input and returns when it has ended. The event loop runs meanwhile.
///
/// The child leads a process group of its own, which is killed with this program (see endChildrenWithProgram()) and
/// when it writes too much; what it left in the background when it ended by itself goes on, also after the end of this
/// program, and may go on writing. At most one child at a time.
[[nodiscard]] ChildOutcome runChild(const QString &program, const QStringList &arguments, const QByteArray &input = {});

/// From now on SIGTERM, SIGINT and SIGHUP end this program at once, whatever it is doing, with the group of a child
/// that runs; so does exit().
void endChildrenWithProgram();

} // namespace Orbita
