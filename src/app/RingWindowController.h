#pragma once

#include "control/ItemMenu.h"
#include "control/RingKeyMonitor.h"
#include "model/MenuItemArray.h"
#include "platform/RunningApplications.h"
#include "ring/RingView.h"
#include "ring/WindowFade.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace Orbita {

class AppSettings;
class CloseButton;
class RingWindow;
class Scheduler;
class SessionState;
class UserDefaults;
class UserNotifications;
struct ItemServices;

/// What a showing of the ring needs. Borrowed: all of it outlives the controller.
struct ControllerServices {
    QString itemFolder; ///< where the item file lies
    AppSettings &settings;
    UserDefaults &defaults;
    ItemServices &items;
    RingServices ring;
    Scheduler &scheduler;
    UserNotifications &notifications;
    const SessionState &session;
};

/// Whether the application that had the keyboard before the ring gets it back.
enum class ReactivatePrevious { No, Yes };
/// Whether a hide request also closes what the ring has opened.
enum class ForceHide { No, Yes };

/// One showing of the ring: its entries, its window's coming and going, hovering, keys and clicks.
class RingWindowController final : public QObject,
                                   private RingViewDataSource,
                                   private RingViewDelegate,
                                   private RingKeyTarget {
    Q_OBJECT
public:
    /// Fills \a window, which is hidden; the window is empty again when the controller is gone.
    RingWindowController(RingWindow &window, const ControllerServices &services, QObject *parent = nullptr);
    ~RingWindowController() override;

    /// Shows the ring round \a centre (global points, y upwards), or moves a shown one there.
    void showWindowAtScreenPosition(QPointF centre);
    /// Fades the ring out; ignored while canClose() is false.
    void hideWindow(ReactivatePrevious reactivate, ForceHide force = ForceHide::No);

    /// Ends a drag along the ring where it is, before the release has reached the ring.
    void finishDrag();

    /// Whether the ring is more than half visible.
    [[nodiscard]] bool windowVisible() const;
    /// Whether nothing of the ring can be seen.
    [[nodiscard]] bool isHidden() const;
    /// Whether the ring is shown, however little of it has faded in, and not on its way out.
    [[nodiscard]] bool isShown() const;
    /// The ring window's frame, global points, y upwards.
    [[nodiscard]] const QRectF &frame() const { return m_frame; }
    /// Calls \a answer with whether the pointer is over the ring, at once or later.
    void mouseHoveringOverMenu(std::function<void(bool)> answer);

    [[nodiscard]] bool canClose() const { return m_canClose; }
    /// While false, hide requests are dropped and the entries stay as they are: a dialog of the ring is open.
    void setCanClose(bool canClose);

    /// Loads the entries anew, or, while canClose() is false, when it is true again: what a dialog is about must not be
    /// replaced under it. \a instantly is passed on to RingView::reloadData().
    void refreshItems(bool instantly = true);
    /// Saves the entries after a change by the user, who is told when that fails.
    void persistItems();
    [[nodiscard]] const MenuItemArray &menuItems() const { return m_menuItems; }
    [[nodiscard]] bool toolkitAvailable() const;

Q_SIGNALS:
    /// The ring has faded out.
    void didDisappear();

private:
    qint64 ringViewNumberOfSections(RingView &view) override;
    qint64 ringViewNumberOfItemsInSection(RingView &view, qint64 section) override;
    std::unique_ptr<RingItem> ringViewItemFor(RingView &view, ItemAddress address) override;
    bool ringViewSectionSupportsDrop(RingView &view, qint64 section) override;
    bool ringViewShouldDisplayTitleOfItem(RingView &view, ItemAddress address) override;

    void ringViewDidClickItem(RingView &view, ItemAddress address) override;
    void ringViewDidMoveItem(RingView &view, ItemAddress from, ItemAddress to) override;
    void ringViewDidRightClickItem(RingView &view, ItemAddress address) override;
    // Entries hold nothing, and nothing is taken in from outside.
    void ringViewDidRightClickOutsideOfItem(RingView &, ItemAddress) override {}
    bool ringViewCanDropItem(RingView &, ItemAddress, ItemAddress) override { return false; }
    void ringViewDidDropItem(RingView &, ItemAddress, ItemAddress) override { reloadRing(); }
    bool ringViewDidReceiveDrag(RingView &, const DragInformation &, ItemAddress) override { return false; }
    bool ringViewCanDrop(RingView &, const DragInformation &, ItemAddress) override { return false; }
    bool ringViewDidDrop(RingView &, const DragInformation &, ItemAddress) override { return false; }

    qint64 itemCount() const override;
    qint64 highlightedPosition() const override;
    void highlight(qint64 position) override;
    void click(qint64 position) override;
    void dismiss() override;

    void buildWindow();
    void buildMenu();
    void editItem(const MenuItem::Pointer &item);
    void followSettings();
    void refreshWindowTint();
    void keepOnScreens();
    /// Shows the ring round \a centre, or, while a dialog is open, when that is done.
    void showAgain(QPointF centre);
    /// Shows what became known of the files of entries, as soon as no item is held.
    void followFiles();
    /// Takes over which applications run. True when the ring shows something else.
    bool updateRunningEntries();
    /// Takes over what became known of the running applications. True when an entry looks different.
    bool updateRunningRecords();
    /// Which entries run, in order.
    [[nodiscard]] std::vector<bool> runningMarks() const;
    [[nodiscard]] std::optional<qint64> positionOf(const QString &identity) const;
    void reloadRing(bool instantly = true);
    void setRingEnabled(bool enabled);
    void reactivatePreviousApplication();
    void finishHiding();
    [[nodiscard]] bool opensOnHover(qint64 position) const;
    [[nodiscard]] const MenuItem::Pointer &itemAt(ItemAddress address) const;

    RingWindow &m_window;
    ControllerServices m_services;
    MenuItemArray m_menuItems;
    QPointer<RingView> m_ringView;
    QPointer<CloseButton> m_closeButton;
    WindowFade m_fade;
    QRectF m_frame;
    QRectF m_frameOnDesktop; ///< the same, which a change of screens leaves as it is
    RingKeyMonitor m_keyMonitor;
    ItemMenu m_itemMenu;
    std::vector<bool> m_shownMarks; ///< runningMarks() as of the last reload
    std::optional<RunningApplication> m_lastFrontmostApp;
    QElapsedTimer m_sinceShown; ///< since the last fade-in ended; invalid before the first
    qint64 m_lastSwiftItemIndex = NotFound;
    QString m_chosenIdentity; ///< of the item last chosen by keyboard
    bool m_canClose = true;
    bool m_isRefreshDue = false; ///< when the dialog that is open is done
    bool m_isShowDue = false;    ///< likewise
    bool m_itemsAreFresh = true; ///< loaded when the controller was made, and not shown yet
    bool m_isHiding = false;     ///< fading out; another request must not begin the fade anew
};

} // namespace Orbita
