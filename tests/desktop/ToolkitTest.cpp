// Orbita and its companion as a package installs them: what they say to each other over addresses that the desktop
// delivers, and what comes of it.

#include "desktop/OrbitaSession.h"
#include "platform/PropertyList.h"
#include "toolkit/EscapeCharacters.h"
#include "toolkit/VXRemoteAction.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

QVariantMap scriptEntry(const QString &name, const QString &script)
{
    return {
        {u"class"_s, u"AppleScriptMenuItem"_s}, {u"name"_s, name}, {u"imageKey"_s, QString()}, {u"script"_s, script}};
}

QVariantMap collectionEntry(const QString &name, const QVariantList &members)
{
    return {{u"class"_s, u"CollectionMenuItem"_s}, {u"name"_s, name}, {u"subitems"_s, members}};
}

/// A session in which both programs are installed.
class InstalledSession : public OrbitaSession {
public:
    /// \a entries are the user's.
    explicit InstalledSession(const QVariantList &entries = {})
        : OrbitaSession({.prefix = QStringLiteral(ORBITA_TEST_PREFIX)}, {{u"showFinder"_s, false}})
    {
        QDir().mkpath(QFileInfo(itemFile()).path());
        EXPECT_TRUE(PropertyList::write(itemFile(), entries, PropertyList::Format::Xml));
    }

    /// A script that makes the file \a name in the user's home.
    [[nodiscard]] QString leaves(const QString &name) { return u"do shell script \"touch %1\""_s.arg(path(name)); }
    [[nodiscard]] QString path(const QString &name) { return desktop().folders().home() + u'/' + name; }
    [[nodiscard]] bool hasFile(const QString &name) { return QFile::exists(path(name)); }
    void waitForFile(const QString &name)
    {
        waitUntil([&] { return hasFile(name); }, [&] { return name + u" was made; the log says:\n"_s + heard(); });
    }
    /// What either program has logged.
    [[nodiscard]] QString heard() { return QString::fromUtf8(log()) + desktop().busLines().join(u'\n'); }
    void waitForLog(const QString &words)
    {
        waitUntil([&] { return heard().contains(words); },
                  [&] { return u"the log says \"%1\"; it says:\n%2"_s.arg(words, heard()); });
    }

    /// The processes of the session that run the program called \a name.
    [[nodiscard]] QList<qint64> processes(const QString &name)
    {
        QList<qint64> found = desktop().processes().all();
        found.removeIf(
            [&](qint64 pid) { return QFileInfo(QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(pid))).fileName() != name; });
        return found;
    }

    /// Has the desktop open the address that asks the companion for the action \a name, as a web page could.
    void askToolkit(const QString &name, const VXRemoteAction::Parameters &parameters)
    {
        VXRemoteAction action(name);
        action.setParams(parameters);
        open(u"orbita-toolkit-com:"_s + stringByAddingEscapeCharacters(action.jsonRepresentation()));
    }
    void execute(const QString &script) { askToolkit(u"executeApplescript"_s, {{u"script"_s, script}}); }
    void open(const QString &url, const QProcessEnvironment &environment = {})
    {
        EXPECT_EQ(desktop().start(u"gio"_s, {u"open"_s, url}, environment).waitForExit(), 0)
            << qPrintable(url.left(80));
    }
    /// Installs, in a folder before all others, a program that claims the companion's addresses and writes those that
    /// it is handed into the file "taken" in the user's home. Returns what programs have to see to find it.
    QProcessEnvironment installStranger()
    {
        const SessionFolders &folders = desktop().folders();
        const QString program = folders.write(u"stranger.sh"_s, "echo \"$1\" >>\"$HOME/taken\"\n");
        folders.write(u"before/applications/stranger.desktop"_s,
                      "[Desktop Entry]\nType=Application\nName=Stranger\nExec=sh " + program.toUtf8()
                          + " %u\nMimeType=x-scheme-handler/orbita-toolkit-com;\n");
        folders.write(u"before/applications/mimeinfo.cache"_s,
                      "[MIME Cache]\nx-scheme-handler/orbita-toolkit-com=stranger.desktop;\n");
        const QString variable = u"XDG_DATA_DIRS"_s;
        QProcessEnvironment environment;
        environment.insert(variable, path(u"before"_s) + u':' + desktop().environment().value(variable));
        return environment;
    }
    /// Starts Orbita, and returns when it and its companion have found each other.
    void startBoth(const QProcessEnvironment &environment = {})
    {
        desktop().start(u"orbita"_s, {}, environment);
        desktop().bus().waitForName(u"org.orbita.Orbita"_s);
        desktop().bus().waitForName(u"org.orbita.Toolkit"_s);
    }
    /// Chooses the only entry of the menu of a running application.
    void quitFromRing(const QString &application)
    {
        openMenu(application);
        input().tap(u"Down"_s);
        input().tap(u"Return"_s);
    }
};

TEST(Toolkit, isStartedWithOrbitaAndEndsWithIt)
{
    InstalledSession session;
    session.orbita(u"show"_s);
    session.waitForRing();
    session.waitForLog(u"toolkit is up to date."_s);
    const qint64 companion = session.desktop().bus().pidOf(u"org.orbita.Toolkit"_s);
    session.orbita(u"quit"_s);
    waitUntil([&] { return hasEnded(companion); }, u"the companion ends"_s);
}

TEST(Toolkit, endsWithAnOrbitaThatQuitsBeforeItHasCome)
{
    InstalledSession session;
    const auto isRunning = [&session](const QString &program) {
        return std::ranges::any_of(session.desktop().processes().all(), [&program](qint64 pid) {
            return QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(pid)).endsWith(program) && !hasEnded(pid);
        });
    };
    session.orbita(u"show"_s);
    session.orbita(u"quit"_s);
    waitUntil([&] { return !isRunning(u"/orbita-desktop"_s); }, u"Orbita ends"_s);
    waitUntil([&] { return !isRunning(u"/orbita-toolkit"_s); }, u"the companion ends"_s);
    EXPECT_FALSE(session.heard().contains(u"Refused"_s)) << qPrintable(session.heard());
}

TEST(Toolkit, runsAScriptFromTheRing)
{
    InstalledSession session({scriptEntry(u"Hello"_s, u"display dialog \"Good morning\""_s)});
    session.show();
    session.clickItem(u"Hello"_s);
    session.waitUntilHidden();
    const auto text = session.desktop().accessibility().waitFor(u"orbita-script"_s, u"label"_s, u"Good morning"_s);
    const WindowInfo dialog = session.windows().waitFor(withClass(u"orbita-script"_s), u"the dialog"_s);
    EXPECT_TRUE(dialog.geometry.contains(text.extents));
    session.waitUntilActive(dialog);
    session.input().tap(u"Return"_s);
    waitUntil([&] { return hasEnded(dialog.pid); }, u"the script has ended"_s);
}

TEST(Toolkit, runsOnlyWhatIsAmongTheUsersEntries)
{
    InstalledSession session;
    const QString own = session.leaves(u"own"_s);
    const QString grouped = u"#!/bin/sh\ntouch "_s + session.path(u"grouped"_s);
    const QString deep = session.leaves(u"deep"_s);
    const QVariantList entries{
        scriptEntry(u"Own"_s, own),
        collectionEntry(
            u"Group"_s,
            {scriptEntry(u"Grouped"_s, grouped), collectionEntry(u"Inner"_s, {scriptEntry(u"Deep"_s, deep)})}),
    };
    EXPECT_TRUE(PropertyList::write(session.itemFile(), entries, PropertyList::Format::Binary));
    session.startBoth();
    session.execute(session.leaves(u"strange"_s));
    session.execute(deep);
    session.execute(session.leaves(u"own"_s).replace(u"/own"_s, u"/altered"_s));
    session.askToolkit(u"eraseEverything"_s, {{u"script"_s, own}});
    // Questions are answered in turn, so what was to be refused has been by the time that these have run.
    session.execute(grouped);
    session.execute(own);
    session.waitForFile(u"grouped"_s);
    session.waitForFile(u"own"_s);
    EXPECT_FALSE(session.hasFile(u"strange"_s));
    EXPECT_FALSE(session.hasFile(u"altered"_s));
    EXPECT_FALSE(session.hasFile(u"deep"_s)) << "it lies two levels deep";
    EXPECT_TRUE(session.heard().contains(u"Refused: an unknown action"_s)) << qPrintable(session.heard());
}

TEST(Toolkit, getsItsMessagesAlthoughAnotherProgramClaimsThem)
{
    InstalledSession session;
    ASSERT_TRUE(PropertyList::write(session.itemFile(), QVariantList{scriptEntry(u"Own"_s, session.leaves(u"own"_s))},
                                    PropertyList::Format::Xml));
    const QProcessEnvironment environment = session.installStranger();
    session.startBoth(environment);
    session.show();
    session.clickItem(u"Own"_s);
    session.waitForFile(u"own"_s);
    session.orbita(u"quit"_s);
    waitUntil([&] { return !session.desktop().bus().hasOwner(u"org.orbita.Toolkit"_s); }, u"the companion ends"_s);
    const auto taken = [&session] {
        QFile file(session.path(u"taken"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    session.open(u"orbita-toolkit-com:others"_s, environment);
    waitUntil([&] { return !taken().isEmpty(); }, u"the desktop prefers the stranger"_s);
    EXPECT_EQ(taken(), "orbita-toolkit-com:others\n");
}

TEST(Toolkit, stopsScriptsThatRunForEver)
{
    InstalledSession session;
    const QString script = session.leaves(u"begun"_s) + u"\nrepeat\nend repeat"_s;
    ASSERT_TRUE(PropertyList::write(session.itemFile(), QVariantList{scriptEntry(u"Loop"_s, script)},
                                    PropertyList::Format::Xml));
    session.startBoth();
    session.show();
    session.clickItem(u"Loop"_s);
    session.waitForFile(u"begun"_s);
    const auto scripts = [&] { return session.processes(u"orbita-script"_s); };
    ASSERT_EQ(scripts().size(), 1);
    const qint64 running = scripts().first();
    session.orbita(u"stop-scripts"_s);
    waitUntil([&] { return hasEnded(running); }, u"the script has ended"_s);
    EXPECT_TRUE(session.desktop().bus().hasOwner(u"org.orbita.Toolkit"_s));
}

TEST(Toolkit, quitsAnApplicationFromItsEntryAndForNobodyElse)
{
    InstalledSession session;
    session.install(u"Notes"_s, u"Notes"_s);
    Program &notes = session.startWindow(u"Notes"_s);
    session.startBoth();
    session.askToolkit(u"terminate"_s, {{u"processId"_s, QString::number(notes.pid())}});
    session.waitForLog(u"Refused: to quit an application or to end"_s);
    EXPECT_TRUE(notes.isRunning());
    session.show();
    session.quitFromRing(u"Notes"_s);
    EXPECT_EQ(notes.waitForExit(), 0) << "it was asked, not killed";
    EXPECT_TRUE(session.ring()) << "the ring stays";
}

TEST(Toolkit, letsAnApplicationAskForWhatIsNotSaved)
{
    InstalledSession session;
    session.startBoth();
    Program &editor = session.desktop().start(u"mousepad"_s);
    const WindowInfo window = session.windows().waitForWindow(u"mousepad"_s);
    session.activate(window);
    session.input().type(u"draft"_s);
    session.windows().waitFor([](const WindowInfo &one) { return one.title.startsWith(u'*'); }, u"the unsaved mark"_s);
    session.show();
    session.quitFromRing(session.names().last());
    session.windows().waitFor(
        [&](const WindowInfo &one) { return one.pid == window.pid && one.id != window.id && one.managed; },
        u"the question whether to save"_s);
    EXPECT_TRUE(editor.isRunning());
}

} // namespace
} // namespace Orbita
