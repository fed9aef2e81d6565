#pragma once

#include "model/MenuItem.h"

#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QStringList>

class QWidget;

namespace Orbita {

class Scheduler;
class Workspace;

/// What the context menu of an entry offers.
struct ItemMenuPlan {
    QStringList openWithAppPaths; ///< the default application first
    bool canEdit = false;
    bool canQuit = false;

    [[nodiscard]] bool isEmpty() const { return openWithAppPaths.isEmpty() && !canEdit && !canQuit; }
    friend bool operator==(const ItemMenuPlan &, const ItemMenuPlan &) = default;
};

/// \a toolkitAvailable says whether the companion, which quits applications, is installed. The "Finder" entry has no
/// menu.
[[nodiscard]] ItemMenuPlan planItemMenu(const MenuItem &item, bool toolkitAvailable);

/// The context menu of a ring's entries: it says what was chosen and does nothing itself.
class ItemMenu final : public QObject {
    Q_OBJECT
public:
    /// \a workspace names and pictures applications. Both services outlive the menu.
    ItemMenu(Workspace &workspace, Scheduler &scheduler, QObject *parent = nullptr);
    ~ItemMenu() override;

    /// Opens the menu of \a item for \a owner at \a where (the toolkit's global coordinates), unless there is nothing
    /// to offer. One that is open, or was until half a second ago, is closed instead: the click that closes a menu must
    /// not open it again.
    void popup(const MenuItem::Pointer &item, bool toolkitAvailable, QWidget &owner, QPoint where);
    void close();
    /// Whether the menu is open, or was until half a second ago.
    [[nodiscard]] bool isVisible() const { return m_isVisible; }

Q_SIGNALS:
    void openWithChosen(const Orbita::MenuItem::Pointer &item, const QString &applicationPath);
    void editChosen(const Orbita::MenuItem::Pointer &item);
    void quitChosen(const Orbita::MenuItem::Pointer &item);

private:
    void fill(const MenuItem::Pointer &item, const ItemMenuPlan &plan);
    void addOpenWithMenu(const MenuItem::Pointer &item, const QStringList &applicationPaths);
    void fillOpenWithMenu(QMenu &openWith, const MenuItem::Pointer &item, const QStringList &applicationPaths);

    Workspace &m_workspace;
    Scheduler &m_scheduler;
    QPointer<QMenu> m_menu; ///< the one that was opened last; ends with its owner or with this object
    bool m_isVisible = false;
};

} // namespace Orbita
