#include "model/MenuItemArray.h"

#include "model/RunningAppMenuItem.h"
#include "platform/PropertyList.h"
#include "support/MemoryDesktop.h"
#include "support/RowName.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

QStringList texts(std::initializer_list<const char *> names)
{
    QStringList result;
    for (const char *name : names)
        result.append(QString::fromUtf8(name));
    return result;
}

QVariantMap core(const char *name)
{
    return {{QStringLiteral("class"), QStringLiteral("CoreMenuItem")},
            {QStringLiteral("name"), QString::fromUtf8(name)}};
}

QVariantMap link(const char *name)
{
    return {{QStringLiteral("class"), QStringLiteral("LinkMenuItem")},
            {QStringLiteral("name"), QString::fromUtf8(name)}};
}

const QVariantMap broken{{QStringLiteral("class"), QStringLiteral("AppMenuItem")}};

struct MenuItemArrayTest : testing::Test {
    MemoryDesktop desktop;

    MenuItemArray array()
    {
        return {desktop.container.directories().container, desktop.defaults, desktop.settings, desktop.services};
    }
    void plant(const QVariantList &entries)
    {
        ASSERT_TRUE(PropertyList::write(desktop.container.itemFile(), entries, PropertyList::Format::Binary));
    }
    [[nodiscard]] QStringList storedNames() const
    {
        QStringList names;
        const auto root = PropertyList::read(desktop.container.itemFile());
        for (const QVariant &stored : root ? root->toList() : QVariantList())
            names.append(stored.toMap().value(QStringLiteral("name")).toString());
        return names;
    }
    [[nodiscard]] QStringList setAside() const
    {
        return QDir(desktop.container.directories().container).entryList({QStringLiteral("menuItems.plist.damaged-*")});
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
    const QByteArray before = TemporaryContainer::read(desktop.container.itemFile());
    MenuItemArray items = array();
    EXPECT_EQ(MemoryDesktop::names(items), row.expected);
    EXPECT_EQ(items.refresh(), row.allMade);
    if (row.file)
        EXPECT_EQ(TemporaryContainer::read(desktop.container.itemFile()), before) << "loading must not write";
    else
        EXPECT_EQ(storedNames(), row.expected) << "the first list is saved at once";
}

INSTANTIATE_TEST_SUITE_P(
    Files, Load,
    testing::Values(LoadRow{"no file makes the six core entries", std::nullopt, true,
                            texts({"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"})},
                    LoadRow{"no file without Finder makes five", std::nullopt, false,
                            texts({"Launchpad", "App Store", "iTunes", "Safari", "Mail"})},
                    LoadRow{"Finder comes in front of other entries", QVariantList{link("a")}, true,
                            texts({"Finder", "a"})},
                    LoadRow{"a stored Finder stays where it is", QVariantList{link("a"), core("Finder")}, true,
                            texts({"a", "Finder"})},
                    LoadRow{"a hidden Finder is left out", QVariantList{link("a"), core("Finder"), link("b")}, false,
                            texts({"a", "b"})},
                    LoadRow{"an emptied list shows Finder alone", QVariantList{}, true, texts({"Finder"})},
                    LoadRow{"an emptied list without Finder is filled again", QVariantList{}, false,
                            texts({"Launchpad", "App Store", "iTunes", "Safari", "Mail"})},
                    LoadRow{"nothing that can be made leaves Finder alone",
                            QVariantList{broken, 7, QStringLiteral("x")}, true, texts({"Finder"}), false},
                    LoadRow{"nothing that can be made without Finder", QVariantList{broken}, false,
                            texts({"Launchpad", "App Store", "iTunes", "Safari", "Mail"}), false},
                    LoadRow{"what cannot be made is skipped", QVariantList{core("Mail"), broken, link("a")}, true,
                            texts({"Finder", "Mail", "a"}), false}),
    rowName<LoadRow>);

TEST_F(MenuItemArrayTest, takesOverTheLegacyDefaultsOnce)
{
    desktop.defaults.setValue(QStringLiteral("menuItems"), QVariantList{link("old")});
    EXPECT_EQ(MemoryDesktop::names(array()), texts({"Finder", "old"}));
    EXPECT_EQ(storedNames(), texts({"Finder", "old"}));
    desktop.defaults.setValue(QStringLiteral("menuItems"), QVariantList{link("older")});
    EXPECT_EQ(MemoryDesktop::names(array()), texts({"Finder", "old"}));
}

TEST_F(MenuItemArrayTest, bringsAHiddenFinderBack)
{
    plant({link("a"), link("b"), link("c"), core("Finder")});
    desktop.settings.setShowFinder(false);
    MenuItemArray items = array();
    desktop.settings.setShowFinder(true);
    items.refresh();
    EXPECT_EQ(MemoryDesktop::names(items), texts({"a", "b", "c", "Finder"}));
    desktop.settings.setShowFinder(false);
    items.refresh();
    items.persist();
    EXPECT_EQ(storedNames(), texts({"a", "b", "c"}));
    desktop.settings.setShowFinder(true);
    items.refresh();
    EXPECT_EQ(MemoryDesktop::names(items), texts({"Finder", "a", "b", "c"}));
}

TEST_F(MenuItemArrayTest, savesEverythingButRunningApplications)
{
    MenuItemArray items = array();
    const auto record = desktop.runningApplications.start(QStringLiteral("/tool.desktop"), QStringLiteral("Tool"));
    items.insertObject(std::make_shared<RunningAppMenuItem>(record, desktop.services), 2);
    items.removeObjectAt(0);
    items.persist();
    EXPECT_EQ(storedNames(), texts({"Launchpad", "App Store", "iTunes", "Safari", "Mail"}));
}

TEST_F(MenuItemArrayTest, writesItsListBackWhenTheFileIsDeletedMeanwhile)
{
    plant({link("a")});
    MenuItemArray items = array();
    ASSERT_TRUE(QFile::remove(desktop.container.itemFile()));
    EXPECT_TRUE(items.refresh());
    EXPECT_EQ(storedNames(), texts({"Finder", "a"}));
}

TEST_F(MenuItemArrayTest, keepsACopyOfEntriesThatItDrops)
{
    plant({link("a"), broken});
    const QByteArray before = TemporaryContainer::read(desktop.container.itemFile());
    MenuItemArray items = array();
    items.persist();
    EXPECT_EQ(storedNames(), texts({"Finder", "a"}));
    ASSERT_EQ(setAside().size(), 1);
    EXPECT_EQ(TemporaryContainer::read(desktop.container.directories().container + u'/' + setAside().at(0)), before);
    items.refresh();
    items.persist();
    EXPECT_EQ(setAside().size(), 1) << "nothing was dropped the second time";
}

TEST_F(MenuItemArrayTest, setsADamagedFileAsideInsteadOfOverwritingIt)
{
    for (const QByteArray &damaged : {QByteArray(), QByteArray("<plist><array><dict>"), QByteArray("bplist00garbage"),
                                      QByteArray("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict/></plist>"),
                                      QByteArray("<array>").repeated(100'000)}) {
        desktop.container.write(QStringLiteral("data/menuItems.plist"), damaged);
        const auto before = setAside();
        EXPECT_EQ(array().count(), 6U);
        const auto after = setAside();
        ASSERT_EQ(after.size(), before.size() + 1);
        for (const QString &name : after) {
            if (!before.contains(name)) {
                EXPECT_EQ(TemporaryContainer::read(desktop.container.directories().container + u'/' + name), damaged);
            }
        }
        EXPECT_EQ(storedNames().size(), 6);
    }
}

TEST_F(MenuItemArrayTest, holdsTenThousandEntriesAndHostileNames)
{
    QVariantList entries{core("Finder")};
    for (int i = 0; i < 10'000; ++i)
        entries.append(link(QByteArray("\xF0\x9F\x92\xA5 <&\"' %s %1 ").append(QByteArray::number(i)).constData()));
    plant(entries);
    MenuItemArray items = array();
    ASSERT_EQ(items.count(), 10'001U);
    items.persist();
    EXPECT_EQ(PropertyList::read(desktop.container.itemFile())->toList(), entries);
}

} // namespace
} // namespace Orbita
