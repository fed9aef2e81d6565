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
using namespace Qt::StringLiterals;

namespace {

struct LineRow {
    const char *name;
    const char *script;
    std::optional<ShebangInterpreter> interpreter;
    bool canRun = false;
};

class FirstLine : public testing::TestWithParam<LineRow> {};

TEST_P(FirstLine, names_the_interpreter)
{
    const auto found = interpreterOf(QString::fromUtf8(GetParam().script));
    EXPECT_EQ(found, GetParam().interpreter);
    EXPECT_EQ(found && !obstacleOf(*found), GetParam().canRun);
}

INSTANTIATE_TEST_SUITE_P(
    , FirstLine,
    testing::Values(
        LineRow{"none", "beep", {}}, LineRow{"not at the start", "\n#!/bin/sh", {}},
        LineRow{"plain", "#!/bin/sh\nexit", ShebangInterpreter{u"/bin/sh"_s, {}}, true},
        LineRow{"blanks and a carriage return", "#! \t/bin/sh \r\n", ShebangInterpreter{u"/bin/sh"_s, {}}, true},
        LineRow{"one argument", "#!/usr/bin/env  -S sh -e", ShebangInterpreter{u"/usr/bin/env"_s, u"-S sh -e"_s}, true},
        LineRow{"nothing", "#!", ShebangInterpreter{u""_s, {}}},
        LineRow{"relative", "#!sh", ShebangInterpreter{u"sh"_s, {}}},
        LineRow{"a folder", "#!/bin", ShebangInterpreter{u"/bin"_s, {}}},
        LineRow{"no program", "#!/etc/passwd", ShebangInterpreter{u"/etc/passwd"_s, {}}},
        LineRow{"missing", "#!/no/such", ShebangInterpreter{u"/no/such"_s, {}}}),
    rowName<LineRow>);

class ProcessScriptRunnerTest : public testing::Test {
protected:
    ProcessScriptRunnerTest()
    {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder.path()));
        runner.emplace(u"/bin/sh"_s, notifications); // reads its standard input too
    }

    void run(const QString &script) { runner->run(QString(script).replace(QLatin1String("%1"), folder.path())); }
    [[nodiscard]] bool has(const QString &file) const { return QFile::exists(folder.filePath(file)); }
    void waitForEnd()
    {
        waitUntil([this] { return runner->runningCount() == 0; }, u"all scripts had ended"_s);
    }
    [[nodiscard]] QByteArray content(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] qint64 number(const char *file) const { return content(QLatin1String(file)).trimmed().toLongLong(); }
    [[nodiscard]] QStringList leftScripts() const
    {
        return QDir(folder.filePath(u"orbita-toolkit"_s)).entryList(QDir::Files);
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
    EXPECT_EQ(content(u"mode"_s), "600\n");
    EXPECT_EQ(QString::fromUtf8(content(u"folder"_s).trimmed()), QDir::homePath());
    const auto ids = content(u"ids"_s).simplified().split(' ');
    EXPECT_EQ(ids.value(0), ids.value(1)) << "a session of its own";
    EXPECT_TRUE(leftScripts().isEmpty());
    EXPECT_TRUE(notifications.notifications.isEmpty());
}

TEST_F(ProcessScriptRunnerTest, gives_any_other_script_to_its_program)
{
    run(u"echo 'quotes \" and $x' > %1/written"_s);
    waitForEnd();
    EXPECT_EQ(content(u"written"_s), "quotes \" and $x\n");
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
    run(u"#!/bin/sh\necho $$ > %1/mild; exec sleep 600"_s);
    for (const char *file : {"child", "parent", "mild"})
        waitUntil([&] { return number(file) > 0; }, QLatin1String(file));
    runner->stopAll();
    waitForEnd();
    for (const char *file : {"child", "parent", "mild"})
        EXPECT_TRUE(eventually([&] { return hasEnded(number(file)); })) << file;
    EXPECT_TRUE(notifications.notifications.isEmpty()) << "nobody has to be told of what was asked for";
    EXPECT_TRUE(leftScripts().isEmpty());
}

TEST_F(ProcessScriptRunnerTest, leaves_running_what_a_script_leaves_running)
{
    // What is left writes on when the script has ended, and the companion, and must not be ended by that.
    run(QStringLiteral("#!/bin/sh\nwait_for() { while [ ! -e %1/$1 ]; do sleep 0.01; done; }\n"
                       "{ wait_for go; echo text; touch %1/lived; wait_for on;"
                       " head -c 1000000 /dev/zero && echo text >&2; echo $? > %1/status; } &\n"));
    waitForEnd();
    const auto proceed = [this](const QString &file) { QFile(folder.filePath(file)).open(QIODevice::WriteOnly); };
    proceed(u"go"_s);
    waitUntil([this] { return has(u"lived"_s); }, u"it wrote"_s);
    runner.reset();
    proceed(u"on"_s);
    waitUntil([this] { return content(u"status"_s) == "0\n"; }, u"it wrote without a reader of ours"_s);
}

TEST_F(ProcessScriptRunnerTest, passes_on_so_much_of_endless_output)
{
    testing::internal::CaptureStderr();
    run(u"#!/bin/sh\nhead -c 5000000 /dev/zero; touch %1/done"_s);
    waitForEnd();
    const std::string passedOn = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(has(u"done"_s));
    EXPECT_GE(passedOn.size(), std::size_t(ScriptOutput::maximumSize));
    EXPECT_LE(passedOn.size(), std::size_t(ScriptOutput::maximumSize) + 200);
}

TEST_F(ProcessScriptRunnerTest, ends_its_scripts_and_removes_what_a_crash_left)
{
    run(u"#!/bin/sh\necho $$ > %1/endless; while :; do :; done"_s);
    waitUntil([&] { return number("endless") > 0; }, u"it ran"_s);
    QFile left(folder.filePath(u"orbita-toolkit/script-left"_s));
    EXPECT_TRUE(left.open(QIODevice::WriteOnly));
    runner.reset();
    EXPECT_TRUE(eventually([&] { return hasEnded(number("endless")); }));
    runner.emplace(u"/bin/sh"_s, notifications);
    EXPECT_TRUE(leftScripts().isEmpty());
}

} // namespace
