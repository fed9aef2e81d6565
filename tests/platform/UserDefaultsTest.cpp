#include "platform/desktop/FileUserDefaults.h"
#include "platform/memory/MemoryUserDefaults.h"

#include "platform/AtomicFile.h"
#include "platform/PropertyList.h"

#include "desktop/harness/Wait.h"
#include "support/TemporaryContainer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSize>

#include <memory>

namespace Orbita {
namespace {

const QString key = QStringLiteral("key");
const QString other = QStringLiteral("other");

// What every kind of user defaults does.

struct MemoryBackEnd {
    MemoryUserDefaults defaults;
};
struct FileBackEnd {
    TemporaryContainer container;
    FileUserDefaults defaults{container.defaultsFile()};
};

template <typename BackEnd>
class UserDefaultsContract : public testing::Test {
protected:
    BackEnd m_backEnd;
    UserDefaults &m_defaults = m_backEnd.defaults;
};
using BackEnds = testing::Types<MemoryBackEnd, FileBackEnd>;
TYPED_TEST_SUITE(UserDefaultsContract, BackEnds);

TYPED_TEST(UserDefaultsContract, storesAndRemovesValues)
{
    UserDefaults &defaults = this->m_defaults;
    QVariantList announced;
    QObject::connect(&defaults, &UserDefaults::changed, &defaults,
                     [&](const QString &changed) { announced.append(defaults.value(changed)); });
    EXPECT_FALSE(defaults.contains(key));
    defaults.setValue(key, 5);
    EXPECT_EQ(announced, QVariantList{qint64(5)});
    defaults.setValue(other, QStringList{QStringLiteral("a"), QStringLiteral("b")});
    EXPECT_EQ(defaults.value(key).typeId(), QMetaType::LongLong);
    EXPECT_EQ(defaults.integer(key), 5);
    EXPECT_EQ(defaults.value(other), (QVariantList{QStringLiteral("a"), QStringLiteral("b")}));
    defaults.setValue(key, {});
    EXPECT_FALSE(defaults.contains(key));
    EXPECT_TRUE(defaults.contains(other));
    EXPECT_TRUE(defaults.synchronize());
}

TYPED_TEST(UserDefaultsContract, ignoresWhatNoPropertyListCanHold)
{
    UserDefaults &defaults = this->m_defaults;
    QVariant deep = 1;
    for (int i = 1; i < PropertyList::maximumDepth; ++i)
        deep = QVariantList{deep};
    defaults.setValue(key, 1);
    for (const QVariant &value : {QVariant(QSize(1, 2)), QVariant(QVariantList{QVariant()}), deep})
        defaults.setValue(key, value);
    defaults.setValue(other, 2);
    EXPECT_EQ(defaults.integer(key), 1);
    EXPECT_TRUE(defaults.synchronize());
}

TYPED_TEST(UserDefaultsContract, readsNumbersAndTruthFromWhatIsThere)
{
    UserDefaults &defaults = this->m_defaults;
    const std::vector<std::tuple<QVariant, qint64, bool>> rows{{true, 1, true},
                                                               {false, 0, false},
                                                               {qint64(-7), -7, true},
                                                               {2.9, 2, true},
                                                               {~quint64(0), 0, false},
                                                               {1e300, 0, false},
                                                               {QStringLiteral(" 12 "), 12, true},
                                                               {QStringLiteral("YES"), 0, true},
                                                               {QStringLiteral("no"), 0, false},
                                                               {QByteArray("1"), 0, false},
                                                               {QVariantList{1}, 0, false},
                                                               {QVariantMap(), 0, false}};
    for (const auto &[value, integer, boolean] : rows) {
        defaults.setValue(key, value);
        EXPECT_EQ(defaults.integer(key), integer) << value.typeName();
        EXPECT_EQ(defaults.boolean(key), boolean) << value.typeName();
    }
}

// What the file adds.

class FileUserDefaultsTest : public testing::Test {
protected:
    /// As another program would, replacing the file.
    void writeElsewhere(const QVariantMap &values) const
    {
        ASSERT_TRUE(PropertyList::write(m_path, values, PropertyList::Format::Binary));
    }

    [[nodiscard]] QVariantMap stored() const
    {
        const auto root = PropertyList::read(m_path);
        return root ? root->toMap() : QVariantMap();
    }

    [[nodiscard]] QStringList damagedFiles() const
    {
        return QFileInfo(m_path).dir().entryList({QStringLiteral("*.damaged-*")});
    }

    std::unique_ptr<FileUserDefaults> open()
    {
        auto defaults = std::make_unique<FileUserDefaults>(m_path);
        QObject::connect(defaults.get(), &UserDefaults::changedExternally, defaults.get(),
                         [this](const QStringList &keys) { m_changed.append(keys); });
        return defaults;
    }

    const TemporaryContainer m_container;
    const QString m_path = m_container.defaultsFile();
    QStringList m_changed;
};

TEST_F(FileUserDefaultsTest, mergesWhatAnotherProgramWrote)
{
    const auto defaults = open();
    EXPECT_FALSE(QFileInfo::exists(m_path)) << "it is made for the first value";
    defaults->setValue(key, 1);
    defaults->setValue(other, 1);
    EXPECT_EQ(open()->value(other), 1);
    writeElsewhere({{other, 2}, {QStringLiteral("third"), 3}});
    defaults->setValue(key, 5);
    EXPECT_EQ(stored(), (QVariantMap{{key, 5}, {other, 2}, {QStringLiteral("third"), 3}}));
    EXPECT_THAT(m_changed, testing::UnorderedElementsAre(key, other, QStringLiteral("third")));
}

TEST_F(FileUserDefaultsTest, reportsTheKeysThatAnotherProgramChanged)
{
    writeElsewhere({{key, 1}, {other, 1}});
    const auto defaults = open();
    defaults->setValue(QStringLiteral("own"), QStringList{QStringLiteral("a")});

    writeElsewhere({{key, 2}, {other, 1}, {QStringLiteral("own"), QStringList{QStringLiteral("a")}}});
    ASSERT_TRUE(eventually([&] { return !m_changed.isEmpty(); }));
    EXPECT_EQ(m_changed, QStringList{key});
    EXPECT_EQ(defaults->integer(key), 2);

    m_changed.clear();
    QFile inPlace(m_path);
    ASSERT_TRUE(inPlace.open(QIODevice::WriteOnly));
    inPlace.write("<plist><dict><key>other</key><integer>1</integer></dict></plist>");
    inPlace.close();
    ASSERT_TRUE(eventually([&] { return !m_changed.isEmpty(); }));
    EXPECT_THAT(m_changed, testing::UnorderedElementsAre(key, QStringLiteral("own")));

    m_changed.clear();
    ASSERT_TRUE(QFile::remove(m_path));
    ASSERT_TRUE(eventually([&] { return !m_changed.isEmpty(); }));
    EXPECT_EQ(m_changed, QStringList{other});
}

TEST_F(FileUserDefaultsTest, followsALinkToAFileElsewhere)
{
    const QString target = m_container.write(QStringLiteral("dotfiles/o.plist"), "<plist><dict/></plist>");
    ASSERT_TRUE(QFile::link(target, m_path));
    const auto defaults = open();
    defaults->setValue(other, 1);
    EXPECT_TRUE(QFileInfo(m_path).isSymLink());
    ASSERT_TRUE(PropertyList::write(target, QVariantMap{{key, 9}, {other, 1}}, PropertyList::Format::Xml));
    ASSERT_TRUE(eventually([&] { return !m_changed.isEmpty(); }));
    EXPECT_EQ(m_changed, QStringList{key});
}

TEST_F(FileUserDefaultsTest, isSilentAboutItsOwnWrites)
{
    const auto defaults = open();
    defaults->setValue(key, 1);
    defaults->setValue(other, QVariantList{0.1, QByteArray("x"), QStringLiteral("a\r\n")});
    defaults->setValue(key, {});
    writeElsewhere({{key, 7}, {other, QVariantList{0.1, QByteArray("x"), QStringLiteral("a\r\n")}}});
    ASSERT_TRUE(eventually([&] { return m_changed.contains(key); })) << "events of our writes came before this one";
    EXPECT_EQ(m_changed, QStringList{key});
}

TEST_F(FileUserDefaultsTest, setsADamagedFileAsideWithItsContent)
{
    for (const QByteArray &content :
         {QByteArray(), QByteArray("key = 1"), QByteArray("<plist><dict><key>key</key><integer>1</in"),
          QByteArray("<plist><array/></plist>"), "<plist>" + QByteArray("<array>").repeated(100'000),
          QByteArray(1000, '\0')}) {
        SCOPED_TRACE(content.left(100).constData());
        m_container.write(QStringLiteral("config/defaults.plist"), content);
        const auto defaults = open();
        EXPECT_FALSE(defaults->contains(key));
        defaults->setValue(key, 1);
        EXPECT_TRUE(defaults->synchronize());
        EXPECT_EQ(stored(), (QVariantMap{{key, 1}}));
        ASSERT_EQ(damagedFiles().size(), 1);
        const QString aside = QFileInfo(m_path).dir().filePath(damagedFiles().constFirst());
        EXPECT_EQ(TemporaryContainer::read(aside), content);
        QFile::remove(aside);
    }
}

TEST_F(FileUserDefaultsTest, keepsItsValuesWhenTheFileIsDamagedLater)
{
    writeElsewhere({{key, 1}, {other, 2}});
    const auto defaults = open();
    ASSERT_TRUE(writeFileAtomically(m_path, "damage"));
    ASSERT_TRUE(eventually([&] { return !damagedFiles().isEmpty(); }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_changed.isEmpty());
    EXPECT_EQ(stored(), (QVariantMap{{key, 1}, {other, 2}})) << "written again at once";
    defaults->setValue(key, 5);
    EXPECT_EQ(stored(), (QVariantMap{{key, 5}, {other, 2}}));
    EXPECT_EQ(damagedFiles().size(), 1);
}

TEST_F(FileUserDefaultsTest, neverReplacesWhatItCannotRead)
{
    ASSERT_TRUE(QDir().mkdir(m_path)); // a file that is not readable would be so for the superuser
    const auto defaults = open();
    defaults->setValue(key, 1);
    defaults->setValue(other, 2);
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_EQ(defaults->integer(key), 1);
    EXPECT_TRUE(QFileInfo(m_path).isDir());
    EXPECT_TRUE(damagedFiles().isEmpty());

    ASSERT_TRUE(QDir().rmdir(m_path));
    writeElsewhere({{key, 8}, {QStringLiteral("third"), 3}});
    EXPECT_TRUE(defaults->synchronize()) << "now the values find their place";
    EXPECT_EQ(stored(), (QVariantMap{{key, 1}, {other, 2}, {QStringLiteral("third"), 3}}));
}

TEST_F(FileUserDefaultsTest, keepsValuesThatCouldNotBeWritten)
{
    const auto defaults = open();
    const QString folder = QFileInfo(m_path).path();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    defaults->setValue(key, 1);
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_EQ(defaults->integer(key), 1);
    ASSERT_TRUE(QDir().mkpath(folder));
    defaults->setValue(other, 2);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), (QVariantMap{{key, 1}, {other, 2}}));
}

} // namespace
} // namespace Orbita
