#include "RecordingHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace Orbita {
namespace {

const char *const samples[] = {
    "on f(a, b)\n  return a & b\nend f\nset x to f(1, {2, \"c\"}) -- so\nrepeat with i from 1 to count x\n"
    "  set item i of x to (item i of x as text) & \"\\n\"\nend repeat\nx as text",
    "tell application \"Finder\"\n activate\n try\n  open POSIX file \"/a\" \xC2\xAC\n on error m number n\n"
    "  log {m, n}\n end try\nend tell\n(* a (* b *) *)",
    "set {r, t} to {{name:\"x\", |odd one|:-1.5e3}, \"one two\"}\nif name of r is not in {\"y\"} then\n"
    " display dialog word 2 of t default answer \"\" buttons {\"A\", \"B\"} default button 1 with icon note\n"
    "else if t's length \xE2\x89\xA5 3 then\n choose from list words of t with prompt \"p\"\nend if",
    "considering case\n set text item delimiters to {\",\"}\n set l to text items 1 thru -2 of \"a,b,c\"\n"
    " set end of l to (random number from 1 to 6) mod 4 ^ 2\nend considering\nquoted form of (l as string)",
};

/// Cuts, doubles, swaps and inserts pieces of \a text.
QString mutated(QString text, const QString &other, std::mt19937 &random)
{
    const auto below = [&](qsizetype end) { return qsizetype(random() % uint(qMax(qsizetype(1), end))); };
    for (auto changes = 1 + below(3); changes > 0; --changes) {
        const qsizetype place = below(text.size());
        const qsizetype length = below(12);
        switch (below(4)) {
        case 0:
            text.remove(place, length);
            break;
        case 1:
            text.insert(place, text.mid(below(text.size()), length));
            break;
        case 2:
            text.insert(place, other.mid(below(other.size()), length));
            break;
        default:
            text.insert(place, QChar(char16_t(below(4) == 0 ? below(0x10000) : below(128))));
        }
    }
    return text;
}

TEST(Script, SurvivesWhatIsDamaged)
{
    std::mt19937 random(20240229);
    int ran = 0;
    for (int i = 0; i < 20000; ++i) {
        const QString text = QString::fromUtf8(samples[random() % std::size(samples)]);
        const QString source = mutated(text, QString::fromUtf8(samples[random() % std::size(samples)]), random);
        const auto script = readScript(source);
        if (!script) {
            EXPECT_FALSE(script.error().message.isEmpty());
            const auto breaks = std::count_if(source.begin(), source.end(),
                                              [](QChar c) { return QStringView(u"\n\r\u2028\u2029").contains(c); });
            EXPECT_LE(script.error().line, breaks + 1);
            continue;
        }
        ++ran;
        RecordingHost host;
        (void)ScriptInterpreter(host).run(*script);
    }
    EXPECT_GT(ran, 500);
}

} // namespace
} // namespace Orbita
