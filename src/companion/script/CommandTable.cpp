#include "companion/script/CommandSyntax.h"
#include "companion/script/Commands.h"

namespace Orbita {
namespace {

using Subject = CommandSyntax::Subject;
constexpr auto flag = CommandOption::Kind::Flag;
constexpr auto name = CommandOption::Kind::Name;

const CommandSyntax table[] = {
    {"display dialog",
     Subject::Required,
     {{"default answer"},
      {"hidden answer", flag},
      {"buttons"},
      {"default button"},
      {"cancel button"},
      {"with title"},
      {"with icon", name},
      {"giving up after"}},
     displayDialog},
    {"display alert",
     Subject::Required,
     {{"message"}, {"as", name}, {"buttons"}, {"default button"}, {"cancel button"}, {"giving up after"}},
     displayAlert},
    {"display notification", Subject::Required, {{"with title"}, {"subtitle"}, {"sound name"}}, displayNotification},
    {"choose from list",
     Subject::Required,
     {{"with title"},
      {"with prompt"},
      {"default items"},
      {"ok button name"},
      {"cancel button name"},
      {"multiple selections allowed", flag},
      {"empty selection allowed", flag}},
     chooseFromList},
    {"choose file",
     Subject::None,
     {{"with prompt"}, {"of type"}, {"default location"}, {"multiple selections allowed", flag}},
     chooseFile},
    {"choose folder",
     Subject::None,
     {{"with prompt"}, {"default location"}, {"multiple selections allowed", flag}},
     chooseFolder},

    {"activate", Subject::Optional, {}, activate},
    {"launch", Subject::Optional, {}, launch},
    {"quit", Subject::Optional, {}, quit},
    {"make new document", Subject::None, {}, makeNewDocument},
    {"make new document at end of documents", Subject::None, {}, makeNewDocument},
    {"make new window", Subject::None, {}, makeNewDocument},
    {"make new window at end of windows", Subject::None, {}, makeNewDocument},
    {"make new finder window", Subject::None, {}, makeNewDocument},
    {"open", Subject::Required, {}, openFiles},
    {"open location", Subject::Required, {}, openLocation},
    {"reveal", Subject::Required, {}, reveal},

    {"do shell script", Subject::Required, {}, doShellScript},
    {"delay", Subject::Optional, {}, delay},
    {"beep", Subject::Optional, {}, beep},
    {"say", Subject::Required, {}, say},
    {"the clipboard", Subject::None, {}, theClipboard},
    {"set the clipboard to", Subject::Required, {}, setTheClipboard},
    {"current date", Subject::None, {}, currentDate},
    {"random number", Subject::Optional, {{"from"}, {"to"}}, randomNumber},
    {"path to", Subject::Name, {}, pathTo},
    {"log", Subject::Required, {}, logValue},
    {"round", Subject::Required, {{"rounding", name}}, roundNumber},
    {"offset of", Subject::Required, {{"in"}}, offsetOf},
};

} // namespace

const PhraseTable<const CommandSyntax *> &commands()
{
    static const auto phrases = [] {
        std::vector<PhraseTable<const CommandSyntax *>::Row> rows;
        for (const CommandSyntax &command : table)
            rows.emplace_back(command.phrase, &command);
        return PhraseTable<const CommandSyntax *>(rows);
    }();
    return phrases;
}

} // namespace Orbita
