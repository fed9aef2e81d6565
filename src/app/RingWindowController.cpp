#include "app/RingWindowController.h"

#include "app/Log.h"
#include "app/RingPlacement.h"
#include "app/RunningEntries.h"
#include "control/ItemViews.h"
#include "control/Tint.h"
#include "model/ItemServices.h"
#include "model/RunningAppMenuItem.h"
#include "platform/FileLookup.h"
#include "platform/Scheduler.h"
#include "platform/SessionState.h"
#include "platform/Stage.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"
#include "ring/CloseButton.h"
#include "ring/RingWindow.h"
#include "settings/AppSettings.h"
#include "toolkit/RemoteActionSender.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace Orbita {

namespace {

/// The click or release that brought the ring up must not close it.
constexpr qint64 closeButtonGuard = 750; // milliseconds

constexpr int closeButtonSide = 30; // points

} // namespace

RingWindowController::RingWindowController(RingWindow &window, const ControllerServices &services, QObject *parent)
    : QObject(parent),
      m_window(window),
      m_services(services),
      m_menuItems(services.itemFolder, services.defaults, services.settings, services.items),
      m_fade(window, services.ring.stage, services.ring.clock),
      m_keyMonitor(window, *this, services.ring.stage),
      m_itemMenu(services.items.workspace, services.scheduler)
{
    m_window.prepare();
    buildWindow();
    buildMenu();
    m_fade.setValue(0.0);
    m_keyMonitor.setEnabled(false);
    followSettings();
    connect(&m_services.items.runningApplications, &RunningApplications::runningApplicationsChanged, this, [this] {
        if (updateRunningEntries())
            reloadRing();
    });
    connect(&m_services.items.files, &FileLookup::changed, this, &RingWindowController::followFiles);
    connect(&m_services.ring.stage, &Stage::screensChanged, this, [this] {
        if (isShown())
            keepOnScreens();
    });
}

RingWindowController::~RingWindowController()
{
    m_window.hide();
    delete m_closeButton;
    delete m_ringView;
}

void RingWindowController::buildWindow()
{
    m_ringView = new RingView(m_services.ring);
    m_ringView->setMagnifyItemsOnMouseOver(m_services.settings.magnifySettings());
    m_ringView->setDataSource(this);
    m_ringView->setDelegate(this);
    m_window.addFillingView(m_ringView);
    m_closeButton = new CloseButton;
    m_closeButton->resize(closeButtonSide, closeButtonSide);
    m_window.addCenteredView(m_closeButton);
    m_ringView->trackPointerOver(*m_closeButton);
    m_closeButton->mouseClickBlock = [this](QMouseEvent &) {
        if (m_sinceShown.isValid() && m_sinceShown.elapsed() > closeButtonGuard)
            hideWindow(ReactivatePrevious::Yes);
    };
}

void RingWindowController::buildMenu()
{
    connect(&m_itemMenu, &ItemMenu::openWithChosen, this, [this](const MenuItem::Pointer &item, const QString &path) {
        item->openWithAppPath(path);
        hideWindow(ReactivatePrevious::No);
    });
    connect(&m_itemMenu, &ItemMenu::editChosen, this, &RingWindowController::editItem);
    connect(&m_itemMenu, &ItemMenu::quitChosen, this, [](const MenuItem::Pointer &item) { item->quit(); });
}

void RingWindowController::ringViewDidRightClickItem(RingView &view, ItemAddress address)
{
    Stage &stage = m_services.ring.stage;
    stage.locatePointer(this, [this, &view, &stage, item = itemAt(address)](QPointF pointer) {
        m_itemMenu.popup(item, toolkitAvailable(), view, stage.toDesktop(pointer).toPoint());
    });
}

void RingWindowController::editItem(const MenuItem::Pointer &item)
{
    if (!item->canEdit() || !m_canClose || m_isHiding)
        return;
    setCanClose(false);
    item->startEditing(m_ringView, [this] {
        persistItems();
        reloadRing();
        const bool isUsable = m_services.session.isUsable();
        m_isShowDue = m_isShowDue && isUsable;
        setCanClose(true);
        if (isUsable)
            m_services.ring.stage.present(*m_window.windowHandle());
        else // the session was locked meanwhile
            hideWindow(ReactivatePrevious::No, ForceHide::Yes);
    });
}

void RingWindowController::setCanClose(bool canClose)
{
    m_canClose = canClose;
    m_ringView->setEnabled(canClose); // its titles would float above the dialog
    if (!canClose)
        return;
    if (std::exchange(m_isRefreshDue, false))
        refreshItems();
    if (std::exchange(m_isShowDue, false))
        showWindowAtScreenPosition(keptOnScreens(m_frame.center(), m_services.ring.stage.screens()));
}

void RingWindowController::persistItems()
{
    if (!m_menuItems.persist())
        m_services.notifications.notify(
            tr("The ring could not be saved"),
            tr("%1 could not be written, so what was changed will be lost.").arg(m_menuItems.filePath()));
}

void RingWindowController::followSettings()
{
    AppSettings &settings = m_services.settings;
    connect(&settings, &AppSettings::magnifySettingsChanged, this,
            [this] { m_ringView->setMagnifyItemsOnMouseOver(m_services.settings.magnifySettings()); });
    connect(&settings, &AppSettings::windowTintSettingsChanged, this, [this] {
        refreshWindowTint();
        reloadRing();
    });
    connect(&settings, &AppSettings::runningAppsStyleChanged, this, [this] { refreshItems(); });
    connect(&settings, &AppSettings::showFinderChanged, this, [this] { refreshItems(); });
    connect(&settings, &AppSettings::blacklistedApplicationsChanged, this, [this] { refreshItems(); });
    connect(&settings, &AppSettings::menuSizeSettingsChanged, this, [this] {
        if (!isHidden())
            showAgain(m_frame.center());
    });
}

void RingWindowController::refreshWindowTint()
{
    const QColor tint = m_services.settings.windowTintColor();
    m_window.setTintColor(tint);
    m_closeButton->setDefaultColor(closeButtonColorOn(tint));
}

void RingWindowController::showWindowAtScreenPosition(QPointF centre)
{
    qCInfo(lcApp, "The ring is shown at {%g, %g}.", centre.x(), centre.y());
    m_lastSwiftItemIndex = NotFound;
    // A shown ring that is moved has the keyboard itself; who had it before is still known.
    if (auto frontmost = m_services.items.runningApplications.frontmostApplication())
        m_lastFrontmostApp = std::move(frontmost);
    const double size = ringSize(m_services.settings.menuSizeSettings());
    m_frame = ringFrame(centre, size, m_services.settings.swiftMode(), m_services.ring.stage.screens());
    m_frameOnDesktop = m_services.ring.stage.toDesktop(m_frame);
    m_services.ring.stage.place(*m_window.windowHandle(), m_frame);
    refreshWindowTint();
    refreshItems();
    m_window.show();
    m_services.ring.stage.present(*m_window.windowHandle());
    setRingEnabled(true);
    m_isHiding = false;
    m_fade.fadeTo(1.0, [this] { m_sinceShown.start(); });
}

void RingWindowController::keepOnScreens()
{
    const Stage &stage = m_services.ring.stage;
    // The main screen, and all that is counted from it, may be another one now.
    m_frame = stage.fromDesktop(m_frameOnDesktop);
    const QPointF kept = keptOnScreens(m_frame.center(), stage.screens());
    if (kept != m_frame.center())
        showAgain(kept);
}

void RingWindowController::showAgain(QPointF centre)
{
    m_isShowDue = !m_canClose; // the dialog that is open keeps the keyboard
    if (m_canClose)
        showWindowAtScreenPosition(centre);
}

void RingWindowController::hideWindow(ReactivatePrevious reactivate, ForceHide)
{
    if (!m_canClose || m_isHiding)
        return;
    m_isHiding = true;
    m_itemMenu.close();
    // Opacity has no effect without a compositor: a dismissed ring would only stand in the way. Nor may it linger
    // where somebody else sits before the screen.
    const bool fades = m_services.ring.stage.isCompositing() && m_services.session.isUsable();
    const auto animated = fades ? Animated::Yes : Animated::No;
    m_fade.fadeTo(
        0.0, [this] { finishHiding(); }, animated);
    if (reactivate == ReactivatePrevious::Yes)
        reactivatePreviousApplication();
    m_lastFrontmostApp.reset();
    setRingEnabled(false);
}

void RingWindowController::finishDrag()
{
    m_ringView->finishDrag();
}

void RingWindowController::reactivatePreviousApplication()
{
    RunningApplications &running = m_services.items.runningApplications;
    if (m_lastFrontmostApp && !running.isTerminated(*m_lastFrontmostApp))
        running.activate(*m_lastFrontmostApp);
}

void RingWindowController::finishHiding()
{
    m_ringView->resetLayout();
    m_window.hide();
    m_menuItems.dropItemsThatAreGone(); // they were looked at for this showing, and shown as gone
    Q_EMIT didDisappear();
}

void RingWindowController::setRingEnabled(bool enabled)
{
    m_ringView->setEnabled(enabled);
    m_keyMonitor.setEnabled(enabled);
}

bool RingWindowController::windowVisible() const
{
    return m_fade.value() > 0.5;
}

bool RingWindowController::isHidden() const
{
    return m_fade.value() <= 0.0;
}

bool RingWindowController::isShown() const
{
    return m_window.isVisible() && !m_isHiding;
}

void RingWindowController::mouseHoveringOverMenu(std::function<void(bool)> answer)
{
    // The menu may reach out of the ring, and a click on it is no click elsewhere.
    m_services.ring.stage.locatePointer(this, [this, answer = std::move(answer)](QPointF pointer) {
        answer(m_itemMenu.isVisible() || m_frame.contains(pointer));
    });
}

bool RingWindowController::toolkitAvailable() const
{
    return m_services.items.toolkit.isRecipientReachable();
}

void RingWindowController::refreshItems(bool instantly)
{
    if (!m_canClose) {
        m_isRefreshDue = true;
        return;
    }
    if (!std::exchange(m_itemsAreFresh, false))
        m_menuItems.refresh();
    updateRunningEntries();
    reloadRing(instantly);
    m_menuItems.dropUnmadeEntries();
}

void RingWindowController::followFiles()
{
    constexpr std::chrono::milliseconds pause{100};
    // A reload would take what is held out of the user's hand.
    if (m_ringView->draggedItem())
        m_services.scheduler.after(pause, *this, [this] { followFiles(); });
    else
        reloadRing();
}

bool RingWindowController::updateRunningEntries()
{
    ItemServices &services = m_services.items;
    const RunningAppsStyle style = m_services.settings.runningAppsStyle();
    const auto plan = planRunningEntries(m_menuItems.menuItems(), services.runningApplications.runningApplications(),
                                         {.blacklist = m_services.settings.blacklistedApplications(),
                                          .fileManager = services.workspace.coreApplication(QStringLiteral("Finder")),
                                          .showsRunningApplications = style != RunningAppsStyle::Hidden});
    for (const MenuItem *ended : plan.entriesToRemove)
        m_menuItems.removeObject(*ended);
    const bool looksChanged = updateRunningRecords();
    for (const RunningApplication &application : plan.applicationsToAdd) {
        auto entry = std::make_shared<RunningAppMenuItem>(application, services);
        entry->setRenderColored(style == RunningAppsStyle::Colored);
        m_menuItems.addObject(std::move(entry));
    }
    return !plan.isEmpty() || looksChanged || runningMarks() != m_shownMarks;
}

bool RingWindowController::updateRunningRecords()
{
    bool looksChanged = false;
    for (const RunningApplication &record : m_services.items.runningApplications.runningApplications()) {
        for (const MenuItem::Pointer &item : m_menuItems) {
            auto *entry = dynamic_cast<RunningAppMenuItem *>(item.get());
            if (entry && entry->representsRunningApplication(record))
                looksChanged = entry->update(record) || looksChanged;
        }
    }
    return looksChanged;
}

std::vector<bool> RingWindowController::runningMarks() const
{
    std::vector<bool> marks;
    for (const MenuItem::Pointer &item : m_menuItems)
        marks.push_back(item->isRunning());
    return marks;
}

void RingWindowController::reloadRing(bool instantly)
{
    m_shownMarks = runningMarks();
    const bool wasChosen = m_ringView->isHighlighting();
    const qint64 formerPosition = highlightedPosition();
    m_ringView->reloadData(instantly);
    // What Return opens stays marked, wherever it stands now, or else what has taken its place.
    if (wasChosen && itemCount() > 0)
        highlight(positionOf(m_chosenIdentity).value_or(std::clamp<qint64>(formerPosition, 0, itemCount() - 1)));
}

std::optional<qint64> RingWindowController::positionOf(const QString &identity) const
{
    const auto found = std::ranges::find(m_menuItems, identity, [](const auto &item) { return item->identity(); });
    if (found == m_menuItems.end())
        return std::nullopt;
    return std::distance(m_menuItems.begin(), found);
}

const MenuItem::Pointer &RingWindowController::itemAt(ItemAddress address) const
{
    return m_menuItems.objectAt(std::size_t(address.position));
}

qint64 RingWindowController::ringViewNumberOfSections(RingView &)
{
    return 1;
}

qint64 RingWindowController::ringViewNumberOfItemsInSection(RingView &, qint64)
{
    return itemCount();
}

std::unique_ptr<RingItem> RingWindowController::ringViewItemFor(RingView &, ItemAddress address)
{
    return makeItemView(*itemAt(address), m_services.settings.windowTintColor(), m_services.settings.titleDisplay());
}

bool RingWindowController::ringViewSectionSupportsDrop(RingView &, qint64)
{
    return true;
}

bool RingWindowController::opensOnHover(qint64 position) const
{
    const SwiftMode mode = m_services.settings.swiftMode();
    if (mode == SwiftMode::Off || position == m_lastSwiftItemIndex || !windowVisible()
        || !m_services.session.isUsable())
        return false;
    const MenuItem &item = *m_menuItems.objectAt(std::size_t(position));
    if (!item.isAvailable())
        return false;
    if (mode == SwiftMode::RunningAppsOnly && (!item.isRunning() || item.canHoldSubitems()))
        return false;
    // Only who hears of no button needs the window system's word for it.
    return QGuiApplication::mouseButtons() == Qt::NoButton && m_services.ring.stage.areButtonsUp();
}

bool RingWindowController::ringViewShouldDisplayTitleOfItem(RingView &view, ItemAddress address)
{
    if (opensOnHover(address.position)) {
        m_lastSwiftItemIndex = address.position;
        ringViewDidClickItem(view, address);
        return false;
    }
    return m_services.settings.titleDisplay() == TitleDisplay::WhileHovered;
}

void RingWindowController::ringViewDidClickItem(RingView &, ItemAddress address)
{
    const MenuItem::Pointer item = itemAt(address);
    item->open();
    hideWindow(ReactivatePrevious::No);
}

void RingWindowController::ringViewDidMoveItem(RingView &, ItemAddress from, ItemAddress to)
{
    MenuItem::Pointer item = itemAt(from);
    m_menuItems.removeObjectAt(std::size_t(from.position));
    m_menuItems.insertObject(std::move(item), std::size_t(to.position));
    persistItems();
}

qint64 RingWindowController::itemCount() const
{
    return qint64(m_menuItems.count());
}

qint64 RingWindowController::highlightedPosition() const
{
    return m_ringView->highlightedItem().position;
}

void RingWindowController::highlight(qint64 position)
{
    m_chosenIdentity = itemAt({0, position})->identity();
    m_ringView->highlightItem({0, position});
}

void RingWindowController::click(qint64 position)
{
    ringViewDidClickItem(*m_ringView, {0, position});
}

void RingWindowController::dismiss()
{
    hideWindow(ReactivatePrevious::Yes);
}

} // namespace Orbita
