#include "PrivateSession.h"

#include "platform/desktop/CoreApplications.h"
#include "platform/desktop/DesktopFile.h"

#include <QCoreApplication>
#include <QFile>

#include <gtest/gtest.h>

namespace Orbita {

namespace {

QString s(const char *text)
{
    return QLatin1String(text);
}

TEST(CoreApplications, TheFirstCandidateThatIsThereIsRememberedUntilCleared)
{
    QStringList installed{s("b.desktop"), s("c.desktop")};
    int lookups = 0;
    CoreApplications applications({{s("Role"), {s("a.desktop"), s("b.desktop"), s("c.desktop")}}},
                                  [&](const QString &candidate) -> std::optional<QString> {
                                      ++lookups;
                                      return installed.contains(candidate) ? std::optional(s("/") + candidate)
                                                                           : std::nullopt;
                                  });
    EXPECT_EQ(applications.find(s("Role")), s("/b.desktop"));
    EXPECT_EQ(applications.find(s("Role")), s("/b.desktop"));
    EXPECT_EQ(lookups, 2);
    installed.clear();
    applications.clear();
    EXPECT_EQ(applications.find(s("Role")), std::nullopt);
    EXPECT_EQ(applications.find(s("Other")), std::nullopt);
}

TEST(CoreApplications, TheTableHasTheSixRolesAndEveryCandidateIsWellFormed)
{
    const auto table = CoreApplications::bundledTable();
    EXPECT_EQ(table.size(), 6);
    for (const char *role : {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"})
        EXPECT_FALSE(table.value(s(role)).isEmpty()) << role;
    for (const QString &candidate : table[s("Launchpad")] + table[s("Finder")] + table[s("Mail")]) {
        if (candidate.startsWith(u':'))
            EXPECT_TRUE(DesktopFile::read(candidate)) << qPrintable(candidate);
        else
            EXPECT_TRUE(candidate.endsWith(s(".desktop")) || candidate.contains(u':')) << qPrintable(candidate);
    }
}

class LookUp : public testing::Test {
protected:
    void SetUp() override
    {
        PrivateSession::clear();
        probe.emplace("program");
    }

    std::optional<Probe> probe;
};

TEST_F(LookUp, FindsHandlersAndIds)
{
    const QString path
        = PrivateSession::install("music", probe->desktopFile("%p %U", "MimeType=audio/mpeg;x-scheme-handler/https;"));
    EXPECT_EQ(CoreApplications::lookUp(s("mime:audio/mpeg")), std::nullopt);
    PrivateSession::associate("audio/mpeg", "music");
    PrivateSession::associate("x-scheme-handler/https", "music");
    // Reading the defaults anew takes GIO a notice from the file system.
    EXPECT_TRUE(eventually([&] { return CoreApplications::lookUp(s("mime:audio/mpeg")) == path; }));
    EXPECT_EQ(CoreApplications::lookUp(s("scheme:https")), path);
    EXPECT_EQ(CoreApplications::lookUp(s("music.desktop")), path);
    EXPECT_EQ(CoreApplications::lookUp(s("none.desktop")), std::nullopt);
}

TEST_F(LookUp, PassesOverOrbitaAndOtherDesktopsApplications)
{
    PrivateSession::install("org.orbita.Orbita", probe->desktopFile());
    PrivateSession::install("self",
                            "[Desktop Entry]\nType=Application\nName=Me\nExec="
                                + QFile::encodeName(QCoreApplication::applicationFilePath()) + "\n");
    PrivateSession::install("elsewhere", probe->desktopFile("%p", "OnlyShowIn=Elsewhere;"));
    PrivateSession::install("here", probe->desktopFile("%p", "OnlyShowIn=Here;"));
    EXPECT_TRUE(eventually([] { return CoreApplications::lookUp(s("here.desktop")).has_value(); }));
    EXPECT_EQ(CoreApplications::lookUp(s("org.orbita.Orbita.desktop")), std::nullopt);
    EXPECT_EQ(CoreApplications::lookUp(s("self.desktop")), std::nullopt);
    EXPECT_EQ(CoreApplications::lookUp(s("elsewhere.desktop")), std::nullopt);
}

} // namespace

} // namespace Orbita
