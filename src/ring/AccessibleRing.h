#pragma once

#include <QAccessibleWidget>
#include <QPointer>

#include <vector>

namespace Orbita {

class RingItem;
class RingView;

/// A ring as assistive technology sees it: a pop-up menu whose children are the items in ring order.
class AccessibleRing final : public QAccessibleWidget {
public:
    explicit AccessibleRing(RingView *ring);
    ~AccessibleRing() override;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

private:
    [[nodiscard]] RingView &ring() const;

    /// One for each index asked for so far; they look their item up each time, so a reload leaves them valid.
    mutable std::vector<QAccessible::Id> m_children;
};

/// One item of a ring.
class AccessibleRingItem final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleRingItem(RingView *ring, int index) : m_ring(ring), m_index(index) {}

    [[nodiscard]] int index() const { return m_index; }

    bool isValid() const override { return item() != nullptr; }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::MenuItem; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &action) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    /// The item at the index now; null when the ring has become shorter or is gone.
    [[nodiscard]] const RingItem *item() const;

    QPointer<RingView> m_ring;
    int m_index;
};

} // namespace Orbita
