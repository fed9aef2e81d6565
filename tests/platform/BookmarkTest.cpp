#include "platform/Bookmark.h"

#include "support/TemporaryContainer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace Orbita {
namespace {

class BookmarkTest : public testing::Test {
protected:
    /// A bookmark of the file at \a path, which must exist.
    static QByteArray bookmarkOf(const QString &path)
    {
        const auto bookmark = Bookmark::create(path);
        return bookmark ? *bookmark : QByteArray();
    }

    static QString describe(Bookmark::Error error)
    {
        switch (error) {
        case Bookmark::Error::Malformed:
            return QStringLiteral("malformed");
        case Bookmark::Error::Missing:
            return QStringLiteral("missing");
        case Bookmark::Error::Unreachable:
            return QStringLiteral("unreachable");
        }
        return {};
    }

    /// What \a bookmark resolves to, a "stale " before it; or the failure.
    static QString resolved(const QByteArray &bookmark)
    {
        const auto resolved = Bookmark::resolve(bookmark);
        if (!resolved)
            return describe(resolved.error());
        return (resolved->isStale ? QStringLiteral("stale ") : QString()) + resolved->path;
    }

    const TemporaryContainer m_container;
    const QString m_old = m_container.write(QStringLiteral("folder/old"), "content");
    const QString m_new = m_container.path(QStringLiteral("folder/new \u00e9"));
};

TEST_F(BookmarkTest, findsAFileWhereItWas)
{
    EXPECT_EQ(resolved(bookmarkOf(m_old)), m_old);
    EXPECT_EQ(resolved(bookmarkOf(m_container.path(QStringLiteral("folder/../folder//old")))), m_old);
    EXPECT_EQ(resolved(bookmarkOf(QStringLiteral("/"))), QStringLiteral("/"));
}

TEST_F(BookmarkTest, followsARenamedFileOrFolder)
{
    const QByteArray file = bookmarkOf(m_old);
    const QString folderPath = m_container.path(QStringLiteral("folder"));
    const QByteArray folder = bookmarkOf(folderPath);
    ASSERT_TRUE(QFile::rename(m_old, m_new));
    EXPECT_EQ(resolved(file), QStringLiteral("stale ") + m_new);

    const QString renamedFolder = m_container.path(QStringLiteral("renamed"));
    ASSERT_TRUE(QDir().rename(folderPath, renamedFolder));
    EXPECT_EQ(resolved(folder), QStringLiteral("stale ") + renamedFolder);
    EXPECT_EQ(resolved(file), QStringLiteral("unreachable")) << "only the same folder is searched";
}

TEST_F(BookmarkTest, takesAFileThatReplacedTheOldOne)
{
    const QByteArray bookmark = bookmarkOf(m_old);
    m_container.write(QStringLiteral("folder/update"), "new version");
    ASSERT_TRUE(QFile::remove(m_old));
    ASSERT_TRUE(QFile::rename(m_container.path(QStringLiteral("folder/update")), m_old));
    EXPECT_EQ(resolved(bookmark), QStringLiteral("stale ") + m_old);
}

TEST_F(BookmarkTest, failsForAVanishedFileThoughItsInodeIsReused)
{
    const QByteArray bookmark = bookmarkOf(m_old);
    ASSERT_TRUE(QFile::remove(m_old));
    for (int i = 0; i < 20; ++i)
        m_container.write(QStringLiteral("folder/other%1").arg(i), "other");
    EXPECT_EQ(resolved(bookmark), QStringLiteral("missing"));
}

TEST_F(BookmarkTest, cannotTellWhetherAFileIsGoneWhereItsDriveIsNotMounted)
{
    const QByteArray bookmark = bookmarkOf(m_old);
    // The lowest byte of the device, behind four of the magic number.
    QByteArray onAnotherDevice = bookmark;
    onAnotherDevice[11] = char(onAnotherDevice[11] ^ 1);
    EXPECT_EQ(resolved(onAnotherDevice), QStringLiteral("stale ") + m_old) << "it was mounted under another number";
    ASSERT_TRUE(QFile::remove(m_old));
    EXPECT_EQ(resolved(bookmark), QStringLiteral("missing"));
    EXPECT_EQ(resolved(onAnotherDevice), QStringLiteral("unreachable")) << "an empty mount point";
    const QString folder = m_container.path(QStringLiteral("folder"));
    ASSERT_TRUE(QDir().rmdir(folder));
    EXPECT_EQ(resolved(bookmark), QStringLiteral("unreachable")) << "no mount point";
    m_container.write(QStringLiteral("folder"), "a file in the place of the folder");
    EXPECT_EQ(resolved(bookmark), QStringLiteral("unreachable"));
    EXPECT_EQ(Bookmark::originalPath(bookmark), m_old);
}

TEST_F(BookmarkTest, standsForALinkItself)
{
    const QString link = m_container.path(QStringLiteral("folder/link"));
    ASSERT_TRUE(QFile::link(m_old, link));
    const QByteArray bookmark = bookmarkOf(link);
    const QString renamed = m_container.path(QStringLiteral("folder/renamed link"));
    ASSERT_TRUE(QFile::rename(link, renamed));
    EXPECT_EQ(resolved(bookmark), QStringLiteral("stale ") + renamed);
    ASSERT_TRUE(QFile::remove(m_old));
    EXPECT_EQ(resolved(bookmark), QStringLiteral("unreachable")) << "where it leads to may come back";
    EXPECT_EQ(Bookmark::create(renamed).error(), Bookmark::Error::Missing);
}

TEST_F(BookmarkTest, refusesOtherBytes)
{
    EXPECT_EQ(Bookmark::create(QString()).error(), Bookmark::Error::Missing);
    EXPECT_EQ(Bookmark::create(m_new).error(), Bookmark::Error::Missing);

    const QByteArray whole = bookmarkOf(m_old);
    QByteArray relative = whole;
    relative.replace(m_old.toUtf8(), m_old.toUtf8().replace(0, 1, "x"));
    QByteArray withNul = whole;
    withNul[whole.size() - 2] = '\0';
    for (const QByteArray &bytes : {QByteArray(), QByteArray("book"), whole + '\0', relative, withNul,
                                    QByteArray(10'000'000, '\xff'), whole.first(28) + QByteArray(4, '\x7f') + whole}) {
        EXPECT_EQ(resolved(bytes), QStringLiteral("malformed"));
        EXPECT_FALSE(Bookmark::originalPath(bytes));
    }
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_EQ(resolved(whole.first(size)), QStringLiteral("malformed"));
}

} // namespace
} // namespace Orbita
