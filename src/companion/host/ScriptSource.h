#pragma once

#include "base/Result.h"
#include "companion/host/ScriptDialogs.h"
#include "companion/script/ScriptProblem.h"

class QIODevice;

namespace Orbita {

/// Reads a script, UTF-8 of at most 4 MiB, to the end of \a input. The failure is one sentence.
[[nodiscard]] Result<QString, QString> readSource(QIODevice &input);

/// \a problem of the script \a source as its user is told: with the text of the line.
[[nodiscard]] ProblemReport reportOf(const ScriptProblem &problem, const QString &source);

} // namespace Orbita
