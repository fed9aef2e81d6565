#include "RecordingHost.h"
#include "model/AppleScriptMenuItem.h"
#include "support/RowName.h"

namespace Orbita {
namespace {

struct Row {
    const char *name;
    const char *source;
    const char *outcome;
};

class Language : public testing::TestWithParam<Row> {};

TEST_P(Language, runs)
{
    RecordingHost host;
    EXPECT_EQ(outcomeOf(QString::fromUtf8(GetParam().source), host), GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, Language,
    testing::Values(
        Row{"products bind tighter than sums", "2 + 3 * 4 - 1", "13"},
        Row{"powers go from the right and are reals", "2 ^ 3 ^ 2", "512.0"},
        Row{"a minus binds tighter than a power", "-2 ^ 2", "4.0"}, Row{"a division gives a real", "6 / 2", "3.0"},
        Row{"div and mod go towards zero", "{-7 div 2, -7 mod 2, 7.5 div 2, 7.5 mod 2}", "{-3, -1, 3, 1.5}"},
        Row{"integers grow into reals", "9223372036854775807 + 1", "9.22337203685478E+18"},
        Row{"the smallest integer over minus one", "(-9223372036854775807 - 1) div -1", "9.22337203685478E+18"},
        Row{"a real literal has an exponent", "1.5e3 + .5", "1500.5"},
        Row{"a text swallows what follows", "\"a\" & 1 & 2.0 & true & {1, 2}", "\"a12.0true12\""},
        Row{"anything else becomes a list", "1 & \"a\" & {2}", "{1, \"a\", 2}"},
        Row{"records join and the left wins", "{a:1} & {a:2, b:3}", "{a:1, b:3}"},
        Row{"as binds looser than and", "1 & 2 as text", "\"12\""},
        Row{"conversions", "{\"12\" as integer, 2.5 as integer, 1 as boolean, \" 1e1 \" as number, 3 as list}",
            "{12, 3, true, 10.0, {3}}"},
        Row{"words compare numbers",
            "{1 is 1.0, 2 is not less than 3, 2 is greater than or equal to 2, 1 \xE2\x89\xA0 1}",
            "{true, false, true, false}"},
        Row{"texts ignore case", "{\"A\" = \"a\", \"b\" comes after \"A\", \"1\" = 1}", "{true, true, false}"},
        Row{"considering case", "considering case\nset x to \"A\" = \"a\"\nend considering\n{x, \"A\" = \"a\"}",
            "{false, true}"},
        Row{"containment",
            "{\"abc\" contains \"B\", {1, 2, 3} contains {2, 3}, 2 is in {1}, {1} does not contain 1, "
            "\"abc\" starts with \"ab\", {1, 2} ends with 2}",
            "{true, true, false, false, true, true}"},
        Row{"or does not look further", "true or nothing", "true"},
        Row{"and does not look further", "false and nothing or not false", "true"},
        Row{"elements of a list",
            "set l to {1, 2, 3, 4}\n{item -1 of l, first item of l, 3rd item of l, items 2 thru "
            "-2 of l, some item of l, middle item of l}",
            "{4, 1, 3, {2, 3}, 3, 2}"},
        Row{"elements of a text",
            "set t to \"One two\" & return & \"three\"\n{word 2 of t, last paragraph of t, "
            "characters 1 thru 2 of t, text 1 thru 3 of t, count words of t, number of paragraphs in t}",
            "{\"two\", \"three\", {\"O\", \"n\"}, \"One\", 3, 2}"},
        Row{"a character is what a reader sees",
            "{length of \"e\xCC\x81\xF0\x9F\x98\x80\", character 2 of "
            "\"e\xCC\x81x\"}",
            "{2, \"x\"}"},
        Row{"possessives and of meet", "set r to {a:{b:{5, 6}}}\nlast item of r's a's b", "6"},
        Row{"reverse rest and count", "{reverse of {1, 2}, rest of {1, 2}, count {1, 2}, (count of {}) + 1}",
            "{{2, 1}, {2}, 2, 1}"},
        Row{"text item delimiters take apart and join",
            "set text item delimiters to {\", \", \";\"}\nset l to text items of \"a, b;c\"\n"
            "set AppleScript's text item delimiters to \"+\"\n{l, l as text}",
            "{{\"a\", \"b\", \"c\"}, \"a+b+c\"}"},
        Row{"quoted form", "quoted form of \"it's\"", "\"'it'\\''s'\""},
        Row{"class of", "{class of 1, class of \"\", class of {} is list}", "{integer, text, true}"},
        Row{"offset counts characters", "offset of \"c\" in \"abc\"", "3"},
        Row{"rounding", "{round 2.5, round 2.1 rounding up, round -2.1 rounding down}", "{2, 3, -3}"},
        Row{"random numbers", "{random number, random number 10, random number from 1 to 6}", "{0.5, 5, 4}"},
        Row{"dates",
            "set d to current date\n{year of d, month of d is February, month of d as integer, weekday of d, "
            "time string of (d + 60), (d + 60) - d}",
            "{2024, true, 2, thursday, \"13:06:09\", 60}"}),
    rowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    Statements, Language,
    testing::Values(
        Row{"case and the word the do not matter", "SET the X to 5\nGet x", "5"},
        Row{"odd names", "set |a b| to 2\nset |if| to 3\n|A B| * |if|", "6"},
        Row{"comments nest and lines go on", "(* a (* b\n*) *) set x to 1 + \xC2\xAC -- so\n 2 # three\nx + \\\n1",
            "4"},
        Row{"escapes", "\"\\\"\\\\\\n\\t\"", "\"\"\\\n\t\""},
        Row{"a list is taken apart", "set {a, {b, c}} to {1, {2, 3}}\na + b + c", "6"},
        Row{"items and ends are set",
            "set l to {1, {x:2}}\nset x of item 2 of l to 3\nset end of l to 4\n"
            "copy 0 to beginning of l\nset item 2 of l to -1\nl",
            "{0, -1, {x:3}, 4}"},
        Row{"a copy stays as it is", "set a to {1}\nset b to a\nset end of b to 2\na", "{1}"},
        Row{"branches", "set x to 2\nif x = 1 then\n\"a\"\nelse if x = 2 then\n\"b\"\nelse\n\"c\"\nend if", "\"b\""},
        Row{"loops",
            "set s to 0\nrepeat 2 times\nset s to s + 1\nend repeat\nrepeat with i from 10 to 1 by -4\n"
            "set s to s + i\nend repeat\nrepeat with i in {100, 200}\nset s to s + i\nend repeat\n"
            "repeat while s < 400\nset s to s + 50\nend repeat\nrepeat until s > 1000\nset s to s * 2\nend\n"
            "repeat\nset s to s + 1\nif s mod 7 = 0 then exit repeat\nend repeat\ns",
            "1687"},
        Row{"loops end where numbers do",
            "repeat with i from 9223372036854775806 to 9223372036854775807\nend repeat\n"
            "repeat with r from 1e300 to 2e300\nend repeat\n{i, r}",
            "{9223372036854775807, 1.0E+300}"},
        Row{"errors are caught with their number", "try\nerror \"so\" number 7\non error m number n\n{m, n}\nend try",
            "{\"so\", 7}"},
        Row{"a try without a handler goes on", "try\n1 / 0\nend try\n2", "2"},
        Row{"handlers call one another",
            "on fact(n)\nif n < 2 then return 1\nreturn n * (my fact(n - 1))\nend fact\n"
            "fact(20)",
            "2432902008176640000"},
        Row{"variables of handlers are their own",
            "global g\nproperty p : 2\nset {g, x} to {1, 9}\nf()\n{g, p, x}\n"
            "to f()\nset x to 0\nset g to g + p\nset p to 5\nend f",
            "{3, 5, 9}"},
        Row{"on run is run", "on run\nreturn result\nend run", "missing value"},
        Row{"result and it", "5\nset x to result + 1\ntell application \"Mail\" to set y to name of it\n{x, y}",
            "{6, \"Mail\"}"},
        Row{"nothing is missing value", "-- nothing\n\n", "missing value"}),
    rowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    Problems, Language,
    testing::Values(
        Row{"then is missing", "\n\nif true display dialog \"x\"",
            "Line 3: \"then\" was expected, not \"display\". (-2741)"},
        Row{"an unknown command", "keystroke \"a\"", "Line 1: \"keystroke\" is no command that is known here. (-2741)"},
        Row{"a command that goes on otherwise", "display dialogue \"x\"",
            "Line 1: \"dialog\", \"alert\" or \"notification\" was expected behind \"display\", not "
            "\"dialogue\". (-2741)"},
        Row{"the longest beginning counts", "make new folder",
            "Line 1: \"document\", \"window\" or \"finder\" was expected behind \"make new\", not \"folder\". (-2741)"},
        Row{"an else without an if", "beep\nelse", "Line 2: There is no open \"if\" before \"else\". (-2741)"},
        Row{"a then without an if", "then beep", "Line 1: There is no open \"if\" before \"then\". (-2741)"},
        Row{"an end without a beginning", "end if", "Line 1: There is no open \"if\" before \"end\". (-2741)"},
        Row{"an end of nothing", "end", "Line 1: There is nothing before \"end\" that it could end. (-2741)"},
        Row{"an unknown option", "do shell script \"ls\" with administrator privileges",
            "Line 1: The end of the line was expected, not \"with\". (-2741)"},
        Row{"a block without an end", "repeat\nbeep",
            "Line 2: \"end repeat\" was expected, not the end of the script. "
            "(-2741)"},
        Row{"the wrong end", "if true then\nbeep\nend repeat", "Line 3: \"if\" was expected, not \"repeat\". (-2741)"},
        Row{"a text without an end", "beep\n\"abc\n\n",
            "Line 2: This text has no end: a closing \" was expected. (-2741)"},
        Row{"a comment without an end", "beep\n(* (* *)\n",
            "Line 2: This comment has no end: \"*)\" was expected. (-2741)"},
        Row{"a mark within a line", "set x \xC2\xAC to 5",
            "Line 1: \"\xC2\xAC\" has to be the last character of its "
            "line. (-2741)"},
        Row{"a stray character", "x $ y", "Line 1: \"$\" does not belong in a script. (-2741)"},
        Row{"a number too large", "1e999", "Line 1: The number \"1e999\" is too large. (-2741)"},
        Row{"setting what is no place", "set 5 to x",
            "Line 1: A variable, or an item or property of one, was expected "
            "before \"to\". (-2741)"},
        Row{"exit without a loop", "exit repeat", "Line 1: \"exit repeat\" stands outside of a repeat. (-2741)"},
        Row{"an unknown variable on a later line", "set x to {1, \xC2\xAC\n y}",
            "Line 2: The variable \"y\" has no value. (-2753)"},
        Row{"a division by zero", "1 mod 0", "Line 1: 1 cannot be divided by zero. (-2701)"},
        Row{"a result that is too large", "1e308 * 10",
            "Line 1: The result of a calculation is too large, or no "
            "number. (-2702)"},
        Row{"a text that is no number", "\"x\" + 1", "Line 1: \"x\" cannot be made into a number. (-1700)"},
        Row{"a real too large for an integer", "1e30 as integer",
            "Line 1: 1.0E+30 cannot be made into an integer. (-1700)"},
        Row{"an item that is not there", "item 3 of {1, 2}", "Line 1: There is no item 3 of 2. (-1719)"},
        Row{"item zero", "item 0 of {1}", "Line 1: There is no item 0 of 1. (-1719)"},
        Row{"a field that is not there", "b of {a:1}", "Line 1: {a:1} has no \"b\". (-1728)"},
        Row{"an unknown handler", "f()", "Line 1: There is no handler \"f\". (-1708)"},
        Row{"the wrong number of values", "on f(a)\nend f\nf()",
            "Line 3: The handler \"f\" takes 1 values, not 0. "
            "(-1708)"},
        Row{"endless calls", "on f()\nf()\nend f\nf()",
            "Line 2: Handlers call one another more than 1000 deep. (-2706)"},
        Row{"telling what is no application", "tell 5 to activate",
            "Line 1: Only applications can be told something, not 5. (-1708)"},
        Row{"an error of the script's own", "beep\nerror \"so\" number 7", "Line 2: so (7)"},
        Row{"a list that holds ever more lists", "set x to 0\nrepeat\nset x to {x}\nend repeat",
            "Line 3: Lists are nested more than 200 deep. (-2700)"},
        Row{"caught nesting goes no deeper",
            "set x to {0}\nrepeat 500 times\ntry\nset item 1 of x to x\nend try\n"
            "end repeat\nset item 1 of x to x",
            "Line 7: Lists are nested more than 200 deep. (-2700)"},
        Row{"a text that doubles", "set t to \"x\"\nrepeat\nset t to t & t\nend repeat",
            "Line 3: A text is longer than 64 MiB. (-2700)"},
        Row{"a list that doubles", "set l to {1}\nrepeat\nset l to l & l\nend repeat",
            "Line 3: A list has more than 4194304 items. (-2700)"}),
    rowName<Row>);

TEST(Script, WhatIsNestedTooDeeplyIsRefusedAndLongChainsAreNot)
{
    RecordingHost host;
    const QString refusal = QStringLiteral("Line 1: The script is nested more than 200 levels deep. (-2741)");
    for (const char *opening : {"(", "{", "not ", "- ", "item (", "if true then ", "tell me to ", "f("})
        EXPECT_EQ(outcomeOf(QString::fromLatin1(opening).repeated(100000), host), refusal.toStdString()) << opening;
    EXPECT_EQ(outcomeOf(QStringLiteral("1") + QStringLiteral("+1").repeated(200000), host), "200001");
    EXPECT_EQ(outcomeOf(QStringLiteral("contents of ").repeated(100000) + QLatin1Char('1'), host), "1");
    EXPECT_EQ(outcomeOf(QString(longestScript + 1, QLatin1Char(' ')), host),
              "Line 1: The script is longer than 4 MiB. (-2741)");
}

TEST(Script, CallsNestedInDeepExpressionsDoNotOverflowTheStack)
{
    RecordingHost host;
    const QString deep = QStringLiteral("(1+").repeated(90) + QStringLiteral("f()") + QString(90, QLatin1Char(')'));
    const std::string outcome = outcomeOf(QStringLiteral("on f()\nreturn %1\nend f\nf()").arg(deep), host);
    EXPECT_TRUE(QString::fromStdString(outcome).endsWith(QLatin1String("(-2706)"))) << outcome;
}

TEST(Script, TheSampleOfANewItemRunsWithItsMarksRemoved)
{
    RecordingHost host;
    QString sample = AppleScriptMenuItem::sampleScript();
    EXPECT_EQ(sample.count(QLatin1String("#tell")), 2);
    EXPECT_EQ(outcomeOf(sample.replace(QLatin1String("#tell"), QLatin1String("tell")), host), "missing value");
    EXPECT_EQ(host.calls.mid(1), QStringList({QStringLiteral("activate|Safari"), QStringLiteral("make|Safari")}));
}

} // namespace
} // namespace Orbita
