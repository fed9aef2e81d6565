#include "companion/host/ScriptApplications.h"
#include "companion/host/ApplicationLauncher.h"
#include "desktop/harness/Wait.h"
#include "platform/desktop/ApplicationIndex.h"
#include "platform/desktop/StartupNotifier.h"
#include "platform/memory/MemoryRunningApplications.h"
#include "platform/memory/MemoryWorkspace.h"
#include "support/RowName.h"
#include "support/TemporaryContainer.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace Orbita {

namespace {

/// Three applications on a disk, of which one runs, and what is done to them.
class ApplicationsDesktop {
public:
    /// GLib looks only once where applications are installed.
    static const TemporaryContainer &folder()
    {
        static const TemporaryContainer container;
        return container;
    }
    static QString pathTo(const QString &file) { return folder().path(u"share/applications/"_s + file); }
    static void install()
    {
        const auto write = [](const QString &file, const QByteArray &lines) {
            return folder().write(u"share/applications/"_s + file, "[Desktop Entry]\nType=Application\n" + lines);
        };
        qputenv("XDG_DATA_HOME", folder().path(u"share"_s).toUtf8());
        qputenv("LANGUAGE", "de");
        const QByteArray opened = folder().path(u"opened"_s).toUtf8();
        write(u"org.example.Sums.desktop"_s, "Name=Sums\nName[de]=Rechner\nExec=true\n");
        write(u"editor.desktop"_s,
              "Name=Ink\nExec=sh -c \"echo \\$0 >'" + opened
                  + "'\" %u\nActions=new-window;\n"
                    "[Desktop Action new-window]\nName=New\nExec=touch '"
                  + opened + "'\n");
        write(u"mailer.desktop"_s, "Name=Post\nExec=true\n");
    }

    MemoryWorkspace workspace;
    MemoryRunningApplications running;
    NoStartupNotifier notifier;
    ApplicationLauncher launcher{notifier};
    QStringList quits;
    ScriptApplications scripts{{workspace, running, launcher, readInstalledApplications,
                                [this](qint64 process) -> Result<void, QString> {
                                    if (process != 1234)
                                        return Failure(u"It may not be quit."_s);
                                    quits << u"quit 1234"_s;
                                    return {};
                                },
                                [] {}, [](const QString &) {}, [](const auto &condition) { return condition(); }}};

    ApplicationsDesktop()
    {
        workspace.coreApplications.insert(u"Mail"_s, pathTo(u"mailer.desktop"_s));
        RunningApplication mailer;
        mailer.bundlePath = pathTo(u"mailer.desktop"_s);
        mailer.localizedName = u"Post"_s;
        mailer.processIdentifier = 1234;
        running.add(mailer);
        running.bringToFront(running.start(QString(), u"Nameless"_s));
    }
    /// What was done, in short: paths without their folder.
    [[nodiscard]] QString done() const
    {
        QStringList all = workspace.actions + quits;
        for (const quint64 serial : running.activated)
            all << u"front %1"_s.arg(serial);
        return all.join(u", "_s).remove(pathTo(QString()));
    }
};

struct Row {
    const char *name;
    std::function<ScriptResult<void>(ScriptApplications &)> order;
    const char *done;
    const char *sentence = "";
};

class ScriptApplicationsOrder : public testing::TestWithParam<Row> {
protected:
    static void SetUpTestSuite() { ApplicationsDesktop::install(); }
};

TEST_P(ScriptApplicationsOrder, IsCarriedOut)
{
    ApplicationsDesktop desktop;
    const auto result = GetParam().order(desktop.scripts);
    EXPECT_EQ(result ? QString() : result.error().message, QString::fromUtf8(GetParam().sentence));
    EXPECT_EQ(desktop.done(), QString::fromUtf8(GetParam().done));
}

/// An order that takes nothing but an application.
template <auto order>
std::function<ScriptResult<void>(ScriptApplications &)> to(const char *application)
{
    return [application](ScriptApplications &scripts) { return (scripts.*order)(QString::fromUtf8(application)); };
}
constexpr auto activate = &ScriptApplications::activate;
constexpr auto launch = &ScriptApplications::launch;
constexpr auto quit = &ScriptApplications::quit;
constexpr auto makeNew = &ScriptApplications::makeNewDocument;

auto opening(const char *application, const char *what)
{
    return [=](ScriptApplications &scripts) {
        return scripts.open(QString::fromUtf8(application), {QString::fromUtf8(what)});
    };
}
auto openingLocation(const char *application, const char *url)
{
    return [=](ScriptApplications &scripts) {
        return scripts.openLocation(QString::fromUtf8(application), QString::fromUtf8(url));
    };
}

INSTANTIATE_TEST_SUITE_P(
    Orders, ScriptApplicationsOrder,
    testing::Values(
        Row{"one that is not running is started", to<activate>("Sums"), "launch org.example.Sums.desktop"},
        Row{"the name in the users language does too", to<activate>("rECHNER"), "launch org.example.Sums.desktop"},
        Row{"so does the desktop id", to<activate>("org.example.sums"), "launch org.example.Sums.desktop"},
        Row{"and a name that ends as a bundle does", to<activate>("Sums.app"), "launch org.example.Sums.desktop"},
        Row{"a core entry that runs comes to the front", to<activate>("mail"), "front 1"},
        Row{"one without a desktop file is known while it runs", to<activate>("nameless"), "front 2"},
        Row{"an unknown one is named", to<activate>("Fo\"o"), "", "There is no application called \"Fo\"o\"."},
        Row{"a path has to be of an application", to<activate>("/etc/passwd"), "",
            "There is no application called \"/etc/passwd\"."},
        Row{"launching gives the keyboard back", to<launch>("Sums"), "launch org.example.Sums.desktop, front 2"},
        Row{"launching what runs does nothing", to<launch>("Post"), ""},
        Row{"quitting asks the process", to<quit>("Post"), "quit 1234"},
        Row{"quitting what does not run is done", to<quit>("Sums"), ""},
        Row{"a refusal to quit is told", to<quit>("Nameless"), "", "It may not be quit."},
        Row{"without an action another start opens a window", to<makeNew>("Sums"), "launch org.example.Sums.desktop"},
        Row{"what has no desktop file makes nothing", to<makeNew>("Nameless"), "",
            "\"Nameless\" makes no new documents."},
        Row{"a file is opened with an application", opening("Ink", "/etc/passwd"),
            "open /etc/passwd with editor.desktop"},
        Row{"the file manager leaves it to the default one", opening("Finder", "/etc/passwd"), "open /etc/passwd"},
        Row{"a file that is not there is named", opening("", "/no/file"), "", "There is nothing at \"/no/file\"."},
        Row{"an address goes to the default application", openingLocation("", "https://example.org/a b"),
            "open https://example.org/a b"},
        Row{"a file address is a file", openingLocation("Ink", "file:///etc/passwd"),
            "open /etc/passwd with editor.desktop"},
        Row{"an address needs a scheme", openingLocation("", "example.org"), "",
            "\"example.org\" is no address with a scheme such as https."}),
    rowName<Row>);

TEST_F(ScriptApplicationsOrder, ReachesAnApplicationsActionAndHandsAddressesOver)
{
    ApplicationsDesktop desktop;
    const QString opened = ApplicationsDesktop::folder().path(u"opened"_s);
    const auto content = [&opened] { return TemporaryContainer::read(opened); };

    EXPECT_TRUE(desktop.scripts.makeNewDocument(u"Ink"_s));
    EXPECT_TRUE(eventually([&] { return QFile::exists(opened); }));
    EXPECT_TRUE(desktop.scripts.openLocation(u"Ink"_s, u"https://example.org/"_s));
    EXPECT_TRUE(eventually([&] { return content() == "https://example.org/\n"; })) << content().toStdString();
    EXPECT_EQ(desktop.done(), QString()) << "neither is a plain start";
}

} // namespace

} // namespace Orbita
