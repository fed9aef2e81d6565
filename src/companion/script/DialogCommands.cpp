#include "companion/script/Coercions.h"
#include "companion/script/Commands.h"
#include "companion/script/LineBreaks.h"
#include "companion/script/ThrownFailures.h"

#include <algorithm>

namespace Orbita {
namespace {

using Icon = DialogRequest::Icon;

constexpr qsizetype mostButtons = 3;

QStringList shownTexts(QStringList texts)
{
    for (QString &text : texts)
        text = withLineFeeds(std::move(text));
    return texts;
}

void setButtons(DialogRequest &request, Arguments arguments, const QStringList &otherwise)
{
    request.buttons = arguments.find("buttons") ? arguments.texts("buttons") : otherwise;
    if (request.buttons.isEmpty() || request.buttons.size() > mostButtons)
        failScript(ScriptFailure::general,
                   QStringLiteral("A dialog has one to three buttons, not %1.").arg(request.buttons.size()));
}

/// The button that the option \a phrase names, or numbers from 1; \a otherwise where it is not given.
QString buttonOf(const DialogRequest &request, Arguments arguments, const char *phrase, const QString &otherwise)
{
    const Value *value = arguments.find(phrase);
    if (!value)
        return otherwise;
    const QString name = arguments.text(phrase);
    const qint64 number = value->isNumber() ? toInteger(*value) : request.buttons.indexOf(name) + 1;
    if (number < 1 || number > request.buttons.size())
        failScript(ScriptFailure::outOfRange, QStringLiteral("The dialog has no button %1.").arg(describe(*value)));
    return request.buttons[number - 1];
}

Icon iconOf(const Value *icon)
{
    struct Row {
        const char *name;
        Icon icon;
    };
    // The numbers are those that "with icon" has always known.
    constexpr Row rows[] = {{"stop", Icon::Stop},     {"note", Icon::Note},       {"caution", Icon::Caution},
                            {"critical", Icon::Stop}, {"warning", Icon::Caution}, {"informational", Icon::Note},
                            {"0", Icon::Stop},        {"1", Icon::Note},          {"2", Icon::Caution}};
    if (!icon)
        return Icon::None;
    const QString name = toText(*icon, {});
    const auto *const row
        = std::find_if(std::begin(rows), std::end(rows), [&](const Row &r) { return name == QLatin1String(r.name); });
    if (row == std::end(rows))
        failScript(ScriptFailure::general, QStringLiteral("No icon is called %1.").arg(describe(*icon)));
    return row->icon;
}

Value askWith(CommandContext &context, const DialogRequest &request)
{
    const DialogReply reply = valueOrThrow(context.host.displayDialog(request));
    ValueRecord record;
    const auto add = [&](const char *name, Value value) {
        record.names.append(QString::fromLatin1(name));
        record.values.insert(record.values.size(), std::move(value));
    };
    add("button returned", reply.buttonReturned);
    if (request.defaultAnswer)
        add("text returned", reply.textReturned);
    if (request.givingUpAfter > 0.0)
        add("gave up", reply.gaveUp);
    return record;
}

} // namespace

Value displayDialog(CommandContext &context, Arguments arguments)
{
    const QString cancel = QStringLiteral("Cancel");
    const QString ok = QStringLiteral("OK");
    DialogRequest request;
    request.text = withLineFeeds(arguments.subjectText());
    request.title = withLineFeeds(arguments.text("with title"));
    setButtons(request, arguments, {cancel, ok});
    request.defaultButton = buttonOf(request, arguments, "default button", arguments.find("buttons") ? QString() : ok);
    request.cancelButton
        = buttonOf(request, arguments, "cancel button", request.buttons.contains(cancel) ? cancel : QString());
    if (arguments.find("default answer"))
        request.defaultAnswer = withLineFeeds(arguments.text("default answer"));
    request.isAnswerHidden = arguments.flag("hidden answer");
    request.givingUpAfter = qMax(0.0, arguments.number("giving up after", 0.0));
    request.icon = iconOf(arguments.find("with icon"));
    return askWith(context, request);
}

Value displayAlert(CommandContext &context, Arguments arguments)
{
    DialogRequest request;
    request.isAlert = true;
    request.text = withLineFeeds(arguments.subjectText());
    request.message = withLineFeeds(arguments.text("message"));
    setButtons(request, arguments, {QStringLiteral("OK")});
    request.defaultButton = buttonOf(request, arguments, "default button", request.buttons.constLast());
    request.cancelButton = buttonOf(request, arguments, "cancel button", {});
    request.givingUpAfter = qMax(0.0, arguments.number("giving up after", 0.0));
    request.icon = iconOf(arguments.find("as"));
    return askWith(context, request);
}

Value displayNotification(CommandContext &context, Arguments arguments)
{
    orThrow(context.host.displayNotification(withLineFeeds(arguments.subjectText()),
                                             withLineFeeds(arguments.text("with title")),
                                             withLineFeeds(arguments.text("subtitle"))));
    // Sounds by name are another system's; the one that every desktop has stands for each of them.
    if (arguments.find("sound name"))
        context.host.beep(1);
    return MissingValue();
}

/// The chosen items as the script wrote them, or false.
Value chooseFromList(CommandContext &context, Arguments arguments)
{
    const ValueList items = toList(*arguments.subject());
    ListRequest request;
    request.items = shownTexts(toTexts(items, context.rules));
    request.title = withLineFeeds(arguments.text("with title"));
    request.prompt = withLineFeeds(arguments.text("with prompt"));
    request.defaultItems = shownTexts(arguments.texts("default items"));
    request.okButtonName = arguments.text("ok button name");
    request.cancelButtonName = arguments.text("cancel button name");
    request.allowsMultiple = arguments.flag("multiple selections allowed");
    request.allowsEmpty = arguments.flag("empty selection allowed");
    if (request.items.isEmpty())
        failScript(ScriptFailure::general, QStringLiteral("The list to choose from is empty."));
    const auto chosen = valueOrThrow(context.host.chooseFromList(request));
    if (!chosen)
        return false;
    std::vector<Value> values;
    for (const QString &text : *chosen) {
        const qsizetype index = request.items.indexOf(text);
        values.push_back(index < 0 ? Value(text) : items.at(index));
    }
    return ValueList(std::move(values));
}

} // namespace Orbita
