#include "control/ItemMenu.h"

#include "model/AppMenuItem.h"
#include "model/CoreMenuItem.h"
#include "platform/memory/MemoryScheduler.h"
#include "support/MemoryDesktop.h"

#include <QApplication>
#include <QMenu>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

/// An item that can do what a test says.
class CapableItem final : public MenuItem {
public:
    explicit CapableItem(ItemMenuPlan capabilities) : m_capabilities(std::move(capabilities)) {}
    [[nodiscard]] QStringList openWithAppPaths() const override { return m_capabilities.openWithAppPaths; }
    [[nodiscard]] bool canEdit() const override { return m_capabilities.canEdit; }
    [[nodiscard]] bool canQuit() const override { return m_capabilities.canQuit; }

private:
    ItemMenuPlan m_capabilities;
};

struct ItemMenuTest : testing::Test {
    MemoryDesktop desktop;
    MemoryScheduler scheduler;
    QWidget owner;
    ItemMenu menu{desktop.workspace, scheduler};
    QStringList chosen;
    MenuItem::Pointer item = std::make_shared<CapableItem>(ItemMenuPlan{{u"/a"_s, u"/b"_s}, true, true});

    ItemMenuTest()
    {
        desktop.workspace.displayNames = {{u"/a"_s, u"Cut & Paste"_s}, {u"/b"_s, u"Beta"_s}};
        QObject::connect(&menu, &ItemMenu::openWithChosen, &owner,
                         [this](const auto &, const QString &path) { chosen << path; });
        QObject::connect(&menu, &ItemMenu::editChosen, &owner, [this] { chosen << u"edit"_s; });
        QObject::connect(&menu, &ItemMenu::quitChosen, &owner, [this] { chosen << u"quit"_s; });
    }
    void popup() { menu.popup(item, true, owner, {10, 10}); }
    [[nodiscard]] QMenu *shown() const { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }
};

TEST_F(ItemMenuTest, offersWhatTheEntryCan)
{
    const CapableItem capable({{}, true, true});
    EXPECT_EQ(planItemMenu(capable, true), (ItemMenuPlan{{}, true, true}));
    EXPECT_EQ(planItemMenu(capable, false), (ItemMenuPlan{{}, true, false})) << "nobody would quit it";
    desktop.workspace.coreApplications = {{u"Finder"_s, u"/files.desktop"_s}, {u"Safari"_s, u"/web.desktop"_s}};
    desktop.runningApplications.start(u"/files.desktop"_s, u"Files"_s);
    desktop.runningApplications.start(u"/web.desktop"_s, u"Web"_s);
    EXPECT_TRUE(planItemMenu(CoreMenuItem(u"Finder"_s, desktop.services), true).isEmpty());
    EXPECT_TRUE(planItemMenu(CoreMenuItem(u"Safari"_s, desktop.services), true).canQuit);
}

TEST_F(ItemMenuTest, saysWhatWasChosen)
{
    popup();
    ASSERT_TRUE(shown());
    const auto entries = shown()->actions();
    ASSERT_EQ(entries.size(), 3);
    EXPECT_EQ(entries[0]->text(), u"Open With..."_s);
    EXPECT_EQ(entries[1]->text(), u"Edit"_s);
    EXPECT_EQ(entries[2]->text(), u"Quit Application"_s);
    Q_EMIT entries[0]->menu()->aboutToShow();
    Q_EMIT entries[0]->menu()->aboutToShow();
    const auto applications = entries[0]->menu()->actions();
    ASSERT_EQ(applications.size(), 3) << "the default one stands apart";
    EXPECT_EQ(applications[0]->text(), u"Cut && Paste"_s) << "an ampersand marks no key";
    EXPECT_TRUE(applications[1]->isSeparator());
    applications[2]->trigger();
    entries[1]->trigger();
    entries[2]->trigger();
    EXPECT_EQ(chosen, QStringList({u"/b"_s, u"edit"_s, u"quit"_s}));
}

TEST_F(ItemMenuTest, staysAwayForHalfASecondAfterItWasClosed)
{
    popup();
    popup();
    EXPECT_FALSE(shown()) << "a second right click closes it";
    scheduler.advance(std::chrono::milliseconds(499));
    popup();
    EXPECT_FALSE(shown());
    EXPECT_TRUE(menu.isVisible()) << "the click that closed it is no click elsewhere";
    scheduler.advance(std::chrono::milliseconds(1));
    EXPECT_FALSE(menu.isVisible());
    popup();
    EXPECT_TRUE(shown());
}

TEST_F(ItemMenuTest, doesNotOpenEmpty)
{
    item = std::make_shared<CapableItem>(ItemMenuPlan{});
    popup();
    EXPECT_FALSE(shown());
    EXPECT_FALSE(menu.isVisible());
}

} // namespace
} // namespace Orbita
