#include "model/MenuItemArray.h"

#include "model/AppMenuItem.h"
#include "model/FileMenuItem.h"
#include "model/RunningAppMenuItem.h"
#include "platform/PropertyList.h"
#include "support/MemoryDesktop.h"
#include "support/RowName.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

QVariantMap core(const QString &name)
{
    return {{u"class"_s, u"CoreMenuItem"_s}, {u"name"_s, name}};
}

QVariantMap link(const QString &name)
{
    return {{u"class"_s, u"LinkMenuItem"_s}, {u"name"_s, name}, {u"imageKey"_s, u""_s}, {u"url"_s, u""_s}};
}

const QVariantMap broken{{u"class"_s, u"AppMenuItem"_s}};
const QStringList withoutFinder{u"Launchpad"_s, u"App Store"_s, u"iTunes"_s, u"Safari"_s, u"Mail"_s};

/// While it lives, no file becomes larger than some bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    sighandler_t m_handler = std::signal(SIGXFSZ, SIG_IGN);
};

struct MenuItemArrayTest : testing::Test {
    MemoryDesktop desktop;
    const QString file = desktop.container.itemFile();

    MenuItemArray array()
    {
        return {desktop.container.directories().container, desktop.defaults, desktop.settings, desktop.services};
    }
    void plant(const QVariantList &entries) const
    {
        ASSERT_TRUE(PropertyList::write(file, entries, PropertyList::Format::Binary));
    }
    /// The contents of the damaged files that were set aside.
    [[nodiscard]] QList<QByteArray> setAside() const
    {
        QList<QByteArray> contents;
        const QFileInfo info(file);
        for (const QFileInfo &aside : info.dir().entryInfoList({info.fileName() + u".damaged-*"_s}))
            contents.append(TemporaryContainer::read(aside.filePath()));
        return contents;
    }
    [[nodiscard]] QStringList storedNames() const
    {
        QStringList names;
        for (const QVariant &stored : PropertyList::read(file)->toList())
            names.append(stored.toMap().value(u"name"_s).toString());
        return names;
    }
};

struct LoadRow {
    const char *name;
    std::optional<QVariantList> file;
    bool showFinder;
    QStringList expected;
    bool allMade = true;
};

class Load : public MenuItemArrayTest, public testing::WithParamInterface<LoadRow> {};

TEST_P(Load, followsTheFileAndTheFinderSetting)
{
    const LoadRow &row = GetParam();
    desktop.settings.setShowFinder(row.showFinder);
    if (row.file)
        plant(*row.file);
    const QByteArray before = TemporaryContainer::read(file);
    MenuItemArray items = array();
    EXPECT_EQ(MemoryDesktop::names(items), row.expected);
    EXPECT_EQ(items.refresh(), row.allMade);
    if (row.file)
        EXPECT_EQ(TemporaryContainer::read(file), before) << "loading must not write";
    else
        EXPECT_EQ(storedNames(), row.expected) << "the first list is saved at once";
}

const LoadRow loadRows[]{
    {"no file makes the six core entries", std::nullopt, true, QStringList(u"Finder"_s) + withoutFinder},
    {"no file without Finder makes five", std::nullopt, false, withoutFinder},
    {"Finder comes in front of other entries", {{link(u"a"_s)}}, true, {u"Finder"_s, u"a"_s}},
    {"a stored Finder stays where it is", {{link(u"a"_s), core(u"Finder"_s)}}, true, {u"a"_s, u"Finder"_s}},
    {"a hidden Finder is left out", {{link(u"a"_s), core(u"Finder"_s), link(u"b"_s)}}, false, {u"a"_s, u"b"_s}},
    {"an emptied list shows Finder alone", QVariantList{}, true, {u"Finder"_s}},
    {"an emptied list without Finder is filled again", QVariantList{}, false, withoutFinder},
    {"nothing that can be made leaves Finder alone", {{broken, 7, u"x"_s}}, true, {u"Finder"_s}, false},
    {"nothing that can be made without Finder", {{broken}}, false, withoutFinder, false},
    {"what cannot be made is skipped", {{broken, link(u"a"_s)}}, true, {u"Finder"_s, u"a"_s}, false},
};

INSTANTIATE_TEST_SUITE_P(Files, Load, testing::ValuesIn(loadRows), rowName<LoadRow>);

TEST_F(MenuItemArrayTest, takesOverTheLegacyDefaultsOnce)
{
    for (const QString &legacy : {u"old"_s, u"older"_s}) {
        desktop.defaults.setValue(u"menuItems"_s, QVariantList{link(legacy)});
        EXPECT_EQ(MemoryDesktop::names(array()), (QStringList{u"Finder"_s, u"old"_s}));
        EXPECT_EQ(storedNames(), (QStringList{u"Finder"_s, u"old"_s}));
    }
}

TEST_F(MenuItemArrayTest, bringsAHiddenFinderBackToItsPlaceUntilItIsForgotten)
{
    plant({link(u"a"_s), core(u"Finder"_s)});
    desktop.settings.setShowFinder(false);
    MenuItemArray items = array();
    const auto shown = [&](bool showFinder) {
        desktop.settings.setShowFinder(showFinder);
        items.refresh();
        return MemoryDesktop::names(items);
    };
    EXPECT_EQ(shown(true), (QStringList{u"a"_s, u"Finder"_s}));
    EXPECT_EQ(shown(false), QStringList(u"a"_s));
    EXPECT_TRUE(items.persist());
    EXPECT_EQ(storedNames(), QStringList(u"a"_s));
    EXPECT_EQ(shown(true), (QStringList{u"Finder"_s, u"a"_s}));
}

TEST_F(MenuItemArrayTest, savesEverythingButRunningApplications)
{
    MenuItemArray items = array();
    const auto record = desktop.runningApplications.start(u"/tool.desktop"_s, u"Tool"_s);
    items.insertObject(std::make_shared<RunningAppMenuItem>(record, desktop.services), 2);
    items.removeObjectAt(0);
    EXPECT_TRUE(items.persist());
    EXPECT_EQ(storedNames(), withoutFinder);
}

TEST_F(MenuItemArrayTest, keepsOneCopyOfEntriesThatItDropsAndTellsOfItOnce)
{
    plant({link(u"a"_s), broken});
    const QByteArray before = TemporaryContainer::read(file);
    {
        const FullDisk disk(100'000);
        for (int shows = 0; shows < 2; ++shows) {
            MenuItemArray items = array();
            items.addObject(MenuItem::fromDictionary(link(QString(200'000, u'x')), desktop.services));
            EXPECT_FALSE(items.persist());
        }
    }
    EXPECT_EQ(TemporaryContainer::read(file), before);
    for (int shows = 0; shows < 2; ++shows) {
        array().dropUnmadeEntries();
        EXPECT_EQ(storedNames(), (QStringList{u"Finder"_s, u"a"_s}));
        EXPECT_EQ(setAside(), QList<QByteArray>{before});
    }
    ASSERT_EQ(desktop.notifications.notifications.size(), 1);
    const QString text = desktop.notifications.notifications[0].text;
    EXPECT_TRUE(text.contains(u"An entry without a name"_s) && text.contains(file + u".damaged-"_s));
}

TEST_F(MenuItemArrayTest, keepsEntriesThatCannotBeReachedAndDropsThoseThatAreGone)
{
    const QString document = desktop.container.write(u"usb/letter.txt"_s, "Dear reader");
    const QString application = desktop.container.write(u"usb/tool.desktop"_s, "[Desktop Entry]\n");
    desktop.settings.setShowFinder(false);
    {
        MenuItemArray items = array();
        while (!items.isEmpty())
            items.removeObjectAt(0);
        items.addObject(FileMenuItem::fromPath(document, desktop.services));
        items.addObject(AppMenuItem::fromPath(application, desktop.services));
        ASSERT_TRUE(items.persist());
    }
    const QByteArray before = TemporaryContainer::read(file);
    const auto titlesAfterDropping = [this] {
        MenuItemArray items = array();
        items.dropItemsThatAreGone();
        QStringList titles;
        for (const MenuItem::Pointer &item : items)
            titles << item->title() + (item->isAvailable() ? u""_s : u" dimmed"_s);
        return titles;
    };
    desktop.files.isMounted = false;
    EXPECT_EQ(titlesAfterDropping(), (QStringList{u"letter (offline) dimmed"_s, u"tool (offline) dimmed"_s}));
    array().objectAt(0)->open();
    ASSERT_EQ(desktop.notifications.notifications.size(), 1);
    EXPECT_EQ(desktop.notifications.notifications[0].title, u"“letter” cannot be opened"_s);
    desktop.files.isMounted = true;
    EXPECT_EQ(titlesAfterDropping(), (QStringList{u"letter"_s, u"tool"_s}));
    EXPECT_EQ(TemporaryContainer::read(file), before);
    ASSERT_TRUE(QFile::remove(document));
    EXPECT_EQ(titlesAfterDropping(), QStringList(u"tool"_s));
    EXPECT_EQ(storedNames(), QStringList(u"tool"_s));
    ASSERT_EQ(desktop.notifications.notifications.size(), 2);
    EXPECT_TRUE(desktop.notifications.notifications[1].text.startsWith(u"“letter”: no longer there"_s));
    EXPECT_EQ(setAside(), QList<QByteArray>{before});
}

TEST_F(MenuItemArrayTest, setsADamagedFileAsideAndStartsAnew)
{
    plant({link(u"a"_s)});
    const QList<QByteArray> damaged{TemporaryContainer::read(file).chopped(20), QByteArray(),
                                    PropertyList::encode(core(u"Mail"_s), PropertyList::Format::Binary).value()};
    for (qsizetype i = 0; i < damaged.size(); ++i) {
        QFile damagedFile(file);
        ASSERT_TRUE(damagedFile.open(QIODevice::WriteOnly) && damagedFile.write(damaged[i]) == damaged[i].size());
        damagedFile.close();
        EXPECT_EQ(MemoryDesktop::names(array()), QStringList(u"Finder"_s) + withoutFinder);
        ASSERT_EQ(setAside().size(), i + 1);
        EXPECT_EQ(storedNames(), QStringList(u"Finder"_s) + withoutFinder);
        EXPECT_TRUE(setAside().contains(damaged[i]));
        ASSERT_EQ(desktop.notifications.notifications.size(), i + 1);
        EXPECT_TRUE(desktop.notifications.notifications[i].text.contains(u"menuItems.plist.damaged-"_s));
    }
}

TEST_F(MenuItemArrayTest, neverReplacesWhatItCannotRead)
{
    // Nothing to be read, but to be written over; a file that is not readable would be so for the superuser.
    ASSERT_EQ(::mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    MenuItemArray items = array();
    items.removeObjectAt(0);
    EXPECT_FALSE(items.persist());
    EXPECT_TRUE(items.refresh());
    array();
    EXPECT_EQ(desktop.notifications.notifications.size(), 1) << "told once, not at each showing of the ring";
    EXPECT_EQ(MemoryDesktop::names(items), withoutFinder);
    const QFileInfo info(file);
    EXPECT_EQ(info.dir().entryList({info.fileName() + u'*'}, QDir::System | QDir::Files), QStringList(info.fileName()));
    EXPECT_FALSE(info.isFile());

    ASSERT_TRUE(QFile::remove(file));
    items.refresh();
    EXPECT_EQ(storedNames(), withoutFinder);
    items.removeObjectAt(0);
    EXPECT_TRUE(items.persist());
    EXPECT_EQ(storedNames(), withoutFinder.mid(1));
}

TEST_F(MenuItemArrayTest, holdsTenThousandEntriesAndHostileNames)
{
    QVariantList entries{core(u"Finder"_s)};
    for (int i = 0; i < 10'000; ++i)
        entries.append(link(u"\U0001F4A5 <&\"' %s %1 "_s + QString::number(i)));
    for (char16_t unit : {u'\1', u'\b', u'\r', u'\x1f', u'\xd800', u'\xdfff', u'\xfffe', u'\xffff'})
        entries.append(link(u"hostile "_s + QChar(unit)));
    plant(entries);
    MenuItemArray items = array();
    ASSERT_EQ(items.count(), std::size_t(entries.size()));
    const MenuItem::Pointer last = items.objectAt(items.count() - 1);
    items.removeObject(*last);
    items.insertObject(last, 1);
    entries.move(entries.size() - 1, 1);
    EXPECT_TRUE(items.persist());
    EXPECT_EQ(PropertyList::read(file)->toList(), entries) << "no character is lost";
}

} // namespace
} // namespace Orbita
