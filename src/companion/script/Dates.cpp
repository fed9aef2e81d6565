#include "companion/script/Dates.h"

#include "companion/script/ThrownFailures.h"

#include <QLocale>

#include <cmath>

namespace Orbita {
namespace {

constexpr const char *months[] = {"january", "february", "march",     "april",   "may",      "june",
                                  "july",    "august",   "september", "october", "november", "december"};
constexpr const char *weekdays[] = {"sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};

Value word(const char *name)
{
    return Word{QString::fromLatin1(name)};
}

} // namespace

QString dateText(const QDate &date)
{
    return QLocale().toString(date, QLocale::LongFormat);
}

QString timeText(const QTime &time)
{
    return time.toString(QStringLiteral("HH:mm:ss"));
}

int calendarNumber(const QString &name)
{
    for (size_t i = 0; i < std::size(months); ++i) {
        if (name == QLatin1String(months[i]) || (i < std::size(weekdays) && name == QLatin1String(weekdays[i])))
            return int(i) + 1;
    }
    return 0;
}

std::optional<Value> dateProperty(const QDateTime &moment, const QString &name)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    if (name == QLatin1String("year"))
        return qint64(date.year());
    if (name == QLatin1String("month"))
        return word(months[date.month() - 1]);
    if (name == QLatin1String("day"))
        return qint64(date.day());
    if (name == QLatin1String("weekday"))
        return word(weekdays[date.dayOfWeek() % 7]);
    if (name == QLatin1String("hours"))
        return qint64(time.hour());
    if (name == QLatin1String("minutes"))
        return qint64(time.minute());
    if (name == QLatin1String("seconds"))
        return qint64(time.second());
    if (name == QLatin1String("time"))
        return qint64(QTime(0, 0).secsTo(time));
    if (name == QLatin1String("date string"))
        return dateText(date);
    if (name == QLatin1String("time string"))
        return timeText(time);
    return {};
}

QDateTime movedBy(const QDateTime &date, double seconds)
{
    constexpr double tenThousandYears = 3.2e11;
    const bool isSane = std::abs(seconds) < tenThousandYears;
    const QDateTime moved = isSane ? date.addMSecs(std::llround(seconds * 1000.0)) : QDateTime();
    if (!moved.isValid() || moved.date().year() < 1 || moved.date().year() > 9999)
        failScript(ScriptFailure::general, QStringLiteral("The date is not between the years 1 and 9999."));
    return moved;
}

} // namespace Orbita
