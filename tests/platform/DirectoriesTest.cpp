#include "platform/Directories.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

namespace Orbita {
namespace {

TEST(Directories, areMadePrivateInTheUsersFolders)
{
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.filePath(QStringLiteral("new/config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", folder.filePath(QStringLiteral("data")).toLocal8Bit());
    for (int run = 1; run <= 2; ++run) {
        const Directories directories = Directories::standard();
        EXPECT_EQ(directories.configuration, folder.filePath(QStringLiteral("new/config/orbita")));
        EXPECT_EQ(directories.container, folder.filePath(QStringLiteral("data/orbita")));
        for (const QString &path : {directories.configuration, directories.container}) {
            EXPECT_TRUE(QFileInfo(path).isDir());
            EXPECT_FALSE(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther));
        }
    }
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("XDG_DATA_HOME");
}

} // namespace
} // namespace Orbita
