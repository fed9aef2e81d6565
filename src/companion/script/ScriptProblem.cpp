#include "companion/script/ScriptProblem.h"

namespace Orbita {

QString ScriptProblem::sentence() const
{
    return QStringLiteral("Line %1: ").arg(line) + message;
}

} // namespace Orbita
