#pragma once

#include <QString>
#include <QVariantMap>

namespace Orbita {

/// The string under \a key of a stored dictionary; empty where something else is stored.
[[nodiscard]] inline QString storedText(const QVariantMap &dictionary, const char *key)
{
    const QVariant value = dictionary.value(QLatin1String(key));
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

} // namespace Orbita
