#include "app/RunningEntries.h"

#include "model/CoreMenuItem.h"
#include "model/RunningAppMenuItem.h"
#include "support/MemoryDesktop.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

struct RunningEntriesTest : testing::Test {
    MemoryDesktop desktop;
    RunningEntriesOptions options;
    std::vector<MenuItem::Pointer> entries;

    [[nodiscard]] RunningEntriesPlan plan() const
    {
        return planRunningEntries(entries, desktop.runningApplications.runningApplications(), options);
    }
    [[nodiscard]] QStringList added() const
    {
        QStringList names;
        for (const RunningApplication &application : plan().applicationsToAdd)
            names.append(application.localizedName);
        return names;
    }
    RunningApplication start(const char *name)
    {
        const QString text = QString::fromLatin1(name);
        return desktop.runningApplications.start(u"/apps/%1.desktop"_s.arg(text), text);
    }
};

TEST_F(RunningEntriesTest, addsWhatNoEntryStandsForInTheDesktopsOrder)
{
    start("b");
    start("a");
    start("Mail");
    entries.push_back(std::make_shared<CoreMenuItem>(u"Mail"_s, desktop.services));
    EXPECT_EQ(added(), (QStringList{u"b"_s, u"a"_s}));
    for (const RunningApplication &application : plan().applicationsToAdd)
        entries.push_back(std::make_shared<RunningAppMenuItem>(application, desktop.services));
    EXPECT_TRUE(plan().isEmpty()) << "what was added is not added twice";
}

TEST_F(RunningEntriesTest, leavesOutWhatTheUserDoesNotWantAndTheFileManager)
{
    start("banned");
    start("files");
    RunningApplication background;
    background.localizedName = u"daemon"_s;
    desktop.runningApplications.add(background);
    options.blacklist = {u"/apps/banned.desktop"_s};
    options.fileManager = u"/apps/files.desktop"_s;
    EXPECT_TRUE(plan().isEmpty());

    start("editor");
    EXPECT_EQ(added(), QStringList(u"editor"_s));
    options.showsRunningApplications = false;
    EXPECT_TRUE(plan().isEmpty());
}

TEST_F(RunningEntriesTest, removesWhatHasEndedAndNothingElse)
{
    const auto tool = start("tool");
    const auto banned = start("banned");
    options.blacklist = {u"/apps/banned.desktop"_s};
    entries = {std::make_shared<CoreMenuItem>(u"Mail"_s, desktop.services),
               std::make_shared<RunningAppMenuItem>(tool, desktop.services),
               std::make_shared<RunningAppMenuItem>(banned, desktop.services)};
    EXPECT_TRUE(plan().isEmpty()) << "an application that still runs keeps its entry, blacklisted or not";
    desktop.runningApplications.terminate(tool);
    EXPECT_EQ(plan().entriesToRemove, std::vector<const MenuItem *>{entries[1].get()});
    EXPECT_TRUE(plan().applicationsToAdd.empty());
}

} // namespace
} // namespace Orbita
