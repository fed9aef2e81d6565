#pragma once

#include "companion/script/CommandArguments.h"

namespace Orbita {

// What the commands of the table do. Each throws a ScriptFailure where it cannot.

using Arguments = const CommandArguments &;

Value displayDialog(CommandContext &context, Arguments arguments);
Value displayAlert(CommandContext &context, Arguments arguments);
Value displayNotification(CommandContext &context, Arguments arguments);
Value chooseFromList(CommandContext &context, Arguments arguments);
Value chooseFile(CommandContext &context, Arguments arguments);
Value chooseFolder(CommandContext &context, Arguments arguments);

// The subject is an application; where it is left out, it is the one that the script tells.
Value activate(CommandContext &context, Arguments arguments);
Value launch(CommandContext &context, Arguments arguments);
Value quit(CommandContext &context, Arguments arguments);
Value makeNewDocument(CommandContext &context, Arguments arguments);
Value openFiles(CommandContext &context, Arguments arguments);
Value openLocation(CommandContext &context, Arguments arguments);
Value reveal(CommandContext &context, Arguments arguments);

Value doShellScript(CommandContext &context, Arguments arguments);
Value delay(CommandContext &context, Arguments arguments);
Value beep(CommandContext &context, Arguments arguments);
Value say(CommandContext &context, Arguments arguments);
Value theClipboard(CommandContext &context, Arguments arguments);
Value setTheClipboard(CommandContext &context, Arguments arguments);
Value currentDate(CommandContext &context, Arguments arguments);
Value randomNumber(CommandContext &context, Arguments arguments);
Value pathTo(CommandContext &context, Arguments arguments);
Value logValue(CommandContext &context, Arguments arguments);
Value roundNumber(CommandContext &context, Arguments arguments);
Value offsetOf(CommandContext &context, Arguments arguments);

/// A path as the host wants it: absolute, "~/" being the home folder. Throws where \a value names no such path.
[[nodiscard]] QString absolutePath(CommandContext &context, const Value &value);

} // namespace Orbita
