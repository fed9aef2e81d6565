#include "model/Log.h"

#include <algorithm>

namespace Orbita {

Q_LOGGING_CATEGORY(lcModel, "orbita.model")

QString forLog(const QString &text)
{
    constexpr qsizetype maximumLength = 200;
    QString line = text.left(maximumLength);
    std::ranges::replace_if(
        line, [](QChar c) { return !c.isPrint() && !c.isSurrogate(); }, u' ');
    return text.size() > maximumLength ? line + QStringLiteral("...") : line;
}

} // namespace Orbita
