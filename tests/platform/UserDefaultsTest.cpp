#include "platform/desktop/FileUserDefaults.h"
#include "platform/memory/MemoryUserDefaults.h"

#include "platform/AtomicFile.h"
#include "platform/PropertyList.h"

#include "support/RowName.h"
#include "support/TemporaryContainer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSize>
#include <QTimer>

#include <functional>
#include <memory>

namespace Orbita {
namespace {

const QString key = QStringLiteral("key");
const QString other = QStringLiteral("other");

/// Runs the event loop until \a condition holds; false when it did not within a generous time.
bool waitUntil(const std::function<bool()> &condition)
{
    constexpr auto bound = std::chrono::seconds(30);
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(bound);
    while (!condition() && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

// What every kind of user defaults does.

using Maker = std::function<std::unique_ptr<UserDefaults>(const TemporaryContainer &)>;

struct BackEnd {
    const char *name;
    Maker make;
};

void PrintTo(const BackEnd &row, std::ostream *stream)
{
    *stream << row.name;
}

class UserDefaultsContract : public testing::TestWithParam<BackEnd> {
protected:
    const TemporaryContainer m_container;
    const std::unique_ptr<UserDefaults> m_defaults = GetParam().make(m_container);
};

TEST_P(UserDefaultsContract, storesAndRemovesValues)
{
    EXPECT_FALSE(m_defaults->contains(key));
    m_defaults->setValue(key, 5);
    m_defaults->setValue(other, QStringList{QStringLiteral("a"), QStringLiteral("b")});
    EXPECT_EQ(m_defaults->value(key).typeId(), QMetaType::LongLong);
    EXPECT_EQ(m_defaults->integer(key), 5);
    EXPECT_EQ(m_defaults->value(other), (QVariantList{QStringLiteral("a"), QStringLiteral("b")}));
    m_defaults->setValue(key, {});
    EXPECT_FALSE(m_defaults->contains(key));
    EXPECT_TRUE(m_defaults->contains(other));
    EXPECT_TRUE(m_defaults->synchronize());
}

TEST_P(UserDefaultsContract, ignoresWhatNoPropertyListCanHold)
{
    QVariant deep = 1;
    for (int i = 1; i < PropertyList::maximumDepth; ++i)
        deep = QVariantList{deep};
    m_defaults->setValue(key, 1);
    for (const QVariant &value : {QVariant(QSize(1, 2)), QVariant(QVariantList{QVariant()}), deep})
        m_defaults->setValue(key, value);
    m_defaults->setValue(other, 2);
    EXPECT_EQ(m_defaults->integer(key), 1);
    EXPECT_TRUE(m_defaults->synchronize());
}

TEST_P(UserDefaultsContract, readsNumbersAndTruthFromWhatIsThere)
{
    struct Reading {
        QVariant value;
        qint64 integer;
        bool boolean;
    };
    for (const Reading &row :
         {Reading{true, 1, true}, Reading{false, 0, false}, Reading{qint64(-7), -7, true}, Reading{2.9, 2, true},
          Reading{~quint64(0), 0, false}, Reading{1e300, 0, false}, Reading{QStringLiteral(" 12 "), 12, true},
          Reading{QStringLiteral("YES"), 0, true}, Reading{QStringLiteral("no"), 0, false},
          Reading{QByteArray("1"), 0, false}, Reading{QVariantList{1}, 0, false}, Reading{QVariantMap(), 0, false}}) {
        m_defaults->setValue(key, row.value);
        EXPECT_EQ(m_defaults->integer(key), row.integer) << row.value.typeName();
        EXPECT_EQ(m_defaults->boolean(key), row.boolean) << row.value.typeName();
    }
}

INSTANTIATE_TEST_SUITE_P(BackEnds, UserDefaultsContract,
                         testing::Values(BackEnd{"memory",
                                                 [](const TemporaryContainer &) -> std::unique_ptr<UserDefaults> {
                                                     return std::make_unique<MemoryUserDefaults>();
                                                 }},
                                         BackEnd{
                                             "file",
                                             [](const TemporaryContainer &container) -> std::unique_ptr<UserDefaults> {
                                                 return std::make_unique<FileUserDefaults>(container.defaultsFile());
                                             }}),
                         rowName<BackEnd>);

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

TEST_F(FileUserDefaultsTest, writesAtOnceAndReadsAgain)
{
    const auto defaults = open();
    EXPECT_FALSE(QFileInfo::exists(m_path));
    defaults->setValue(key, QStringLiteral("text"));
    EXPECT_EQ(stored(), (QVariantMap{{key, QStringLiteral("text")}}));
    EXPECT_EQ(open()->value(key), QStringLiteral("text"));
}

TEST_F(FileUserDefaultsTest, mergesWhatAnotherProgramWrote)
{
    writeElsewhere({{key, 1}, {other, 1}});
    const auto defaults = open();
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
    ASSERT_TRUE(waitUntil([&] { return !m_changed.isEmpty(); }));
    EXPECT_EQ(m_changed, QStringList{key});
    EXPECT_EQ(defaults->integer(key), 2);

    m_changed.clear();
    QFile inPlace(m_path);
    ASSERT_TRUE(inPlace.open(QIODevice::WriteOnly));
    inPlace.write("<plist><dict><key>other</key><integer>1</integer></dict></plist>");
    inPlace.close();
    ASSERT_TRUE(waitUntil([&] { return !m_changed.isEmpty(); }));
    EXPECT_THAT(m_changed, testing::UnorderedElementsAre(key, QStringLiteral("own")));

    m_changed.clear();
    ASSERT_TRUE(QFile::remove(m_path));
    ASSERT_TRUE(waitUntil([&] { return !m_changed.isEmpty(); }));
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
    ASSERT_TRUE(waitUntil([&] { return !m_changed.isEmpty(); }));
    EXPECT_EQ(m_changed, QStringList{key});
}

TEST_F(FileUserDefaultsTest, isSilentAboutItsOwnWrites)
{
    const auto defaults = open();
    defaults->setValue(key, 1);
    defaults->setValue(other, QVariantList{0.1, QByteArray("x"), QStringLiteral("a\r\n")});
    defaults->setValue(key, {});
    writeElsewhere({{key, 7}, {other, QVariantList{0.1, QByteArray("x"), QStringLiteral("a\r\n")}}});
    ASSERT_TRUE(waitUntil([&] { return m_changed.contains(key); })) << "events of our writes came before this one";
    EXPECT_EQ(m_changed, QStringList{key});
}

struct DamagedRow {
    const char *name;
    QByteArray content;
};

void PrintTo(const DamagedRow &row, std::ostream *stream)
{
    *stream << row.name;
}

class DamagedDefaults : public FileUserDefaultsTest, public testing::WithParamInterface<DamagedRow> {};

TEST_P(DamagedDefaults, areSetAsideWithTheirContent)
{
    m_container.write(QStringLiteral("config/defaults.plist"), GetParam().content);
    const auto defaults = open();
    EXPECT_FALSE(defaults->contains(key));
    defaults->setValue(key, 1);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), (QVariantMap{{key, 1}}));
    ASSERT_EQ(damagedFiles().size(), 1);
    const QString aside = QFileInfo(m_path).dir().filePath(damagedFiles().constFirst());
    EXPECT_EQ(TemporaryContainer::read(aside), GetParam().content);
}

INSTANTIATE_TEST_SUITE_P(Files, DamagedDefaults,
                         testing::Values(DamagedRow{"an empty file", {}}, DamagedRow{"text", "key = 1"},
                                         DamagedRow{"a cut off file", "<plist><dict><key>key</key><integer>1</in"},
                                         DamagedRow{"an array for a root", "<plist><array/></plist>"},
                                         DamagedRow{"100,000 nested arrays",
                                                    "<plist>" + QByteArray("<array>").repeated(100'000)},
                                         DamagedRow{"NULs", QByteArray(1000, '\0')}),
                         rowName<DamagedRow>);

TEST_F(FileUserDefaultsTest, keepsItsValuesWhenTheFileIsDamagedLater)
{
    writeElsewhere({{key, 1}, {other, 2}});
    const auto defaults = open();
    ASSERT_TRUE(writeFileAtomically(m_path, "damage"));
    ASSERT_TRUE(waitUntil([&] { return !damagedFiles().isEmpty(); }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_changed.isEmpty());
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
