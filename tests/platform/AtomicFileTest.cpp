#include "platform/AtomicFile.h"

#include "support/TemporaryContainer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Orbita {
namespace {

constexpr auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

TEST(WriteFileAtomically, makesAPrivateFile)
{
    const TemporaryContainer container;
    const QString path = container.path(QStringLiteral("data/new"));
    ASSERT_TRUE(writeFileAtomically(path, "content"));
    EXPECT_EQ(TemporaryContainer::read(path), "content");
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_FALSE(writeFileAtomically(container.path(QStringLiteral("no-folder/new")), "content"));
    EXPECT_FALSE(writeFileAtomically(container.path(QStringLiteral("data")), "content")) << "a folder is there";
}

TEST(WriteFileAtomically, keepsModeAndLinkOfAnOlderFile)
{
    const TemporaryContainer container;
    const QString target = container.write(QStringLiteral("elsewhere/target"), "old");
    ASSERT_EQ(::chmod(QFile::encodeName(target).constData(), 0640), 0);
    const QString inner = container.path(QStringLiteral("elsewhere/inner"));
    const QString outer = container.path(QStringLiteral("data/outer"));
    ASSERT_TRUE(QFile::link(QStringLiteral("target"), inner)) << "relative to the folder of the link";
    ASSERT_TRUE(QFile::link(inner, outer));

    ASSERT_TRUE(writeFileAtomically(outer, "new"));
    EXPECT_EQ(TemporaryContainer::read(target), "new");
    EXPECT_EQ(modeOf(target), 0640U);
    EXPECT_TRUE(QFileInfo(outer).isSymLink());
    EXPECT_TRUE(QFileInfo(inner).isSymLink());

    QFile::remove(target);
    ASSERT_TRUE(writeFileAtomically(outer, "again")) << "a link to nothing is followed as well";
    EXPECT_EQ(TemporaryContainer::read(target), "again");

    const QString loop = container.path(QStringLiteral("data/loop"));
    ASSERT_TRUE(QFile::link(loop, loop));
    EXPECT_FALSE(writeFileAtomically(loop, "content"));
}

TEST(WriteFileAtomically, leavesTheOldFileWholeWhenTheDiskIsFull)
{
    const TemporaryContainer container;
    const QString path = container.write(QStringLiteral("full/file"), "old");
    const QDir folder = QFileInfo(path).dir();

    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100'000, 100'000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(writeFileAtomically(path, QByteArray(200'000, 'x')) ? 1 : 42);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 42);
    EXPECT_EQ(TemporaryContainer::read(path), "old");
    EXPECT_EQ(folder.entryList(everything), QStringList{QStringLiteral("file")});
}

} // namespace
} // namespace Orbita
