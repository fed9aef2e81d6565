#include "companion/host/ShellScripts.h"
#include "companion/host/ScriptSource.h"
#include "support/RowName.h"

#include <QBuffer>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace Orbita {

namespace {

struct ShellRow {
    const char *name;
    QString command;
    QString result; ///< or the sentence of the failure
    int number = 0;
};

class ShellScript : public testing::TestWithParam<ShellRow> {};

TEST_P(ShellScript, IsRun)
{
    const auto result = runShellScript(GetParam().command);
    EXPECT_EQ(result ? 0 : result.error().number, GetParam().number);
    EXPECT_EQ(result ? *result : result.error().message, GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, ShellScript,
    testing::Values(
        ShellRow{"only the last line break is left out", u"printf 'a\\nb\\n\\n'"_s, u"a\rb\r"_s},
        ShellRow{"quotes and line breaks reach the shell", u"echo \"it's\"\necho 'ü'"_s, u"it's\rü"_s},
        ShellRow{"there is nothing to read", u"cat"_s, u""_s},
        ShellRow{"standard error is no result", u"echo a; echo b >&2"_s, u"a"_s},
        ShellRow{"a status is a failure with what was said", u"echo No such luck >&2; exit 3"_s, u"No such luck."_s, 3},
        ShellRow{"also where nothing was said", u"exit 7"_s, u"The command ended with the status 7."_s, 7},
        ShellRow{"a signal counts as in a shell", u"kill -9 $$"_s, u"The command ended with the status 137."_s, 137},
        ShellRow{"what goes on in the background is not waited for", u"sleep 1000 >/dev/null 2>&1 & echo on"_s,
                 u"on"_s},
        ShellRow{"endless output is stopped", u"yes"_s, u"The command wrote more than 16 MiB and was stopped."_s,
                 -2700},
        ShellRow{"also that of a child and to standard error", u"(yes >&2); true"_s,
                 u"The command wrote more than 16 MiB and was stopped."_s, -2700},
        ShellRow{"an enormous command is refused", QString(300'000, u' '),
                 u"The shell command is longer than 128 KiB."_s, -2700},
        ShellRow{"so is a NUL in it", u"echo "_s + QChar::Null, u"A shell command cannot hold the character NUL."_s,
                 -2700}),
    rowName<ShellRow>);

TEST(Speech, FailsClearlyWhereNothingSpeaks)
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    const auto spoken = speak(u"Hello"_s);
    qputenv("PATH", path);
    ASSERT_FALSE(spoken);
    EXPECT_TRUE(spoken.error().message.startsWith(u"No speech program is installed"_s));
}

TEST(ScriptSource, IsBoundedTextAndGivesTheLineOfAProblem)
{
    const auto read = [](QByteArray bytes) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        const auto source = readSource(buffer);
        return source ? *source : source.error();
    };
    EXPECT_EQ(read("\xEF\xBB\xBFlog \"ü\""), u"log \"ü\""_s);
    EXPECT_EQ(read("log \xff"), u"The script is no text in UTF-8."_s);
    EXPECT_EQ(read(QByteArray("\x7f"
                              "ELF\0",
                              5)),
              u"The script is no text in UTF-8."_s);
    EXPECT_EQ(read(QByteArray(4 * 1024 * 1024, ' ')).size(), 4 * 1024 * 1024);
    EXPECT_EQ(read(QByteArray(4 * 1024 * 1024 + 1, ' ')), u"The script is longer than 4 MiB."_s);
    EXPECT_EQ(reportOf({2, -2700, u"No."_s}, u"one\r\ntwo\rthree"_s).lineText, u"two"_s);
}

} // namespace

} // namespace Orbita
