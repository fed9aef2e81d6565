#include "ring/RingAccessibility.h"
#include "ring/CloseButton.h"
#include "ring/RingViewFixture.h"

#include <QAccessible>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

class RingAccessibility : public RingViewFixture {
protected:
    static void SetUpTestSuite() { installRingAccessibility(); }

    QAccessibleInterface *ring = QAccessible::queryAccessibleInterface(&view);
};

TEST_F(RingAccessibility, letsItemsBePressedAndChosenUntilTheyAreGone)
{
    QAccessibleInterface *chosen = ring->child(5);
    EXPECT_TRUE(chosen->state().focusable);
    EXPECT_FALSE(chosen->state().focused);
    chosen->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(chosen->state().focused);
    EXPECT_EQ(ring->focusChild(), chosen);
    chosen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    chosen->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    view.setEnabled(false);
    chosen->actionInterface()->doAction(QAccessibleActionInterface::pressAction()); // a ring that goes opens nothing
    view.setEnabled(true);
    load({2});
    EXPECT_EQ(ring->childCount(), 2);
    EXPECT_FALSE(chosen->isValid());
    EXPECT_EQ(chosen->text(QAccessible::Name), QString());
    chosen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(script.reports, (Reports{"click 0-5", "right click 0-5"}));
    item(1).setHighlighted(true);
    EXPECT_EQ(ring->child(1)->text(QAccessible::Description), u"Running"_s);
}

TEST_F(RingAccessibility, letsTheCloseButtonBePressed)
{
    CloseButton button;
    int clicks = 0;
    button.mouseClickBlock = [&](QMouseEvent &) { ++clicks; };
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&button);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Close"_s);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks, 1);
}

} // namespace
} // namespace Orbita
