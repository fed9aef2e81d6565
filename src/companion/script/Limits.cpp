#include "companion/script/Limits.h"

#include "companion/script/ThrownFailures.h"

namespace Orbita {

Value checkedSize(Value value)
{
    if (const auto *text = value.as<QString>())
        checkTextLength(text->size());
    checkItemCount(weight(value) - 1);
    if (nestingDepth(value) > deepestList)
        failScript(ScriptFailure::general, QStringLiteral("Lists are nested more than %1 deep.").arg(deepestList));
    return value;
}

void checkTextLength(qint64 length)
{
    if (length > longestText)
        failScript(ScriptFailure::general, QStringLiteral("A text is longer than 64 MiB."));
}

void checkItemCount(qint64 count)
{
    if (count > mostItems)
        failScript(ScriptFailure::general, QStringLiteral("A list has more than %1 items.").arg(mostItems));
}

} // namespace Orbita
