#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"
#include "platform/desktop/DesktopApplication.h"

#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace Orbita {

namespace {

/// A desktop on which scripts run.
class ScriptProgram : public testing::Test {
protected:
    DesktopSession desktop;

    /// Starts `orbita-script` with \a script. A "%1" in it is the session's home.
    Program &start(const QString &script, const QProcessEnvironment &environment = {})
    {
        const QString file = desktop.folders().write(u"script"_s, script.toUtf8().replace("%1", home().toUtf8()));
        // The shell is replaced by the program, which then has its process number.
        return desktop.start(u"sh"_s, {u"-c"_s, u"exec orbita-script <\"$0\""_s, file}, environment);
    }
    /// The last line that \a script wrote; it has to end with \a status.
    QString run(const QString &script, int status = 0, const QProcessEnvironment &environment = {})
    {
        Program &program = start(script, environment);
        EXPECT_EQ(program.waitForExit(), status) << program.lines().join(u'\n').toStdString();
        return program.lines().value(program.lines().size() - 1);
    }
    [[nodiscard]] QString home() const { return desktop.folders().home(); }
    WindowInfo dialog()
    {
        WindowInfo window = desktop.windows().waitForWindow(u"orbita-script"_s);
        waitUntil([&] { return desktop.windows().activeWindow() == window.id; }, u"the dialog has the keyboard"_s);
        desktop.windows().waitUntilHandled(window.id);
        return window;
    }
    [[nodiscard]] QByteArray fileWritten(const QString &name) const
    {
        QFile file(home() + u'/' + name);
        EXPECT_TRUE(eventually([&] { return file.exists() && file.size() > 0; })) << name.toStdString();
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }
};

TEST_F(ScriptProgram, AsksInADialogThatComesToTheFront)
{
    Program &script = start(u"display dialog \"Name?\" default answer \"\"\nlog text returned of result"_s);
    dialog();
    desktop.input().type(u"Ada"_s);
    desktop.input().tap(u"Return"_s);
    EXPECT_EQ(script.waitForExit(), 0);
    EXPECT_TRUE(script.lines().contains(u"Ada"_s));

    Program &cancelled = start(u"display dialog \"Go on?\"\nlog \"went on\""_s);
    dialog();
    desktop.input().tap(u"Escape"_s);
    EXPECT_EQ(cancelled.waitForExit(), 0);
    EXPECT_FALSE(cancelled.lines().contains(u"went on"_s));
}

TEST_F(ScriptProgram, ShowsAProblemInADialog)
{
    for (const QString &script : {u"if 1 display"_s, u"log 1\nerror \"No.\""_s, u"say \u0000"_s}) {
        Program &program = start(script);
        dialog();
        desktop.input().tap(u"Return"_s);
        EXPECT_EQ(program.waitForExit(), 1);
    }
}

TEST_F(ScriptProgram, WritesAProblemWhereThereIsNoDisplay)
{
    QProcessEnvironment blind;
    blind.insert(u"DISPLAY"_s, QString());
    EXPECT_EQ(run(u"do shell script \"exit 3\""_s, 1, blind),
              u"orbita-script: line 1: The command ended with the status 3."_s);
    EXPECT_TRUE(run(u"display dialog \"Hello\""_s, 1, blind).contains(u"no display"_s));
    EXPECT_EQ(run(u"log 1 + 1"_s, 0, blind), u"2"_s);
}

TEST_F(ScriptProgram, HasLimitedMemoryAndGivesItsChildrenTheLimitThatItHad)
{
    const QString limit
        = u"do shell script \"sed -n 's/Max address space *\\\\([^ ]*\\\\).*/\\\\1/p' /proc/%1/limits\"\nlog result"_s;
    EXPECT_EQ(run(QString(limit).replace("%1"_L1, "$$"_L1)), u"unlimited"_s);
    EXPECT_GT(run(QString(limit).replace("%1"_L1, "$PPID"_L1)).toULongLong(), 2ULL << 30);
#ifndef __SANITIZE_ADDRESS__ // which ends the program where memory does
    QProcessEnvironment blind;
    blind.insert(u"DISPLAY"_s, QString());
    const QString glutton = u"set t to \"x\"\nrepeat 24 times\nset t to t & t\nend repeat\nset l to {}\n"
                            "repeat with i from 1 to 1000000\nset end of l to t & i\nend repeat"_s;
    EXPECT_TRUE(run(glutton, 1, blind).contains(u"more memory than there is"_s));
#endif
}

TEST_F(ScriptProgram, LeavesItsTextOnTheClipboard)
{
    const qsizetype before = desktop.processes().all().size();
    run(u"set the clipboard to \"Grüße\" & return & \"zwei\""_s);
    EXPECT_EQ(desktop.processes().all().size(), before + 1) << "somebody hands it out";
    EXPECT_EQ(run(u"if (the clipboard) is \"Grüße\" & return & \"zwei\" then log \"same\""_s), u"same"_s);
    run(u"set the clipboard to \"\""_s);
    EXPECT_EQ(run(u"log \"<\" & (the clipboard) & \">\""_s), u"<>"_s);
    EXPECT_TRUE(eventually([&] { return desktop.processes().all().size() <= before + 1; }))
        << "the first one has ended";
}

TEST_F(ScriptProgram, EndsAtOnceWithWhatItStarted)
{
    Program &loop = start(u"log \"looping\"\nrepeat\nend repeat"_s);
    loop.waitForOutput(u"looping"_s);
    EXPECT_EQ(loop.terminate(), 128 + SIGTERM);

    Program &shell = start(u"do shell script \"sh -c 'sleep 1000 & echo $! $$ $PPID >%1/pids; wait'; true\""_s);
    const auto pids = fileWritten(u"pids"_s).simplified().split(' ');
    ASSERT_EQ(pids.size(), 3) << "what the command had started, that, and the command's shell";
    ASSERT_FALSE(hasEnded(pids[0].toLongLong()));
    EXPECT_EQ(shell.terminate(), 128 + SIGTERM);
    for (const QByteArray &pid : pids)
        EXPECT_TRUE(eventually([&] { return hasEnded(pid.toLongLong()); })) << pid.constData();
}

TEST_F(ScriptProgram, LeavesWhatGoesOnInTheBackgroundAPipeToWriteTo)
{
    ASSERT_EQ(::mkfifo(qPrintable(home() + u"/go"_s), 0600), 0);
    run(u"do shell script \"(cat %1/go; echo out; echo error >&2; echo done >%1/done) &\""_s);
    QFile go(home() + u"/go"_s);
    ASSERT_TRUE(go.open(QIODevice::WriteOnly));
    go.close();
    EXPECT_EQ(fileWritten(u"done"_s), "done");
}

TEST_F(ScriptProgram, WaitsUntilAnApplicationThatTheBusStartsHasItsDocument)
{
    const QString id = u"org.example.Slow"_s;
    desktop.folders().installApplication(id,
                                         "[Desktop Entry]\nType=Application\nName=Slow\nExec=true %u\n"
                                         "DBusActivatable=true\n");
    // The test itself takes the name, once the bus has asked for it and the script has had time to end.
    desktop.folders().write(desktop.folders().data() + u"/dbus-1/services/org.example.Slow.service"_s,
                            "[D-BUS Service]\nName=org.example.Slow\nExec=/bin/sh -c \"echo asked >" + home().toUtf8()
                                + "/asked\"\n");
    desktop.bus().call(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
                       u"ReloadConfig"_s);
    Program &script = start(u"tell application \"Slow\" to open POSIX file \"%1/script\""_s);
    EXPECT_EQ(fileWritten(u"asked"_s), "asked");
    DesktopApplication application(id);
    QStringList got;
    QObject::connect(&application, &DesktopApplication::opened, &application,
                     [&got](const QStringList &urls) { got += urls; });
    EXPECT_EQ(application.registerOn(desktop.bus().connection()), DesktopApplication::Registration::Registered);
    EXPECT_TRUE(eventually([&] { return !got.isEmpty(); }));
    EXPECT_EQ(script.waitForExit(), 0);
}

TEST_F(ScriptProgram, DoesNotOutliveItsDisplay)
{
    XServer display({640, 480}, desktop.environment());
    QProcessEnvironment environment;
    environment.insert(u"DISPLAY"_s, QString::fromLatin1(display.display()));
    Program &script = start(u"display dialog \"Still there?\""_s, environment);
    {
        const XConnection connection(display.display());
        Windows(connection).waitForWindow(u"orbita-script"_s);
    }
    display.program().kill();
    EXPECT_NE(script.waitForExit(), 0);
}

TEST_F(ScriptProgram, StartsActivatesAndQuitsAnApplication)
{
    desktop.folders().installApplication(u"org.example.Plain"_s,
                                         "[Desktop Entry]\nType=Application\nName=Plain\nStartupWMClass=Plain\n"
                                         "Exec=sh -c \"echo [$QT_QPA_PLATFORM] $(readlink /proc/$$/fd/2) >"
                                             + home().toUtf8() + "/platform; exec plain-window --class Plain\"\n");
    run(u"tell application \"Plain\" to activate\nif application \"Plain\" is running then log \"runs\""_s);
    EXPECT_EQ(fileWritten(u"platform"_s), "[] /dev/null");
    const WindowInfo window = desktop.windows().waitForWindow(u"Plain"_s);
    EXPECT_EQ(run(u"tell application \"Plain\" to activate\nif application \"Plain\" is running then log \"runs\""_s),
              u"runs"_s);
    run(u"tell application \"Plain\" to quit"_s);
    EXPECT_TRUE(eventually([&] { return hasEnded(window.pid); }));
}

} // namespace

} // namespace Orbita
