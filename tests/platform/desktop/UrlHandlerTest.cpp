#include "PrivateSession.h"

#include "platform/desktop/ApplicationClient.h"
#include "platform/desktop/DefaultApplications.h"
#include "platform/desktop/DesktopApplication.h"
#include "platform/desktop/GioUrlHandler.h"
#include "platform/desktop/StartupNotifier.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryUrlHandler.h"

#include <QDBusMessage>
#include <QFile>

#include <algorithm>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

/// Escapes, and what a reader of addresses would change or cut.
const QStringList addresses{u"x-test:"_s, u"x-test:%7B%22a%22%3A%20%2B1%7d"_s, u"x-test:/../a//b?c=\"'$(d) e#%zz ä"_s,
                            u"x-test:"_s + QString(1024 * 1024, u'a')};

const QByteArray failingService = "[D-BUS Service]\nName=org.example.Url-Test\nExec=/bin/false\n";

/// A program that takes addresses on the bus while this object lives.
struct Recipient {
    Recipient()
    {
        QObject::connect(&application, &DesktopApplication::opened, &application,
                         [this](const QStringList &urls) { opened += urls; });
        EXPECT_EQ(application.registerOn(bus), DesktopApplication::Registration::Registered);
    }
    ~Recipient() { QDBusConnection::disconnectFromBus(u"recipient"_s); }

    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"recipient"_s);
    DesktopApplication application{u"org.example.Url-Test"_s};
    QStringList opened;
};

class UrlHandlerTest : public testing::Test {
protected:
    /// GIO takes note of what is installed on a thread of its own.
    static void waitUntilHandled(const QString &scheme)
    {
        EXPECT_TRUE(eventually([&] { return schemeHandler(scheme) != nullptr; })) << qPrintable(scheme);
    }
    void install(const QByteArray &more)
    {
        PrivateSession::install("org.example.Url-Test", probe.desktopFile("\"%p\" %u", more));
        PrivateSession::associate("x-scheme-handler/x-test", "org.example.Url-Test");
        waitUntilHandled(u"x-test"_s);
    }
    /// Has another program than the own one registered for the own scheme.
    static void claimOwnScheme(const Probe &stranger)
    {
        PrivateSession::install("org.example.Stranger", stranger.desktopFile("\"%p\" %u"));
        PrivateSession::associate("x-scheme-handler/x-own", "org.example.Stranger");
        waitUntilHandled(u"x-own"_s);
    }
    /// Whether the own program comes, or goes.
    bool becomesReachable(bool is) const
    {
        return eventually([&] { return handler.isSchemeHandled(u"x-own"_s) == is; });
    }
    static void removeEntry()
    {
        QFile::remove(PrivateSession::path(".local/share/applications/org.example.Url-Test.desktop"));
    }
    /// Gives the bus \a service as what it can start; none where that is empty.
    static void setService(const QByteArray &service)
    {
        const QString file = PrivateSession::write(".local/share/dbus-1/services/a.service", service);
        if (service.isEmpty())
            QFile::remove(file);
        const auto daemon = u"org.freedesktop.DBus"_s;
        QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(daemon, u"/org/freedesktop/DBus"_s, daemon, u"ReloadConfig"_s));
    }
    static void openAll(UrlHandler &tested)
    {
        for (const QString &address : addresses)
            tested.openUrl(address);
    }

    MemoryScheduler scheduler;
    Probe probe = [] {
        PrivateSession::clear();
        return Probe("url program");
    }();
    const QList<ProgramNames> ownPrograms{{u"org.example.Url-Test"_s, u"x-own"_s}};
    GioUrlHandler handler{QDBusConnection::sessionBus(), scheduler, std::make_unique<NoStartupNotifier>(), ownPrograms};
    GioUrlHandler busless{QDBusConnection(u"none"_s), scheduler, std::make_unique<NoStartupNotifier>(), ownPrograms};
};

TEST_F(UrlHandlerTest, AddressesOfARegisteredSchemeArriveVerbatimAndInOrder)
{
    install("DBusActivatable=true");
    const Recipient recipient;
    MemoryUrlHandler memory;
    memory.schemes = {u"x-test"_s};
    for (auto [tested, opened] :
         {std::pair<UrlHandler *, const QStringList *>{&memory, &memory.opened}, {&handler, &recipient.opened}}) {
        EXPECT_TRUE(tested->isSchemeHandled(u"x-test"_s));
        for (const QString &other : {u"x-other"_s, QString(), u"x-test:"_s, u"/"_s})
            EXPECT_FALSE(tested->isSchemeHandled(other)) << qPrintable(other);
        openAll(*tested);
        EXPECT_TRUE(eventually([&, all = opened] { return all->size() >= addresses.size(); }));
        EXPECT_EQ(*opened, addresses);
    }
    EXPECT_FALSE(probe.wasStarted());
}

TEST_F(UrlHandlerTest, AProgramThatIsNotThereHandlesNothing)
{
    for (const char *more : {"", "DBusActivatable=true"}) {
        install(more);
        EXPECT_TRUE(handler.isSchemeHandled(u"x-test"_s)) << more;
        QFile::remove(probe.program());
        EXPECT_FALSE(handler.isSchemeHandled(u"x-test"_s)) << more;
        probe = Probe("url program");
    }
}

TEST_F(UrlHandlerTest, AFloodStartsOneProgramAndWaitsForIt)
{
    install("DBusActivatable=true");
    QStringList flood;
    for (int i = 0; i < 10'000; ++i) {
        flood.append(u"x-test:%1"_s.arg(i));
        handler.openUrl(flood.last());
    }
    EXPECT_EQ(probe.waitForStart()["argument"], QStringList());
    openAll(handler);
    const Recipient recipient;
    EXPECT_TRUE(eventually([&] { return recipient.opened.size() >= flood.size() + addresses.size(); }));
    EXPECT_EQ(recipient.opened, flood + addresses);
    EXPECT_FALSE(probe.wasStarted());
}

TEST_F(UrlHandlerTest, MoreThan64MiBDoNotWait)
{
    install("DBusActivatable=true");
    const QString long2MiB = u"x-test:"_s + QString(1024 * 1024 - 7, u'a');
    testing::internal::CaptureStderr();
    for (int i = 0; i < 35; ++i)
        handler.openUrl(long2MiB);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    static_cast<void>(probe.waitForStart());
    const Recipient recipient;
    EXPECT_TRUE(eventually([&] { return recipient.opened.size() >= 32; }));
    handler.openUrl(addresses[0]);
    EXPECT_TRUE(eventually([&] { return recipient.opened.contains(addresses[0]); }));
    EXPECT_EQ(recipient.opened.size(), 33);
}

TEST_F(UrlHandlerTest, AProgramThatDoesNotComeLosesItsAddressesAndIsStartedAnewForTheNext)
{
    install("DBusActivatable=true");
    openAll(handler);
    static_cast<void>(probe.waitForStart());
    scheduler.advance(std::chrono::seconds(31));
    // Now the bus has a command for it that fails.
    setService(failingService);
    handler.openUrl(u"x-test:next"_s);
    static_cast<void>(probe.waitForStart());
    const Recipient recipient;
    EXPECT_TRUE(eventually([&] { return !recipient.opened.isEmpty(); }));
    EXPECT_EQ(recipient.opened, QStringList(u"x-test:next"_s));
}

TEST_F(UrlHandlerTest, TheCommandLineCarriesWhatTheBusCannot)
{
    const Recipient unasked;
    for (auto [more, tested] : {std::pair<const char *, GioUrlHandler *>{"", &handler},
                                {"DBusActivatable=false", &handler},
                                {"DBusActivatable=true", &busless}}) {
        install(more);
        const QString longest = u"x-test:"_s + QString(119 * 1024, u'a');
        for (const QString &address : {addresses[1], addresses[2], longest}) {
            tested->openUrl(longest + longest); // not sent
            tested->openUrl(address);
            EXPECT_EQ(probe.waitForStart()["argument"], QStringList(address)) << more;
        }
        EXPECT_FALSE(probe.wasStarted());
    }
    EXPECT_TRUE(unasked.opened.isEmpty());
}

TEST_F(UrlHandlerTest, AClientThatStartsNothingReachesOnlyWhatRuns)
{
    setService("[D-BUS Service]\nName=org.example.Url-Test\nExec=\"" + QFile::encodeName(probe.program()) + "\"\n");
    ApplicationClient client(QDBusConnection::sessionBus(), u"org.example.Url-Test"_s, scheduler,
                             ApplicationClient::Starts::No);
    client.open(addresses[0]);
    client.flush();
    EXPECT_FALSE(probe.wasStarted());
    const Recipient recipient;
    EXPECT_TRUE(eventually([&] {
        client.open(addresses[1]);
        return !recipient.opened.isEmpty();
    }));
    EXPECT_EQ(recipient.opened.first(), addresses[1]);
}

TEST_F(UrlHandlerTest, AnOwnProgramIsReachedByItsNamesWhoeverClaimsItsScheme)
{
    const Probe stranger("stranger");
    install("");
    claimOwnScheme(stranger);
    handler.openUrl(u"x-own:1"_s);
    EXPECT_EQ(probe.waitForStart()["argument"], QStringList()) << "the bus carries what it is to open";
    const Recipient recipient;
    EXPECT_TRUE(eventually([&] { return recipient.opened.size() == 1; }));
    removeEntry();
    handler.openUrl(u"x-own:2"_s);
    EXPECT_TRUE(eventually([&] { return recipient.opened.size() == 2; }));
    EXPECT_EQ(recipient.opened, (QStringList{u"x-own:1"_s, u"x-own:2"_s}));
    EXPECT_FALSE(stranger.wasStarted());
}

TEST_F(UrlHandlerTest, AnOwnProgramWithoutAnEntryIsThereWhileTheBusKnowsIt)
{
    setService({});
    EXPECT_TRUE(becomesReachable(false));
    {
        const Recipient recipient;
        EXPECT_TRUE(becomesReachable(true));
    }
    EXPECT_TRUE(becomesReachable(false));
    setService(failingService);
    EXPECT_TRUE(becomesReachable(true));
    EXPECT_FALSE(busless.isSchemeHandled(u"x-own"_s));
    setService({});
    EXPECT_TRUE(becomesReachable(false));
}

TEST_F(UrlHandlerTest, OnlyTheBareAddressOfAnOwnSchemeGoesOnACommandLine)
{
    const auto expectBareAlone = [this](UrlHandler &tested) {
        testing::internal::CaptureStderr();
        tested.openUrl(u"x-own:secret"_s);
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
        EXPECT_EQ(log.find("secret"), std::string::npos) << log;
        tested.openUrl(u"x-own:"_s);
        EXPECT_EQ(probe.waitForStart()["argument"], QStringList(u"x-own:"_s));
    };
    setService({});
    EXPECT_TRUE(becomesReachable(false));
    install("DBusActivatable=true");
    EXPECT_TRUE(becomesReachable(true));
    expectBareAlone(busless);
    removeEntry();
    claimOwnScheme(probe);
    expectBareAlone(handler);
}

} // namespace
} // namespace Orbita
