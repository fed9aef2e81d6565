#include "platform/BoundedRead.h"

#include <QBuffer>
#include <QFile>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

TEST(BoundedRead, stopsAtTheLimitAndAtTheEnd)
{
    QByteArray content;
    for (int i = 0; i < 50'000; ++i)
        content.append(char('a' + i % 26));
    for (const qint64 limit :
         {qint64(0), qint64(100), qint64(16 * 1024), qint64(40'000), qint64(50'000), qint64(1e12)}) {
        QBuffer buffer(&content);
        ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
        EXPECT_EQ(readAtMost(buffer, limit), content.left(limit)) << limit;
    }
}

TEST(BoundedRead, readsWhatSaysThatItIsEmpty)
{
    QFile file(QStringLiteral("/proc/self/status"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    ASSERT_EQ(file.size(), 0);
    EXPECT_TRUE(readAtMost(file, 1'000'000).contains("\nPid:"));
}

} // namespace
} // namespace Orbita
