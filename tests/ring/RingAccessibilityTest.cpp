#include "ring/RingAccessibility.h"
#include "ring/CloseButton.h"
#include "ring/RingViewFixture.h"

#include <QAccessible>

namespace Orbita {
namespace {

class RingAccessibility : public RingViewFixture {
protected:
    static void SetUpTestSuite() { installRingAccessibility(); }

    QAccessibleInterface *ring = QAccessible::queryAccessibleInterface(&view);
};

TEST_F(RingAccessibility, exposesTheRingAsAMenuOfItsItems)
{
    ASSERT_TRUE(ring);
    EXPECT_EQ(ring->role(), QAccessible::PopupMenu);
    EXPECT_EQ(ring->text(QAccessible::Name), QStringLiteral("Orbita"));
    ASSERT_EQ(ring->childCount(), 8);
    QAccessibleInterface *item = ring->child(3);
    EXPECT_EQ(item->text(QAccessible::Name), QStringLiteral("0-3"));
    EXPECT_EQ(ring->indexOfChild(item), 3);
    EXPECT_EQ(item->parent(), ring);
    EXPECT_EQ(ring->child(8), nullptr);
    const QRectF inWidget = ViewFlip{400}(view.itemFor({0, 3})->frame());
    EXPECT_TRUE(item->rect().contains(view.mapToGlobal(inWidget.center()).toPoint()));
    EXPECT_EQ(ring->childAt(item->rect().center().x(), item->rect().center().y()), item);
}

TEST_F(RingAccessibility, letsItemsBePressedAndChosen)
{
    QAccessibleInterface *item = ring->child(5);
    EXPECT_TRUE(item->state().focusable);
    EXPECT_FALSE(item->state().focused);
    item->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(item->state().focused);
    EXPECT_EQ(ring->focusChild(), item);
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    item->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_EQ(script.reports, (std::vector<std::string>{"click 0-5", "right click 0-5"}));
}

TEST_F(RingAccessibility, followsReloads)
{
    QAccessibleInterface *item = ring->child(7);
    load({2});
    EXPECT_EQ(ring->childCount(), 2);
    EXPECT_FALSE(item->isValid());
    EXPECT_EQ(item->text(QAccessible::Name), QString());
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(script.reports.empty());
    view.itemFor({0, 1})->setHighlighted(true);
    EXPECT_EQ(ring->child(1)->text(QAccessible::Description), QStringLiteral("Running"));
}

TEST_F(RingAccessibility, letsTheCloseButtonBePressed)
{
    CloseButton button;
    int clicks = 0;
    button.mouseClickBlock = [&](QMouseEvent &) { ++clicks; };
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&button);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Close"));
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks, 1);
}

} // namespace
} // namespace Orbita
