#include "companion/script/Coercions.h"
#include "companion/script/Commands.h"
#include "companion/script/ThrownFailures.h"

#include <QUrl>

namespace Orbita {
namespace {

/// The application that a command is given to, or told to.
QString applicationOf(CommandContext &context, Arguments arguments)
{
    const Value &value = arguments.subject() ? *arguments.subject() : context.target;
    if (const auto *application = value.as<ApplicationName>())
        return application->name;
    failScript(ScriptFailure::notUnderstood,
               QStringLiteral("An application was expected, as in tell application \"Name\" to …"));
}

using Order = ScriptResult<void> (ScriptHost::*)(const QString &application);

Value giveOrder(Order order, CommandContext &context, Arguments arguments)
{
    orThrow((context.host.*order)(applicationOf(context, arguments)));
    return MissingValue();
}

QString toldApplication(CommandContext &context)
{
    const auto *application = context.target.as<ApplicationName>();
    return application ? application->name : QString();
}

} // namespace

Value activate(CommandContext &context, Arguments arguments)
{
    return giveOrder(&ScriptHost::activate, context, arguments);
}

Value launch(CommandContext &context, Arguments arguments)
{
    return giveOrder(&ScriptHost::launch, context, arguments);
}

Value quit(CommandContext &context, Arguments arguments)
{
    return giveOrder(&ScriptHost::quit, context, arguments);
}

Value makeNewDocument(CommandContext &context, Arguments arguments)
{
    return giveOrder(&ScriptHost::makeNewDocument, context, arguments);
}

Value openLocation(CommandContext &context, Arguments arguments)
{
    const QString address = arguments.subjectText().trimmed();
    if (QUrl(address).scheme().isEmpty())
        failScript(ScriptFailure::general,
                   describe(address) + QStringLiteral(" is no address with a scheme, such as \"https:\"."));
    orThrow(context.host.openLocation(toldApplication(context), address));
    return MissingValue();
}

} // namespace Orbita
