#include "companion/script/Properties.h"

#include "companion/script/Coercions.h"
#include "companion/script/Dates.h"
#include "companion/script/Limits.h"
#include "companion/script/TextParts.h"
#include "companion/script/ThrownFailures.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <optional>

namespace Orbita {
namespace {

constexpr int noSuchProperty = -1728;

/// Nothing where the value has no such property.
using Property = std::optional<Value> (*)(const Value &whole, const TextRules &rules);

std::optional<Value> lengthOf(const Value &whole, const TextRules &rules)
{
    if (whole.is<ValueList>() || whole.is<ValueRecord>())
        return qint64(toList(whole).size());
    if (const auto *text = whole.as<QString>())
        return qint64(TextParts(*text, ElementKind::Character, rules).count());
    return {};
}

std::optional<Value> reversed(const Value &whole, const TextRules &)
{
    const auto *list = whole.as<ValueList>();
    if (!list)
        return {};
    return ValueList(std::vector<Value>(list->items().rbegin(), list->items().rend()));
}

std::optional<Value> restOf(const Value &whole, const TextRules &)
{
    const auto *list = whole.as<ValueList>();
    if (!list || list->size() == 0)
        return {};
    return ValueList(std::vector<Value>(list->items().begin() + 1, list->items().end()));
}

std::optional<Value> contentsOf(const Value &whole, const TextRules &)
{
    return whole;
}

std::optional<Value> classOf(const Value &whole, const TextRules &)
{
    return Word{className(whole)};
}

std::optional<Value> textOf(const Value &whole, const TextRules &rules)
{
    return toText(whole, rules);
}

std::optional<Value> quotedForm(const Value &whole, const TextRules &rules)
{
    return shellQuoted(toText(whole, rules));
}

std::optional<Value> pathOf(const Value &whole, const TextRules &)
{
    if (const auto *file = whole.as<FilePath>())
        return file->path;
    if (whole.is<QString>())
        return whole;
    return {};
}

std::optional<Value> nameOf(const Value &whole, const TextRules &)
{
    if (const auto *application = whole.as<ApplicationName>())
        return application->name;
    const auto *file = whole.as<FilePath>();
    if (!file)
        return {};
    const bool isFolder = file->path.size() > 1 && file->path.endsWith(QLatin1Char('/'));
    return QFileInfo(isFolder ? file->path.chopped(1) : file->path).fileName();
}

const QHash<QString, Property> &properties()
{
    static const QHash<QString, Property> table = {
        {QStringLiteral("length"), lengthOf},
        {QStringLiteral("count"), lengthOf},
        {QStringLiteral("number"), lengthOf},
        {QStringLiteral("reverse"), reversed},
        {QStringLiteral("rest"), restOf},
        {QStringLiteral("contents"), contentsOf},
        {QStringLiteral("class"), classOf},
        {QStringLiteral("text"), textOf},
        {QStringLiteral("quoted form"), quotedForm},
        {QStringLiteral("posix path"), pathOf},
        {QStringLiteral("name"), nameOf},
    };
    return table;
}

} // namespace

Value propertyOf(const Value &whole, const QString &name, const TextRules &rules)
{
    const auto *record = whole.as<ValueRecord>();
    if (const Value *field = record ? record->find(name) : nullptr)
        return *field;
    std::optional<Value> value;
    if (const Property property = properties().value(name, nullptr))
        value = property(whole, rules);
    else if (const auto *date = whole.as<QDateTime>())
        value = dateProperty(*date, name);
    if (!value)
        failScript(noSuchProperty, QStringLiteral("%1 has no \"%2\".").arg(describe(whole), name.left(40)));
    return checkedSize(std::move(*value));
}

QString shellQuoted(const QString &text)
{
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QStringLiteral("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

} // namespace Orbita
