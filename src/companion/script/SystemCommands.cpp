#include "companion/script/Coercions.h"
#include "companion/script/Commands.h"
#include "companion/script/Limits.h"
#include "companion/script/LineBreaks.h"
#include "companion/script/TextParts.h"
#include "companion/script/ThrownFailures.h"

#include <cmath>

namespace Orbita {

Value doShellScript(CommandContext &context, Arguments arguments)
{
    const QString command = arguments.subjectText();
    if (command.contains(QChar(QChar::Null)))
        failScript(ScriptFailure::general, QStringLiteral("A shell command has no null characters."));
    return checkedSize(valueOrThrow(context.host.doShellScript(command)));
}

Value delay(CommandContext &context, Arguments arguments)
{
    context.host.delay(arguments.subject() ? qMax(0.0, toReal(*arguments.subject())) : 0.0);
    return MissingValue();
}

Value beep(CommandContext &context, Arguments arguments)
{
    constexpr qint64 most = 1000;
    const qint64 count = arguments.subject() ? toInteger(*arguments.subject()) : 1;
    context.host.beep(int(qBound(qint64(0), count, most)));
    return MissingValue();
}

Value say(CommandContext &context, Arguments arguments)
{
    orThrow(context.host.say(withLineFeeds(arguments.subjectText())));
    return MissingValue();
}

Value theClipboard(CommandContext &context, Arguments)
{
    return checkedSize(valueOrThrow(context.host.clipboard()));
}

Value setTheClipboard(CommandContext &context, Arguments arguments)
{
    orThrow(context.host.setClipboard(withLineFeeds(arguments.subjectText())));
    return MissingValue();
}

Value currentDate(CommandContext &context, Arguments)
{
    return context.host.currentDate();
}

/// From 0 to 1; with bounds that are integers, an integer from the one to the other.
Value randomNumber(CommandContext &context, Arguments arguments)
{
    const Value *from = arguments.find("from");
    const Value *to = arguments.find("to") ? arguments.find("to") : arguments.subject();
    const double random = context.host.randomNumber();
    if (!from && !to)
        return random;
    const Value first = from ? toNumber(*from) : Value(qint64(0));
    const Value last = to ? toNumber(*to) : Value(qint64(1));
    const double low = qMin(toReal(first), toReal(last));
    const double span = std::abs(toReal(last) - toReal(first));
    if (!std::isfinite(span))
        failScript(ScriptFailure::general, QStringLiteral("The bounds of a random number are too far apart."));
    if (first.is<double>() || last.is<double>())
        return low + random * span;
    return toInteger(qMin(low + std::floor(random * (span + 1.0)), low + span));
}

Value logValue(CommandContext &context, Arguments arguments)
{
    constexpr qsizetype longestLine = 64 * 1024;
    const auto *text = arguments.subject()->as<QString>();
    context.host.log(withLineFeeds(text ? *text : describe(*arguments.subject(), longestLine)));
    return MissingValue();
}

Value roundNumber(CommandContext &, Arguments arguments)
{
    const double number = toReal(*arguments.subject());
    const QString way = arguments.text("rounding");
    double rounded = std::nearbyint(number);
    if (way == QLatin1String("up"))
        rounded = std::ceil(number);
    else if (way == QLatin1String("down"))
        rounded = std::floor(number);
    else if (!way.isEmpty())
        failScript(ScriptFailure::general, QStringLiteral("Numbers are rounded up or down, not \"%1\".").arg(way));
    constexpr double largestInteger = 9.2e18;
    return std::abs(rounded) < largestInteger ? Value(qint64(rounded)) : Value(rounded);
}

/// The place of the first character, from 1; 0 where the text does not have it.
Value offsetOf(CommandContext &context, Arguments arguments)
{
    if (!arguments.find("in"))
        failScript(ScriptFailure::general, QStringLiteral("\"in\" and a text were expected behind \"offset of\"."));
    const QString text = arguments.text("in");
    const qsizetype index = text.indexOf(arguments.subjectText(), 0, context.rules.caseSensitivity());
    if (index < 0)
        return qint64(0);
    return qint64(TextParts(text.left(index), ElementKind::Character, context.rules).count() + 1);
}

} // namespace Orbita
