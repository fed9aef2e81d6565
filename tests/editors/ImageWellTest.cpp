#include "editors/ImageWell.h"
#include "platform/memory/MemoryDialogs.h"
#include "support/RowName.h"
#include "support/TemporaryContainer.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QSemaphore>
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
    QByteArray content;  ///< of the picture
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
        EXPECT_TRUE(well.isReading() && well.image() == old) << "the source of the drag must not wait";
        return true;
    }
    void press(int key, Qt::KeyboardModifiers modifiers)
    {
        QTest::keyClick(&well, Qt::Key(key), modifiers);
        finishReading();
    }
    void finishReading()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !well.isReading(); }, 60'000));
    }
    TemporaryContainer container;
    MemoryDialogs dialogs;
    ImageWell well{dialogs};
    const Image old = Image::named(QStringLiteral("Script"));
    int dropped = 0;
};

TEST_P(ImageWellTest, takesPicturesOnEveryWay)
{
    dialogs.file = container.write(QStringLiteral("picture.png"), GetParam().content);
    QMimeData file;
    file.setUrls({QUrl(QStringLiteral("https://elsewhere/")), QUrl::fromLocalFile(*dialogs.file)});
    EXPECT_TRUE(drop(file));
    finishReading();
    QTest::mouseClick(&well, Qt::LeftButton);
    finishReading();
    press(Qt::Key_Space, Qt::NoModifier);
    press(Qt::Key_Return, Qt::NoModifier);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    auto clip = std::make_unique<QMimeData>();
    clip->setData(QStringLiteral("image/png"), GetParam().content);
    QApplication::clipboard()->setMimeData(clip.release());
    well.paste();
    finishReading();
    const int given = 6;
    QFile::remove(*dialogs.file);
    EXPECT_EQ(dropped, GetParam().refusal ? 0 : given);
    EXPECT_EQ(well.image() == old, GetParam().refusal != nullptr);
    EXPECT_EQ(dialogs.alerts.size(), GetParam().refusal ? std::size_t(given) : 0U);
    for (const auto &alert : dialogs.alerts)
        EXPECT_TRUE(alert.message.contains(QLatin1String(GetParam().refusal))) << qPrintable(alert.message);
    EXPECT_FALSE(well.image().render({10, 10}).isNull()) << "a picture stays when its file goes";
}

INSTANTIATE_TEST_SUITE_P(Pictures, ImageWellTest,
                         testing::Values(Row{"a picture", pngOf({400, 300}), nullptr},
                                         Row{"a tall picture", pngOf({1, 8192}), nullptr},
                                         Row{"a picture that is too wide", pngOf({8193, 1}), "at most 8192 pixels"},
                                         Row{"half a picture", pngOf({64, 64}).left(60), "undamaged"},
                                         Row{"a huge file", pngOf({1, 1}) + QByteArray(33 << 20, 'x'), "32 MB"}),
                         rowName<Row>);

TEST_F(ImageWellTest, leavesWordsAloneAndPastesWhatItCopied)
{
    QMimeData text;
    text.setText(QStringLiteral("words"));
    EXPECT_FALSE(drop(text));
    QApplication::clipboard()->setText(QStringLiteral("words"));
    well.paste();
    well.choose(); // nothing is chosen
    EXPECT_EQ(dialogs.fileRequests.size(), 1U);
    EXPECT_TRUE(well.image() == old && dropped == 0 && dialogs.alerts.empty());
    dialogs.file = container.path(QStringLiteral("gone.png"));
    well.choose();
    finishReading();
    EXPECT_EQ(dialogs.alerts.at(0).message, QStringLiteral("“gone.png” is not there any more."));
    well.copy();
    well.paste();
    finishReading();
    EXPECT_EQ(dropped, 1);
    well.paste();
    well.paste();
    finishReading();
    EXPECT_EQ(dropped, 2) << "the later one replaces the earlier one";
}

TEST_F(ImageWellTest, goesOnBesideAPictureThatDoesNotCome)
{
    const auto gate = std::make_shared<QSemaphore>();
    const auto late = std::make_shared<QSemaphore>();
    QMimeData picture;
    picture.setData(QStringLiteral("image/png"), pngOf({4, 3}));
    well.setReader([gate, late](const GivenPicture &) -> ImageWell::Picture {
        gate->acquire();
        late->release();
        return Failure(QStringLiteral("too late"));
    });
    EXPECT_TRUE(drop(picture));
    well.setReader(readPicture);
    EXPECT_TRUE(drop(picture));
    finishReading();
    EXPECT_EQ(dropped, 1);

    well.setImage(old);
    well.setReader([late](const GivenPicture &given) {
        late->acquire();
        return readPicture(given);
    });
    EXPECT_TRUE(drop(picture));
    gate->release();
    finishReading();
    EXPECT_TRUE(dropped == 2 && dialogs.alerts.empty()) << "nobody wants the stuck one any more";
}

} // namespace
} // namespace Orbita
