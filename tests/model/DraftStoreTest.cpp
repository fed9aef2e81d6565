#include "model/DraftStore.h"

#include "model/MenuItemArray.h"
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

TEST_F(DraftStoreTest, triesAgainToWriteWhatCouldNotBeWritten)
{
    const Draft draft{u"half"_s, {}, yesterday};
    for (const bool isKeptAgain : {true, false}) {
        {
            DraftStore store(folder);
            ASSERT_TRUE(QDir().mkpath(file)) << "nothing can be written there";
            store.keep(u"a"_s, draft);
            ASSERT_TRUE(QDir().rmdir(file));
            if (isKeptAgain)
                store.keep(u"a"_s, draft);
            EXPECT_EQ(textOf(u"a"_s), isKeptAgain ? u"half"_s : u"none"_s);
        }
        EXPECT_EQ(textOf(u"a"_s), u"half"_s);
        ASSERT_TRUE(QFile::remove(file));
    }
}

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

/// Entries that are edited, renamed, removed and saved. The user's list holds three links, two of which are equal.
struct DraftsOfEntries : DraftStoreTest {
    DraftsOfEntries()
    {
        desktop.settings.setShowFinder(false);
        QVariantList entries;
        for (const QString &name : {u"Page"_s, u"Twin"_s, u"Twin"_s})
            entries.append(QVariantMap{{u"class"_s, u"LinkMenuItem"_s}, {u"name"_s, name}, {u"url"_s, u"old"_s}});
        EXPECT_TRUE(PropertyList::write(desktop.container.itemFile(), entries, PropertyList::Format::Binary));
        items.refresh();
    }
    /// Edits the entry at \a index; returns the draft that the editor was opened with.
    std::optional<Draft> edit(std::size_t index = 0)
    {
        std::optional<bool> saved;
        items.objectAt(index)->startEditing(nullptr, [&] { saved = items.persist(); });
        EXPECT_TRUE(saved) << "who waits for the end of editing is told of each";
        isSaved = saved.value_or(false);
        return desktop.editors.sessions.back().draft;
    }
    void closeWith(const std::optional<QString> &text, const std::optional<Image> &image = {})
    {
        desktop.editors.isClosed = true;
        desktop.editors.newText = text;
        desktop.editors.newImage = image;
    }
    void saveWith(const std::optional<QString> &text, const std::optional<Image> &image = {})
    {
        closeWith(text, image);
        desktop.editors.isClosed = false;
    }
    /// While it lies there, the item file cannot be written.
    void obstruct()
    {
        ASSERT_TRUE(QDir().rename(desktop.container.itemFile(), folder + u"/away"_s));
        ASSERT_TRUE(QDir().mkdir(desktop.container.itemFile()));
    }
    void clear()
    {
        ASSERT_TRUE(QDir().rmdir(desktop.container.itemFile()));
        ASSERT_TRUE(QDir().rename(folder + u"/away"_s, desktop.container.itemFile()));
    }

    MenuItemArray items{folder, desktop.defaults, desktop.settings, desktop.services};
    const QString stored = u"LinkMenuItemPageold"_s;
    bool isSaved = false;
};

TEST_F(DraftsOfEntries, areGoneOnWithUntilTheyAreSavedOrDiscarded)
{
    for (const bool discards : {true, false}) {
        closeWith(u"half"_s, picture(8, Qt::red));
        EXPECT_FALSE(edit());
        EXPECT_EQ(items.objectAt(0)->identity(), stored) << "half a text takes no whole one's place";
        EXPECT_EQ(textOf(stored), u"half"_s);
        closeWith(u"more"_s, picture(8, Qt::red));
        EXPECT_EQ(edit()->text, u"half"_s);
        saveWith(discards ? std::nullopt : std::optional(u"new"_s));
        const auto draft = edit();
        EXPECT_TRUE(draft->text == u"more"_s && draft->picture);
        EXPECT_FALSE(QFile::exists(file)) << discards;
    }
    EXPECT_EQ(items.objectAt(0)->identity(), u"LinkMenuItemPagenew"_s);
    closeWith(u"x"_s);
    EXPECT_FALSE(edit());
    closeWith(std::nullopt);
    edit();
    EXPECT_FALSE(QFile::exists(file)) << "the stored text was typed again";
}

TEST_F(DraftsOfEntries, outliveASaveThatFails)
{
    for (const std::optional<QString> &text : {std::optional(u"new"_s), std::optional<QString>(u"old"_s)}) {
        saveWith(text, picture(8, Qt::red));
        obstruct();
        edit();
        EXPECT_FALSE(isSaved);
        EXPECT_EQ(textOf(stored), *text) << "after a restart the entry is the old one";
        EXPECT_TRUE(restarted().draftOf(stored)->picture);
        clear();
        items.refresh();
        saveWith(std::nullopt);
        EXPECT_EQ(edit()->text, *text);
        EXPECT_FALSE(QFile::exists(file));
    }

    saveWith(u"new"_s);
    obstruct();
    edit();
    closeWith(u"newer"_s);
    EXPECT_FALSE(edit()) << "the entry in the ring is the new one";
    EXPECT_EQ(textOf(stored), u"newer"_s);
    closeWith(std::nullopt);
    EXPECT_EQ(edit()->text, u"newer"_s);
    EXPECT_EQ(textOf(stored), u"new"_s);
    clear();
    EXPECT_TRUE(items.persist());
    EXPECT_FALSE(QFile::exists(file)) << "saved at last";
}

TEST_F(DraftsOfEntries, areNotTakenForSavedWithAnotherChangeOfTheList)
{
    saveWith(u"new"_s);
    obstruct();
    edit();
    clear();
    items.refresh();
    EXPECT_TRUE(items.persist());
    EXPECT_EQ(textOf(stored), u"new"_s);
    saveWith(u"old"_s, picture(8, Qt::red));
    obstruct();
    edit();
    clear();
    items.refresh();
    EXPECT_TRUE(items.persist());
    EXPECT_TRUE(restarted().draftOf(stored)->picture) << "the stored entry has the old picture";
}

TEST_F(DraftsOfEntries, goAlongWithANewNameAndGoWithTheirEntry)
{
    closeWith(u"half"_s);
    edit();
    edit(1);
    items.objectAt(0)->rename(u"Site"_s);
    const QString renamed = u"LinkMenuItemSiteold"_s;
    EXPECT_TRUE(textOf(stored) == u"half"_s && textOf(renamed) == u"half"_s) << "the item file has the old name still";
    EXPECT_TRUE(items.persist());
    EXPECT_TRUE(textOf(stored) == u"none"_s && textOf(renamed) == u"half"_s);

    items.objectAt(0)->willBeRemoved();
    items.removeObjectAt(0);
    EXPECT_EQ(textOf(renamed), u"half"_s) << "it is in the item file still";
    EXPECT_TRUE(items.persist());
    EXPECT_EQ(textOf(renamed), u"none"_s);
    items.objectAt(0)->willBeRemoved();
    items.removeObjectAt(0);
    EXPECT_TRUE(items.persist());
    EXPECT_EQ(textOf(u"LinkMenuItemTwinold"_s), u"half"_s) << "an equal entry is left";
    items.objectAt(0)->willBeRemoved();
    items.removeObjectAt(0);
    EXPECT_TRUE(items.persist());
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
