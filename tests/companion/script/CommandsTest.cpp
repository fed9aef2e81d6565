#include "RecordingHost.h"
#include "support/RowName.h"

namespace Orbita {
namespace {

struct Row {
    const char *name;
    const char *source;
    const char *calls; ///< one on a line
    const char *outcome;
    bool cancels = false;
};

class Commands : public testing::TestWithParam<Row> {};

TEST_P(Commands, reachTheHost)
{
    RecordingHost host;
    host.cancels = GetParam().cancels;
    EXPECT_EQ(outcomeOf(QString::fromUtf8(GetParam().source), host), GetParam().outcome);
    EXPECT_EQ(host.calls.join(QLatin1Char('\n')).toStdString(), GetParam().calls);
}

INSTANTIATE_TEST_SUITE_P(
    Asking, Commands,
    testing::Values(
        Row{"a plain dialog", "display dialog \"a\" & return & \"b\"", "dialog|a\nb|||Cancel/OK|OK|Cancel|-|0|0|0",
            "{button returned:\"OK\"}"},
        Row{"a dialog with everything",
            "set r to display dialog \"Name?\" default answer \"me\" with title \"T\" buttons {\"Cancel\", \"No\", "
            "\"Go\"} "
            "default button 3 cancel button \"No\" with icon caution giving up after 5 with hidden answer\n"
            "{button returned of r, text returned of the result, gave up of r}",
            "dialog|Name?||T|Cancel/No/Go|Go|No|me|1|5|2", "{\"Go\", \"me!\", true}"},
        Row{"cancelling ends the script", "display dialog \"a\"\nbeep", "dialog|a|||Cancel/OK|OK|Cancel|-|0|0|0",
            "Line 1: Cancelled. (-128)", true},
        Row{"cancelling can be caught", "try\nchoose file\non error number n\nn\nend try", "file||||0", "-128", true},
        Row{"own buttons have no default", "button returned of (display dialog \"a\" buttons {\"X\"})",
            "dialog|a|||X|||-|0|0|0", "\"X\""},
        Row{"an unknown default button", "display dialog \"a\" default button \"X\"", "",
            "Line 1: The dialog has no button \"X\". (-1719)"},
        Row{"four buttons", "display dialog \"a\" buttons {1, 2, 3, 4}", "",
            "Line 1: A dialog has one to three buttons, not 4. (-2700)"},
        Row{"an alert", "display alert \"a\" message \"b\" as critical buttons {\"N\", \"Y\"}",
            "alert|a|b||N/Y|Y||-|0|0|3", "{button returned:\"Y\"}"},
        Row{"a notification", "display notification \"a\" with title \"b\" subtitle \"c\" sound name \"Glass\"",
            "notification|a|b|c\nbeep|1", "missing value"},
        Row{"items keep their class",
            "choose from list {\"a\", 2} with title \"t\" with prompt \"p\" default items {2} OK button name \"Y\" "
            "multiple selections allowed true without empty selection allowed",
            "list|a/2|t|p|2|Y||1|0", "{2}"},
        Row{"a cancelled list is false", "choose from list {\"a\"}", "list|a||||||0|0", "false", true},
        Row{"files of types",
            "choose file with prompt \"p\" of type {\"txt\", \"public.jpeg\"} default location \"~/x\" "
            "with multiple selections allowed",
            "file|p|*.txt/*.jpg/*.jpeg|/home/me/x|1", "{/a b}"},
        Row{"a folder ends with a slash", "POSIX path of (choose folder)", "folder||||0", "\"/a b/\""}),
    rowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    Doing, Commands,
    testing::Values(
        Row{"the sample opens an application", "tell application \"Safari\" to activate", "activate|Safari",
            "missing value"},
        Row{"the sample makes a window", "tell application \"Safari\" to make new document at end of documents",
            "make|Safari", "missing value"},
        Row{"blocks tell the innermost application",
            "tell application \"Finder\"\nlaunch\ntell app \"Mail\" to quit\nreveal POSIX file \"/x\"\n"
            "open {\"/a\", file \"~/b\"}\nactivate application \"C\"\nend tell\nopen \"/c\"",
            "launch|Finder\nquit|Mail\nreveal|/x\nopen|Finder|/a//home/me/b\nactivate|C\nopen||/c", "missing value"},
        Row{"is running",
            "tell application \"Mail\"\nif it is running then beep 2\nend tell\n"
            "{application \"Mail\" is not running, running of application \"X\"}",
            "beep|2", "{false, false}"},
        Row{"nobody is told", "activate", "",
            "Line 1: An application was expected, as in tell application \"Name\" to "
            "\xE2\x80\xA6 (-1708)"},
        Row{"addresses", "open location \"https://a\"\nopen location \"a\"", "location||https://a",
            "Line 2: \"a\" is no address with a scheme, such as \"https:\". (-2700)"},
        Row{"a relative path", "open \"x\"", "",
            "Line 1: \"x\" is no path from the root or the home folder, \"/\" or \"~/\". (-43)"},
        Row{"a shell script", "do shell script \"ls \" & quoted form of \"a b\"", "shell|ls 'a b'", "\"LS 'A B'\""},
        Row{"a failed shell script", "try\ndo shell script \"false\"\non error m number n\n{m, n}\nend try",
            "shell|false", "{\"It failed.\", 1}"},
        Row{"the clipboard", "set the clipboard to (the clipboard) & return & 1", "clipboard|clip\n1", "missing value"},
        Row{"small commands",
            "delay 1.5\nbeep\nsay \"hi\"\nlog {1, \"a\"}\nwith timeout of 5 seconds\ndelay\n"
            "end timeout",
            "delay|1.5\nbeep|1\nsay|hi\nlog|{1, \"a\"}\ndelay|0", "missing value"},
        Row{"paths to folders", "{(path to desktop as text) & \"a\", POSIX path of (path to home folder)}", "",
            "{\"/home/me/Desk/a\", \"/home/me/\"}"},
        Row{"an unknown folder", "path to trash", "", "Line 1: No path to \"trash\" is known. (-43)"}),
    rowName<Row>);

TEST(ScriptInterpreter, StopsWhatWouldCatchEverything)
{
    RecordingHost host;
    ScriptInterpreter interpreter(host);
    host.onLog = [&] { interpreter.stop(); };
    const auto script = readScript(u"repeat\ntry\nlog 1\nend try\nend repeat");
    ASSERT_TRUE(script);
    const auto value = interpreter.run(*script);
    ASSERT_FALSE(value);
    EXPECT_EQ(value.error().number, ScriptFailure::userCancelled);
    EXPECT_EQ(host.calls.size(), 1);
}

} // namespace
} // namespace Orbita
