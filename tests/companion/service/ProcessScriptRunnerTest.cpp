#include "companion/service/ProcessScriptRunner.h"

#include "companion/service/ShebangInterpreter.h"
#include "desktop/harness/Processes.h"
#include "desktop/harness/Wait.h"
#include "platform/memory/MemoryUserNotifications.h"
#include "support/RowName.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>

using namespace Orbita;

namespace {

struct LineRow {
    const char *name;
    const char *script;
    std::optional<ShebangInterpreter> interpreter;
    bool canRun = false;
};

ShebangInterpreter interpreter(const char *program, const char *argument = "")
{
    return {QString::fromUtf8(program), QString::fromUtf8(argument)};
}

class FirstLine : public testing::TestWithParam<LineRow> {};

TEST_P(FirstLine, names_the_interpreter)
{
    const auto found = interpreterOf(QString::fromUtf8(GetParam().script));
    EXPECT_EQ(found, GetParam().interpreter);
    EXPECT_EQ(found && !obstacleOf(*found), GetParam().canRun);
}

INSTANTIATE_TEST_SUITE_P(
    , FirstLine,
    testing::Values(LineRow{"none", "beep", {}}, LineRow{"not at the start", "\n#!/bin/sh", {}},
                    LineRow{"plain", "#!/bin/sh\nexit", interpreter("/bin/sh"), true},
                    LineRow{"blanks and a carriage return", "#! \t/bin/sh \r\n", interpreter("/bin/sh"), true},
                    LineRow{"one argument", "#!/usr/bin/env  -S sh -e", interpreter("/usr/bin/env", "-S sh -e"), true},
                    LineRow{"nothing", "#!", interpreter("")}, LineRow{"relative", "#!sh", interpreter("sh")},
                    LineRow{"a folder", "#!/bin", interpreter("/bin")},
                    LineRow{"no program", "#!/etc/passwd", interpreter("/etc/passwd")},
                    LineRow{"missing", "#!/no/such", interpreter("/no/such")}),
    rowName<LineRow>);

class ProcessScriptRunnerTest : public testing::Test {
protected:
    ProcessScriptRunnerTest()
    {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder.path()));
        runner.emplace(QStringLiteral("/bin/sh"), notifications); // reads its standard input too
    }

    void run(const QString &script) { runner->run(QString(script).replace(QLatin1String("%1"), folder.path())); }
    [[nodiscard]] bool has(const QString &file) const { return QFile::exists(folder.filePath(file)); }
    void waitForEnd()
    {
        waitUntil([this] { return runner->runningCount() == 0; }, QStringLiteral("all scripts had ended"));
    }
    void waitFor(const QString &file)
    {
        waitUntil([&] { return has(file); }, file);
    }
    [[nodiscard]] QByteArray content(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] qint64 number(const QString &file) const { return content(file).trimmed().toLongLong(); }
    [[nodiscard]] QStringList leftScripts() const
    {
        return QDir(folder.filePath(QStringLiteral("orbita-toolkit"))).entryList(QDir::Files);
    }

    QTemporaryDir folder;
    MemoryUserNotifications notifications;
    std::optional<ProcessScriptRunner> runner;
};

TEST_F(ProcessScriptRunnerTest, runs_a_script_from_a_private_file_at_home)
{
    run(QStringLiteral(
        "#!/bin/sh -u\nstat -c %a $0 > %1/mode; pwd > %1/folder; echo \"$(ps -o sid= $$) $$\" > %1/ids"));
    EXPECT_EQ(leftScripts().size(), 1);
    waitForEnd();
    EXPECT_EQ(content(QStringLiteral("mode")), "600\n");
    EXPECT_EQ(QString::fromUtf8(content(QStringLiteral("folder")).trimmed()), QDir::homePath());
    const auto ids = content(QStringLiteral("ids")).simplified().split(' ');
    EXPECT_EQ(ids.value(0), ids.value(1)) << "a session of its own";
    EXPECT_TRUE(leftScripts().isEmpty());
    EXPECT_TRUE(notifications.notifications.isEmpty());
}

TEST_F(ProcessScriptRunnerTest, gives_any_other_script_to_its_program)
{
    run(QStringLiteral("echo 'quotes \" and $x' > %1/written"));
    waitForEnd();
    EXPECT_EQ(content(QStringLiteral("written")), "quotes \" and $x\n");
}

TEST_F(ProcessScriptRunnerTest, tells_the_user_why_a_script_failed)
{
    const std::pair<const char *, const char *> cases[]{
        {"#!/bin/sh\necho one >&2; echo ' last  word ' >&2; echo >&2; exit 3",
         "The script ended with an error: last word"},
        {"#!/bin/sh\nexit 3", "The script ended with the status 3."},
        {"#!/bin/sh\nkill -9 $$", "The script was ended by a signal."},
        {"#!/no/such", "The script cannot be run: there is no program \"/no/such\"."},
        {"#!/bin/sh\nexec >&- 2>&-; exit 1", "The script ended with the status 1."},
    };
    for (const auto &[script, sentence] : cases) {
        run(QLatin1String(script));
        waitForEnd();
        ASSERT_FALSE(notifications.notifications.isEmpty()) << script;
        EXPECT_EQ(notifications.notifications.takeLast().text, QLatin1String(sentence));
    }
}

TEST_F(ProcessScriptRunnerTest, stops_what_a_script_has_started_even_against_its_will)
{
    run(QStringLiteral("#!/bin/sh\ntrap '' TERM; sh -c 'trap \"\" TERM; echo $$ > %1/child; while :; do :; done' &\n"
                       "echo $$ > %1/parent; while :; do :; done"));
    run(QStringLiteral("#!/bin/sh\necho $$ > %1/mild; exec sleep 600"));
    for (const char *file : {"child", "parent", "mild"})
        waitUntil([&] { return number(QLatin1String(file)) > 0; }, QLatin1String(file));
    runner->stopAll();
    waitForEnd();
    for (const char *file : {"child", "parent", "mild"})
        EXPECT_TRUE(eventually([&] { return hasEnded(number(QLatin1String(file))); })) << file;
    EXPECT_TRUE(notifications.notifications.isEmpty()) << "nobody has to be told of what was asked for";
    EXPECT_TRUE(leftScripts().isEmpty());
}

TEST_F(ProcessScriptRunnerTest, leaves_running_what_a_script_leaves_running)
{
    // What is left writes on when the script has ended, and must not be ended by that.
    run(QStringLiteral("#!/bin/sh\n{ while [ ! -e %1/go ]; do sleep 0.01; done; echo text; touch %1/lived; } &\n"));
    waitForEnd();
    QFile(folder.filePath(QStringLiteral("go"))).open(QIODevice::WriteOnly);
    waitFor(QStringLiteral("lived"));
}

TEST_F(ProcessScriptRunnerTest, passes_on_so_much_of_endless_output)
{
    testing::internal::CaptureStderr();
    run(QStringLiteral("#!/bin/sh\nhead -c 5000000 /dev/zero; touch %1/done"));
    waitForEnd();
    const std::string passedOn = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(has(QStringLiteral("done")));
    EXPECT_GE(passedOn.size(), std::size_t(ScriptOutput::maximumSize));
    EXPECT_LE(passedOn.size(), std::size_t(ScriptOutput::maximumSize) + 200);
}

TEST_F(ProcessScriptRunnerTest, ends_its_scripts_and_removes_what_a_crash_left)
{
    run(QStringLiteral("#!/bin/sh\necho $$ > %1/endless; while :; do :; done"));
    waitUntil([&] { return number(QStringLiteral("endless")) > 0; }, QStringLiteral("it ran"));
    QFile left(folder.filePath(QStringLiteral("orbita-toolkit/script-left")));
    EXPECT_TRUE(left.open(QIODevice::WriteOnly));
    runner.reset();
    EXPECT_TRUE(eventually([&] { return hasEnded(number(QStringLiteral("endless"))); }));
    runner.emplace(QStringLiteral("/bin/sh"), notifications);
    EXPECT_TRUE(leftScripts().isEmpty());
}

} // namespace
