#include "companion/service/OwnScripts.h"

#include "platform/PropertyList.h"

#include <algorithm>

namespace Orbita {

namespace {

bool holds(const QVariant &value, const QString &script) // as deep as the reader lets lists be
{
    const auto holdsIt = [&](const QVariant &part) { return holds(part, script); };
    if (value.typeId() == QMetaType::QVariantList)
        return std::ranges::any_of(value.toList(), holdsIt);
    if (value.typeId() != QMetaType::QVariantMap)
        return false;
    const QVariantMap item = value.toMap();
    if (item.value(QStringLiteral("class")) == QLatin1String("AppleScriptMenuItem"))
        return item.value(QStringLiteral("script")) == script;
    return std::ranges::any_of(item, holdsIt);
}

} // namespace

bool isOwnScript(const QString &itemsFile, const QString &script)
{
    const auto items = PropertyList::read(itemsFile);
    return items && holds(*items, script);
}

} // namespace Orbita
