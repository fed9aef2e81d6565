#include "PrivateSession.h"

#include "platform/desktop/GioWorkspace.h"
#include "platform/desktop/StartupNotifier.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QUrl>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace Orbita {
namespace {

constexpr qint64 then = 1'700'000'000;

void setTime(const QString &path, qint64 seconds)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite)
                && file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFile::FileModificationTime));
}

class ThumbnailsTest : public testing::Test {
protected:
    ThumbnailsTest()
    {
        PrivateSession::clear();
        setTime(document, then);
    }
    ~ThumbnailsTest() override { QDir(PrivateSession::path(".cache/thumbnails")).removeRecursively(); }

    /// A thumbnail of \a side pixels, or without any a file that is no picture; returns its path.
    QString plant(const char *folder, int side, QColor color = {}, const QString &ofUri = {}, qint64 ofTime = 0,
                  const char *format = "png") const
    {
        const auto name = QCryptographicHash::hash(uri.toLatin1(), QCryptographicHash::Md5).toHex() + ".png";
        const QString path
            = PrivateSession::write(QByteArray(".cache/thumbnails/") + folder + '/' + name, "no picture");
        QImage pixels(side, side, QImage::Format_ARGB32);
        pixels.fill(color);
        pixels.setText(QStringLiteral("Thumb::URI"), ofUri);
        pixels.setText(QStringLiteral("Thumb::MTime"), QString::number(ofTime));
        EXPECT_EQ(pixels.save(path, format), side > 0);
        return path;
    }
    [[nodiscard]] Image icon() const { return workspace.icon(document); }

    const QString document = PrivateSession::write("files/100% \u00e4#.txt", "text");
    const QString uri = QString::fromLatin1(QUrl::fromLocalFile(document).toEncoded());
    GioWorkspace workspace{std::make_unique<NoStartupNotifier>()};
};

TEST_F(ThumbnailsTest, TheOneThatFitsTheSizeIsShown)
{
    plant("normal", 128, Qt::red, uri, then);
    plant("large", 256, Qt::green, uri, then);
    plant("xx-large", 1024, Qt::blue, uri, then);
    for (const auto &[side, color] : {std::pair(64, Qt::red), std::pair(128, Qt::red), std::pair(129, Qt::green),
                                      std::pair(320, Qt::blue), std::pair(2000, Qt::blue)})
        EXPECT_EQ(icon().render({side, side}).pixelColor(1, 1), QColor(color)) << side;
    plant("xx-large", 0);
    EXPECT_EQ(icon().render({320, 320}).pixelColor(1, 1), QColor(Qt::green)) << "the largest that can be read";
}

TEST_F(ThumbnailsTest, WhatIsNoPictureOfTheFileAsItIsGivesWayToTheTypeIcon)
{
    const QImage typeIcon = icon().render({64, 64});
    plant("normal", 128, Qt::red, uri + u'x', then);
    plant("large", 256, Qt::red, uri, then - 1);
    plant("x-large", 512, Qt::red, uri, then, "jpg");
    const QString pipe = plant("xx-large", 0);
    ASSERT_TRUE(QFile::remove(pipe) && mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
    EXPECT_EQ(icon().render({64, 64}), typeIcon);
}

TEST_F(ThumbnailsTest, ThePictureIsTheSameUntilTheFileOrItsThumbnailChanges)
{
    const Image none = icon();
    plant("large", 256, Qt::red, uri, then);
    const Image first = icon();
    EXPECT_TRUE(first == icon() && !(first == none));
    setTime(plant("large", 0), then);
    const Image second = icon();
    setTime(document, then + 1);
    EXPECT_FALSE(second == first || second == icon());
}

} // namespace
} // namespace Orbita
