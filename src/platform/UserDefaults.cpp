#include "platform/UserDefaults.h"

#include <QMetaType>

#include <cmath>
#include <limits>

namespace Orbita {

namespace {

qint64 truncated(double number)
{
    constexpr double limit = 9.2e18; // safely inside the range of qint64
    return std::isfinite(number) && std::abs(number) < limit ? qint64(number) : 0;
}

} // namespace

qint64 UserDefaults::integer(const QString &key) const
{
    const QVariant stored = value(key);
    switch (stored.typeId()) {
    case QMetaType::Bool:
        return stored.toBool() ? 1 : 0;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return stored.toLongLong();
    case QMetaType::ULongLong: {
        const quint64 number = stored.toULongLong();
        return number <= quint64(std::numeric_limits<qint64>::max()) ? qint64(number) : 0;
    }
    case QMetaType::Double:
        return truncated(stored.toDouble());
    case QMetaType::QString:
        return stored.toString().trimmed().toLongLong();
    default:
        return 0;
    }
}

bool UserDefaults::boolean(const QString &key) const
{
    const QVariant stored = value(key);
    if (stored.typeId() != QMetaType::QString)
        return integer(key) != 0;
    const QString text = stored.toString();
    return text.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0
        || text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || integer(key) != 0;
}

void UserDefaults::announceExternalChange(const QStringList &keys)
{
    Q_EMIT changedExternally(keys);
    for (const QString &key : keys)
        Q_EMIT changed(key);
}

} // namespace Orbita
