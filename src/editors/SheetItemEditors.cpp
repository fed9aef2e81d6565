#include "editors/SheetItemEditors.h"

namespace Orbita {

void SheetItemEditors::editScript(const QString &script, const QString &, const Image &, FinishHandler handler)
{
    handler(script, std::nullopt);
}

void SheetItemEditors::editLink(const QString &urlString, const Image &, FinishHandler handler)
{
    handler(urlString, std::nullopt);
}

} // namespace Orbita
