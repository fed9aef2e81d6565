#include "platform/Bookmark.h"
#include "platform/desktop/BackgroundFileLookup.h"
#include "platform/memory/MemoryFileLookup.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryWorkspace.h"

#include "desktop/harness/Wait.h"
#include "support/TemporaryContainer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <atomic>
#include <future>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;
using Presence = KnownFile::Presence;

QByteArray bookmarkOf(const QString &path)
{
    const auto bookmark = Bookmark::create(path);
    return bookmark ? *bookmark : QByteArray();
}

/// A look-up of either kind over the files of a test.
struct LookupDesktop {
    TemporaryContainer container;
    MemoryScheduler scheduler;
    MemoryWorkspace workspace;
    std::unique_ptr<FileLookup> files;

    /// What a look at the file of \a bookmark answers.
    KnownFile look(const QByteArray &bookmark) const
    {
        std::optional<KnownFile> answer;
        files->look(bookmark, [&answer](const KnownFile &file) { answer = file; });
        waitUntil([&answer] { return answer.has_value(); }, u"the look-up answers"_s);
        EXPECT_EQ(files->known(bookmark), answer);
        return *answer;
    }
};

class FileLookupContract : public testing::TestWithParam<const char *> {
protected:
    FileLookupContract()
    {
        if (QLatin1String(GetParam()) == "memory"_L1)
            desktop.files = std::make_unique<MemoryFileLookup>(desktop.workspace);
        else
            desktop.files = std::make_unique<BackgroundFileLookup>(
                desktop.scheduler, [this](const FileLook &look) { return desktop.workspace.icon(look.path); });
    }

    [[nodiscard]] FileLookup &files() const { return *desktop.files; }

    LookupDesktop desktop;
};

TEST_P(FileLookupContract, TellsWhatIsThereAndWhatIsNot)
{
    const QString document = desktop.container.write(u"papers/letter.txt"_s, "Dear reader");
    const QString folder = desktop.container.path(u"papers"_s);
    desktop.workspace.icons.insert(document, Image::named(u"Mail"_s));
    const QByteArray bookmark = bookmarkOf(document);
    EXPECT_EQ(files().known(bookmark), (KnownFile{Presence::Unknown, document, bookmark, {}, false}));
    EXPECT_EQ(desktop.look(bookmark),
              (KnownFile{Presence::Present, document, bookmark, Image::named(u"Mail"_s), false}));
    EXPECT_TRUE(desktop.look(bookmarkOf(folder)).isDirectory);

    const QString renamed = desktop.container.path(u"papers/note.txt"_s);
    ASSERT_TRUE(QFile::rename(document, renamed));
    EXPECT_EQ(desktop.look(bookmark).path, renamed);
    EXPECT_EQ(files().known(bookmark)->bookmark, bookmarkOf(renamed)) << "the stale one is to be replaced";

    ASSERT_TRUE(QFile::remove(renamed));
    const KnownFile missing = desktop.look(bookmark);
    EXPECT_EQ(missing.presence, Presence::Missing);
    EXPECT_EQ(missing.path, renamed) << "where it was seen last";
    ASSERT_TRUE(QDir(folder).removeRecursively());
    EXPECT_EQ(desktop.look(bookmark).presence, Presence::Unreachable);
    EXPECT_FALSE(desktop.look(bookmark).icon.isNull());

    EXPECT_FALSE(files().known("rubbish"));
    files().look("rubbish", [](const KnownFile &) { ADD_FAILURE() << "there is nothing to answer"; });
}

TEST_P(FileLookupContract, TellsOfChangesAlone)
{
    const QString document = desktop.container.write(u"letter.txt"_s, "Dear reader");
    const QByteArray bookmark = bookmarkOf(document);
    int changes = 0;
    QObject::connect(&files(), &FileLookup::changed, &files(), [&changes] { ++changes; });
    desktop.look(bookmark);
    EXPECT_EQ(changes, 0) << "nobody is told from within a look";
    EXPECT_TRUE(eventually([&changes] { return changes == 1; }));
    desktop.look(bookmark);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1) << "it looks the same";
    desktop.workspace.icons.insert(document, Image::named(u"Mail"_s));
    desktop.look(bookmark);
    EXPECT_TRUE(eventually([&changes] { return changes == 2; })) << "it looks different";
}

INSTANTIATE_TEST_SUITE_P(BackEnds, FileLookupContract, testing::Values("memory", "background"),
                         [](const auto &row) { return std::string(row.param); });

/// A disk that answers when a test lets it.
struct SlowDisk {
    std::promise<void> plug;
    std::shared_future<void> isPlugged = plug.get_future().share();
};

TEST(BackgroundFileLookup, LivesWithADiskThatDoesNotAnswer)
{
    LookupDesktop desktop;
    const QByteArray dead = bookmarkOf(desktop.container.write(u"net/mounted.txt"_s, "far away"));
    const QByteArray alive = bookmarkOf(desktop.container.write(u"letter.txt"_s, "here"));
    SlowDisk disk;
    const auto asked = std::make_shared<std::atomic<int>>(0);
    desktop.files = std::make_unique<BackgroundFileLookup>(
        desktop.scheduler, [&desktop](const FileLook &look) { return desktop.workspace.icon(look.path); },
        [dead, asked, isPlugged = disk.isPlugged](const QByteArray &bookmark) {
            if (bookmark == dead) {
                ++*asked;
                isPlugged.wait();
            }
            return readFileReport(bookmark);
        });
    FileLookup &files = *desktop.files;
    QList<Presence> answers;
    for (int looks = 0; looks < 100; ++looks)
        files.look(dead, [&answers](const KnownFile &file) { answers << file.presence; });
    EXPECT_EQ(desktop.look(alive).presence, Presence::Present);
    EXPECT_EQ(files.known(dead)->presence, Presence::Unknown);
    EXPECT_TRUE(answers.isEmpty());
    ASSERT_TRUE(eventually([&asked] { return *asked == 1; }));
    desktop.scheduler.advance(BackgroundFileLookup::patience);
    EXPECT_EQ(answers, QList<Presence>(100, Presence::Unreachable));
    EXPECT_FALSE(files.known(dead)->icon.isNull()) << "its name tells something";
    files.look(dead, [&answers](const KnownFile &file) { answers << file.presence; });
    EXPECT_EQ(answers.size(), 100);
    desktop.scheduler.advance(BackgroundFileLookup::patience);
    EXPECT_EQ(answers.size(), 101) << "whoever asks later is answered as well";
    EXPECT_TRUE(files.isLooking(dead));

    disk.plug.set_value();
    EXPECT_TRUE(eventually([&files, &dead] { return files.known(dead)->presence == Presence::Present; }));
    EXPECT_EQ(answers.size(), 101) << "nothing is opened out of the blue";
    EXPECT_FALSE(files.isLooking(dead));
    EXPECT_EQ(*asked, 1) << "one thread at most waits for one file";
}

TEST(BackgroundFileLookup, KeepsNobodyFromEnding)
{
    LookupDesktop desktop;
    SlowDisk disk;
    const auto isBegun = std::make_shared<std::promise<void>>();
    desktop.files = std::make_unique<BackgroundFileLookup>(
        desktop.scheduler, [](const FileLook &) { return Image(); },
        [isBegun, isPlugged = disk.isPlugged](const QByteArray &) {
            isBegun->set_value();
            isPlugged.wait();
            return FileReport();
        });
    const QByteArray bookmark = bookmarkOf(desktop.container.write(u"letter.txt"_s, "here"));
    desktop.files->look(bookmark, [](const KnownFile &) { ADD_FAILURE() << "nobody is there to hear it"; });
    isBegun->get_future().wait();
    desktop.files.reset(); // would hang here
    disk.plug.set_value();
}

} // namespace
} // namespace Orbita
