#include "ring/RingAccessibility.h"

#include "ring/AccessibleRing.h"
#include "ring/CloseButton.h"
#include "ring/RingView.h"

#include <QAccessible>

namespace Orbita {

namespace {

class AccessibleCloseButton final : public QAccessibleWidget {
public:
    explicit AccessibleCloseButton(CloseButton *button) : QAccessibleWidget(button, QAccessible::Button) {}

    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &action) override
    {
        if (action == pressAction())
            static_cast<CloseButton *>(widget())->click();
    }
};

QAccessibleInterface *accessibleFor(const QString &, QObject *object)
{
    if (auto *ring = qobject_cast<RingView *>(object))
        return new AccessibleRing(ring);
    if (auto *button = qobject_cast<CloseButton *>(object))
        return new AccessibleCloseButton(button);
    return nullptr;
}

} // namespace

void installRingAccessibility()
{
    QAccessible::installFactory(accessibleFor);
}

} // namespace Orbita
