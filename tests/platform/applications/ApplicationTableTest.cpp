#include "platform/desktop/ApplicationTable.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

ApplicationWindow window(quint32 id, const char *windowClass, qint64 process = 0, quint64 startTime = 0)
{
    ApplicationWindow made;
    made.window = id;
    made.identity.windowClass = QString::fromUtf8(windowClass);
    made.process.processIdentifier = process;
    made.process.startTime = startTime;
    made.isListed = true;
    return made;
}

class ApplicationTableTest : public testing::Test {
protected:
    void add(const ApplicationWindow &added) { m_table.setWindow(added, m_catalog); }

    DesktopCatalog m_catalog;
    const DesktopCatalog m_withEditor{
        {{QStringLiteral("editor"), QStringLiteral("/a/editor.desktop"), QStringLiteral("Editor"), {}, {}, false, {}}}};
    const Image m_icon = Image::fromPixels(QImage(1, 1, QImage::Format_ARGB32_Premultiplied));
    ApplicationTable m_table{1, [this](const QString &) { return m_icon; }};
};

TEST_F(ApplicationTableTest, keepsARunWhenItsDesktopFileIsFoundLater)
{
    add(window(10, "Other"));
    add(window(11, "Editor"));
    add(window(12, "Editor"));
    const quint64 serial = m_table.ownerOf(11)->serial;
    m_table.regroup(m_withEditor);
    const auto all = m_table.applications();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[1].serial, serial);
    EXPECT_EQ(all[1].bundlePath, QStringLiteral("/a/editor.desktop"));
    EXPECT_EQ(all[1].icon, m_icon);
    m_table.regroup(DesktopCatalog());
    EXPECT_EQ(m_table.applications()[1].serial, serial) << "and when it is removed";
    EXPECT_TRUE(m_table.applications()[1].icon.isNull());
}

TEST_F(ApplicationTableTest, asksForTheIconAgainWhenTheDesktopFileSaysAnother)
{
    int asked = 0;
    ApplicationTable table(1, [&](const QString &) {
        ++asked;
        return Image::fromPixels(QImage(1, 1, QImage::Format_ARGB32_Premultiplied));
    });
    table.setWindow(window(10, "Editor"), m_withEditor);
    const Image before = table.applications()[0].icon;
    table.regroup(m_withEditor);
    table.setWindow(window(11, "Editor"), m_withEditor);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(table.applications()[0].icon, before);
    std::vector<DesktopEntry> changed = m_withEditor.entries();
    changed[0].icon = QStringLiteral("another");
    table.regroup(DesktopCatalog(changed));
    EXPECT_FALSE(table.applications()[0].icon == before);
}

TEST_F(ApplicationTableTest, joinsRunsThatTurnOutToBeOne)
{
    ApplicationWindow other = window(11, "Dialog", 5);
    other.identity.gtkApplicationId = QStringLiteral("editor");
    add(window(10, "Editor", 4));
    add(other);
    ASSERT_EQ(m_table.applications().size(), 2U);
    m_table.holdProcesses(m_table.processes());
    const quint64 first = m_table.ownerOf(10)->serial;
    m_table.regroup(m_withEditor);
    ASSERT_EQ(m_table.applications().size(), 1U);
    EXPECT_EQ(m_table.ownerOf(11)->serial, first);
    EXPECT_EQ(m_table.processes(), (std::set<qint64>{4, 5}));
}

TEST_F(ApplicationTableTest, splitsAWindowThatChangesItsClass)
{
    add(window(10, "Suite", 4));
    add(window(11, "Suite", 4));
    add(window(11, "Editor", 4));
    ASSERT_EQ(m_table.applications().size(), 2U);
    EXPECT_NE(m_table.ownerOf(10)->serial, m_table.ownerOf(11)->serial);
}

TEST_F(ApplicationTableTest, putsAWindowWithoutAClassWithItsProcess)
{
    add(window(10, "Suite", 4));
    add(window(11, "", 4));
    add(window(12, "", 5));
    add(window(13, ""));
    add(window(14, ""));
    EXPECT_EQ(m_table.ownerOf(10), m_table.ownerOf(11));
    EXPECT_EQ(m_table.applications().size(), 4U);
}

TEST_F(ApplicationTableTest, livesUntilWindowsAndWatchedProcessesHaveGone)
{
    add(window(10, "Watched", 4, 200));
    add(window(11, "Watched", 5, 100));
    add(window(12, "Unwatched", 6));
    m_table.holdProcesses({4, 5});
    EXPECT_EQ(m_table.ownerOf(10)->processIdentifier, 5) << "the oldest";
    for (const quint32 gone : {10, 11, 12})
        m_table.removeWindow(gone);
    ASSERT_EQ(m_table.applications().size(), 1U);
    EXPECT_EQ(m_table.applications()[0].activationPolicy, ActivationPolicy::Accessory);
    m_table.removeProcess(5);
    ASSERT_EQ(m_table.applications().size(), 1U);
    EXPECT_EQ(m_table.applications()[0].processIdentifier, 4);
    m_table.removeProcess(4);
    EXPECT_TRUE(m_table.applications().empty());
}

TEST_F(ApplicationTableTest, prefersWindowsOfTheTaskListToActivate)
{
    ApplicationWindow desktop = window(10, "Files");
    desktop.isListed = false;
    add(desktop);
    const quint64 serial = m_table.ownerOf(10)->serial;
    EXPECT_EQ(m_table.windowsToActivate(serial), (std::vector<quint32>{10}));
    add(window(11, "Files"));
    EXPECT_EQ(m_table.windowsToActivate(serial), (std::vector<quint32>{11}));
}

} // namespace
} // namespace Orbita
