#include "model/DraftStore.h"

#include "platform/PropertyList.h"
#include "support/MemoryDesktop.h"
#include "support/RowName.h"

#include <QBuffer>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QDateTime yesterday(QDate(2026, 3, 1), QTime(14, 5), Qt::UTC);

Image picture(int side, const QColor &color)
{
    QImage pixels(side, side, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(color);
    return Image::fromPixels(pixels);
}

QByteArray png(int side)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture(side, Qt::red).render({side, side}).save(&buffer, "png");
    return bytes;
}

struct DraftStoreTest : testing::Test {
    MemoryDesktop desktop;
    const QString folder = desktop.container.directories().container;
    const QString file = folder + u"/drafts.plist"_s;

    [[nodiscard]] DraftStore restarted() const { return DraftStore(folder); }
    [[nodiscard]] QString textOf(const QString &identity) const
    {
        const auto draft = restarted().draftOf(identity);
        return draft ? draft->text : u"none"_s;
    }
    [[nodiscard]] QList<QByteArray> setAside() const
    {
        QList<QByteArray> contents;
        for (const QFileInfo &aside : QDir(folder).entryInfoList({u"drafts.plist.damaged-*"_s}))
            contents.append(TemporaryContainer::read(aside.filePath()));
        return contents;
    }
};

TEST_F(DraftStoreTest, keepsTextAndPictureOfEachEntryUntilItIsSettled)
{
    const QString odd = u"log 1\n\"\xD800"_s + QChar(u'\0') + u'é';
    EXPECT_FALSE(QFile::exists(file));
    desktop.drafts.keep(u"a"_s, {odd, picture(1000, Qt::green), yesterday});
    desktop.drafts.keep(u"b"_s, {u"other"_s, {}, yesterday});
    const auto draft = restarted().draftOf(u"a"_s);
    ASSERT_TRUE(draft && draft->picture);
    EXPECT_EQ(draft->text, odd);
    EXPECT_EQ(draft->changed, yesterday);
    const QImage pixels = draft->picture->render({2000, 2000});
    EXPECT_EQ(pixels.size(), QSize(ImageStore::maximumSide, ImageStore::maximumSide));
    EXPECT_EQ(pixels.pixelColor(9, 9), QColor(Qt::green));

    DraftStore again = restarted();
    again.keep(u"a"_s, {odd, again.draftOf(u"a"_s)->picture, QDateTime::currentDateTimeUtc()});
    EXPECT_EQ(again.draftOf(u"a"_s)->changed, yesterday) << "what is kept already was written when it was";
    again.keep(u"a"_s, {u"only text"_s, {}, yesterday});
    EXPECT_FALSE(restarted().draftOf(u"a"_s)->picture);
    again.settle(u"a"_s, u"a"_s, {u"as it is"_s, {}, {}});
    EXPECT_EQ(textOf(u"a"_s), u"none"_s);
    EXPECT_EQ(textOf(u"b"_s), u"other"_s);
    again.settle(u"b"_s, u"b"_s, {u"as it is"_s, {}, {}});
    EXPECT_FALSE(QFile::exists(file));
}

struct FileRow {
    const char *name;
    std::function<void(QVariantMap &)> alter; ///< of a draft that lies between two others; null: no draft at all
};

class DamagedDraftFile : public DraftStoreTest, public testing::WithParamInterface<FileRow> {};

TEST_P(DamagedDraftFile, isSetAsideAndTheGoodDraftsStay)
{
    for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
        desktop.drafts.keep(name, {name, {}, yesterday});
    auto root = PropertyList::read(file).value();
    const bool isRecord = GetParam().alter != nullptr;
    if (isRecord) {
        QVariantList drafts = root.toList();
        QVariantMap draft = drafts[1].toMap();
        GetParam().alter(draft);
        drafts[1] = draft;
        root = drafts;
    } else {
        root = root.toList()[0];
    }
    ASSERT_TRUE(PropertyList::write(file, root, PropertyList::Format::Binary));
    const QByteArray damaged = TemporaryContainer::read(file);
    testing::internal::CaptureStderr();
    EXPECT_EQ(textOf(u"a"_s), isRecord ? u"a"_s : u"none"_s);
    EXPECT_NE(testing::internal::GetCapturedStderr().find(".damaged-"), std::string::npos);
    EXPECT_EQ(setAside(), QList<QByteArray>{damaged});
    EXPECT_EQ(textOf(u"b"_s), u"none"_s);
    EXPECT_EQ(textOf(u"c"_s), isRecord ? u"c"_s : u"none"_s);
    EXPECT_EQ(setAside().size(), 1) << "once";
}

template <typename Value>
FileRow with(const char *name, const char *key, const Value &value)
{
    return {name, [key, value](QVariantMap &draft) { draft[QLatin1String(key)] = QVariant::fromValue(value); }};
}

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedDraftFile,
    testing::Values(FileRow{"no list", {}}, FileRow{"an empty draft", [](QVariantMap &draft) { draft.clear(); }},
                    with("a number for a text", "text", 7), with("a text for a date", "changed", u"today"_s),
                    with("a text for a picture", "picture", u"red"_s), with("no entry", "entries", QVariantList()),
                    with("a short digest", "entries", QVariantList{QByteArray("short")}),
                    with("a text for a digest", "entries", QVariantList{QString(32, u'x')})),
    rowName<FileRow>);

TEST_F(DraftStoreTest, leavesAFileAloneThatItCannotRead)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    DraftStore drafts = restarted();
    drafts.keep(u"a"_s, {u"half"_s, {}, yesterday});
    EXPECT_EQ(drafts.draftOf(u"a"_s)->text, u"half"_s) << "until the program ends";
    drafts.settle(u"a"_s, u"a"_s, {{}, {}, {}});
    struct stat status = {};
    EXPECT_TRUE(::stat(QFile::encodeName(file).constData(), &status) == 0 && S_ISFIFO(status.st_mode));
    EXPECT_TRUE(setAside().isEmpty());
}

TEST_F(DraftStoreTest, readsNoPictureButOneOfItsOwn)
{
    for (const QByteArray &bytes :
         {QByteArray("rubbish"), QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>"),
          png(ImageStore::maximumSide + 1)}) {
        desktop.drafts.keep(u"a"_s, {u"half"_s + QString::number(bytes.size()), picture(8, Qt::red), yesterday});
        QVariantList root = PropertyList::read(file)->toList();
        QVariantMap draft = root[0].toMap();
        draft[u"picture"_s] = bytes;
        root[0] = draft;
        ASSERT_TRUE(PropertyList::write(file, root, PropertyList::Format::Binary));
        const auto read = restarted().draftOf(u"a"_s);
        EXPECT_TRUE(read && !read->picture) << bytes.left(8).constData();
    }
}

TEST_F(DraftStoreTest, makesRoomForTheNewestDrafts)
{
    for (std::size_t i = 0; i <= DraftStore::maximumCount; ++i)
        desktop.drafts.keep(QString::number(i), {u"short"_s, {}, yesterday});
    EXPECT_EQ(textOf(u"0"_s), u"none"_s);
    EXPECT_EQ(textOf(u"1"_s), u"short"_s);
    const QString large(DraftStore::maximumSize / 4, u'ü'); // half of the bytes
    desktop.drafts.keep(u"1"_s, {large, {}, yesterday});
    EXPECT_EQ(textOf(u"2"_s), u"short"_s);
    desktop.drafts.keep(u"2"_s, {large, {}, yesterday});
    EXPECT_TRUE(textOf(u"1"_s) == u"none"_s && textOf(u"2"_s) == large && textOf(u"100"_s) == u"none"_s);
    desktop.drafts.keep(u"2"_s, {large + large, {}, yesterday});
    EXPECT_EQ(textOf(u"2"_s), large) << "rather the older one than none";
}

} // namespace
} // namespace Orbita
