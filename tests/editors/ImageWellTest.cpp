#include "editors/ImageWell.h"
#include "platform/memory/MemoryDialogs.h"
#include "support/RowName.h"
#include "support/TemporaryContainer.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

QByteArray pngOf(QSize size)
{
    QImage pixels(size, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    pixels.save(&buffer, "png");
    return bytes;
}

struct Row {
    const char *name;
    QByteArray content;  ///< of the picture; nothing when its file has vanished
    const char *refusal; ///< how the sentence goes on; nothing when the picture is taken
};

class ImageWellTest : public testing::TestWithParam<Row> {
protected:
    ImageWellTest()
    {
        well.setImage(old);
        QObject::connect(&well, &ImageWell::imageDropped, [this] { ++dropped; });
    }

    /// Drops \a data; whether the well wanted it.
    bool drop(const QMimeData &data)
    {
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&well, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&well, &event);
        const std::size_t asked = dialogs.alerts.size();
        EXPECT_EQ(asked, alertsBefore) << "the source of the drag must not wait for an answer";
        QCoreApplication::processEvents();
        return true;
    }
    void expectOutcome(const Row &row, int given)
    {
        EXPECT_EQ(dropped, row.refusal ? 0 : given);
        EXPECT_EQ(well.image() == old, row.refusal != nullptr);
        EXPECT_EQ(dialogs.alerts.size(), row.refusal ? std::size_t(given) : 0U);
        for (const auto &alert : dialogs.alerts)
            EXPECT_TRUE(alert.message.contains(QString::fromUtf8(row.refusal))) << qPrintable(alert.message);
    }

    TemporaryContainer container;
    MemoryDialogs dialogs;
    ImageWell well{dialogs};
    const Image old = Image::named(QStringLiteral("Script"));
    int dropped = 0;
    std::size_t alertsBefore = 0;
};

TEST_P(ImageWellTest, takesFilesThatArePictures)
{
    const QString path = GetParam().content.isEmpty()
        ? container.path(QStringLiteral("gone.png"))
        : container.write(QStringLiteral("picture.png"), GetParam().content);
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("https://elsewhere/")), QUrl::fromLocalFile(path)});
    EXPECT_TRUE(drop(data));
    dialogs.file = path;
    QTest::mouseClick(&well, Qt::LeftButton);
    QTest::keyClick(&well, Qt::Key_Space);
    QTest::keyClick(&well, Qt::Key_Return);
    EXPECT_EQ(dialogs.fileRequests.size(), 3U);
    QFile::remove(path);
    expectOutcome(GetParam(), 4);
    EXPECT_FALSE(well.image().render({10, 10}).isNull()) << "a picture stays when its file goes";
}

TEST_P(ImageWellTest, takesDataThatIsAPicture)
{
    auto clip = std::make_unique<QMimeData>();
    clip->setData(QStringLiteral("image/png"), GetParam().content);
    EXPECT_TRUE(drop(*clip));
    alertsBefore = dialogs.alerts.size();
    QApplication::clipboard()->setMimeData(clip.release());
    well.paste();
    if (!GetParam().content.isEmpty())
        expectOutcome(GetParam(), 2);
    EXPECT_EQ(well.image() == old, GetParam().refusal != nullptr);
}

INSTANTIATE_TEST_SUITE_P(Pictures, ImageWellTest,
                         testing::Values(Row{"a picture", pngOf({400, 300}), nullptr},
                                         Row{"a tall picture", pngOf({1, 8192}), nullptr},
                                         Row{"a picture that is too wide", pngOf({8193, 1}), "at most 8192 pixels"},
                                         Row{"half a picture", pngOf({64, 64}).left(60), "undamaged"},
                                         Row{"a huge file", pngOf({1, 1}) + QByteArray(33 << 20, 'x'), "32 MB"},
                                         Row{"a file that has vanished", {}, "“gone.png” is not there any more."}),
                         rowName<Row>);

TEST_F(ImageWellTest, leavesWhatIsNoPictureAlone)
{
    QMimeData text;
    text.setText(QStringLiteral("words"));
    EXPECT_FALSE(drop(text));
    QApplication::clipboard()->setText(QStringLiteral("words"));
    well.paste();
    well.choose(); // nothing is chosen
    EXPECT_EQ(dialogs.fileRequests.size(), 1U);
    EXPECT_TRUE(well.image() == old && dropped == 0 && dialogs.alerts.empty());
}

TEST_F(ImageWellTest, copiesWhatItCanPaste)
{
    well.copy();
    well.paste();
    EXPECT_EQ(dropped, 1);
    EXPECT_EQ(well.image().render({32, 32}).size(), QSize(32, 32));
}

} // namespace
} // namespace Orbita
