#include "companion/script/Coercions.h"

#include "companion/script/Dates.h"
#include "companion/script/Limits.h"
#include "companion/script/ThrownFailures.h"

#include <QLocale>

#include <cmath>

namespace Orbita {
namespace {

[[noreturn]] void refuse(const Value &value, const QString &what)
{
    failScript(ScriptFailure::cannotConvert, describe(value) + QStringLiteral(" cannot be made into %1.").arg(what));
}

QString realText(double real)
{
    constexpr int digits = 15;
    QString text = QString::number(real, 'g', digits).toUpper();
    if (!text.contains(QLatin1Char('.'))) {
        const qsizetype exponent = text.indexOf(QLatin1Char('E'));
        text.insert(exponent < 0 ? text.size() : exponent, QStringLiteral(".0"));
    }
    return text;
}

QString joined(const ValueList &list, const TextRules &rules)
{
    QString text;
    bool isFirst = true;
    for (const Value &item : list.items()) {
        if (!isFirst)
            text += rules.delimiters.value(0);
        isFirst = false;
        text += toText(item, rules);
        checkTextLength(text.size());
    }
    return text;
}

Value numberOfText(const QString &text)
{
    const QString trimmed = text.trimmed();
    bool isOk = false;
    if (const qint64 integer = trimmed.toLongLong(&isOk); isOk)
        return integer;
    const double real = QLocale::c().toDouble(trimmed, &isOk);
    if (!isOk || !std::isfinite(real))
        refuse(text, QStringLiteral("a number"));
    return real;
}

void describeInto(QString &out, const Value &value, qsizetype longest)
{
    if (out.size() > longest)
        return;
    if (const auto *text = value.as<QString>()) {
        out += QLatin1Char('"') + text->left(longest) + QLatin1Char('"');
        return;
    }
    const auto *record = value.as<ValueRecord>();
    const auto *list = record ? &record->values : value.as<ValueList>();
    if (!list) {
        out += value.is<MissingValue>() ? QStringLiteral("missing value") : toText(value, {});
        return;
    }
    out += QLatin1Char('{');
    for (qsizetype i = 0; i < list->size() && out.size() <= longest; ++i) {
        out += i > 0 ? QStringLiteral(", ") : QString();
        out += record ? record->names[i] + QLatin1Char(':') : QString();
        describeInto(out, list->at(i), longest);
    }
    out += QLatin1Char('}');
}

} // namespace

QString toText(const Value &value, const TextRules &rules)
{
    if (const auto *text = value.as<QString>())
        return *text;
    if (const auto *truth = value.as<bool>())
        return *truth ? QStringLiteral("true") : QStringLiteral("false");
    if (const auto *integer = value.as<qint64>())
        return QString::number(*integer);
    if (const auto *real = value.as<double>())
        return realText(*real);
    if (const auto *date = value.as<QDateTime>())
        return dateText(date->date()) + QLatin1Char(' ') + timeText(date->time());
    if (const auto *word = value.as<Word>())
        return word->name;
    if (const auto *file = value.as<FilePath>())
        return file->path;
    if (const auto *application = value.as<ApplicationName>())
        return application->name;
    if (const auto *list = value.as<ValueList>())
        return joined(*list, rules);
    if (value.is<MissingValue>())
        return QStringLiteral("missing value");
    refuse(value, QStringLiteral("text"));
}

Value toNumber(const Value &value)
{
    if (value.isNumber())
        return value;
    if (const auto *truth = value.as<bool>())
        return qint64(*truth);
    if (const auto *text = value.as<QString>())
        return numberOfText(*text);
    const auto *word = value.as<Word>();
    if (const int number = word ? calendarNumber(word->name) : 0)
        return qint64(number);
    refuse(value, QStringLiteral("a number"));
}

double toReal(const Value &value)
{
    const Value number = toNumber(value);
    const auto *real = number.as<double>();
    return real ? *real : double(*number.as<qint64>());
}

qint64 toInteger(const Value &value)
{
    const Value number = toNumber(value);
    if (const auto *integer = number.as<qint64>())
        return *integer;
    constexpr double tooLarge = 9223372036854775808.0; // 2^63
    const double rounded = std::round(*number.as<double>());
    if (!(rounded >= -tooLarge && rounded < tooLarge))
        refuse(value, QStringLiteral("an integer"));
    return qint64(rounded);
}

bool toBoolean(const Value &value)
{
    if (const auto *truth = value.as<bool>())
        return *truth;
    if (value.isNumber() && (toReal(value) == 0.0 || toReal(value) == 1.0))
        return toReal(value) == 1.0;
    if (const auto *text = value.as<QString>()) {
        if (text->compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
            return true;
        if (text->compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
            return false;
    }
    refuse(value, QStringLiteral("true or false"));
}

ValueList toList(const Value &value)
{
    if (const auto *list = value.as<ValueList>())
        return *list;
    if (const auto *record = value.as<ValueRecord>())
        return record->values;
    return ValueList({value});
}

QStringList toTexts(const Value &value, const TextRules &rules)
{
    QStringList texts;
    const ValueList list = toList(value);
    for (const Value &item : list.items())
        texts.append(toText(item, rules));
    return texts;
}

Value coerce(const Value &value, const Value &className, const TextRules &rules)
{
    const auto *word = className.as<Word>();
    const QString name = word ? word->name : describe(className);
    if (name == Orbita::className(value))
        return value;
    if (name == QLatin1String("text"))
        return toText(value, rules);
    if (name == QLatin1String("integer"))
        return toInteger(value);
    if (name == QLatin1String("real"))
        return toReal(value);
    if (name == QLatin1String("number"))
        return toNumber(value);
    if (name == QLatin1String("list"))
        return toList(value);
    if (name == QLatin1String("boolean"))
        return toBoolean(value);
    if (name == QLatin1String("file") && value.is<QString>())
        return FilePath{*value.as<QString>()};
    refuse(value, QLatin1String("a ") + name);
}

QString className(const Value &value)
{
    static const char *const names[] = {"missing value", "boolean", "integer",     "real", "text",  "date",
                                        "constant",      "file",    "application", "list", "record"};
    static_assert(std::size(names) == std::variant_size_v<Value::variant>);
    return QString::fromLatin1(names[value.index()]);
}

QString describe(const Value &value, qsizetype longest)
{
    QString text;
    describeInto(text, value, longest);
    return text.size() > longest + 2 ? text.left(longest) + QChar(0x2026) : text;
}

} // namespace Orbita
