#include "app/AppDelegate.h"

#include "app/CommandService.h"
#include "app/Log.h"
#include "app/RingPlacement.h"
#include "app/StatusItem.h"
#include "app/ToolkitLink.h"
#include "editors/VXSheetWindow.h"
#include "model/ItemServices.h"
#include "platform/DesktopAppearance.h"
#include "platform/FileLookup.h"
#include "platform/SessionState.h"
#include "platform/Stage.h"
#include "platform/UserDefaults.h"
#include "ring/RenderedPictures.h"
#include "ring/RingLayout.h"
#include "ring/RingWindow.h"
#include "settings/AppSettings.h"

#include <QApplication>

#include <cmath>

namespace Orbita {

namespace {

/// Why nothing is shown; empty where something may be.
QString refusalToShow(SessionState::State session)
{
    switch (session) {
    case SessionState::State::Locked:
        return AppDelegate::tr("Nothing is shown while the session is locked.");
    case SessionState::State::InBackground:
        return AppDelegate::tr("Nothing is shown while the screen shows another session.");
    case SessionState::State::Active:
        break;
    }
    return {};
}

/// The side of an item, in points, in a ring of \a ringSide points with \a count items and none magnified.
double restingItemSide(double ringSide, std::size_t count)
{
    RingLayout layout;
    layout.size = {ringSide, ringSide};
    layout.relativeSizes = {std::vector<double>(count, 1.0)};
    layout.totalNumberOfItems = qint64(count);
    return count > 0 ? layout.frames().front().width() : 0.0;
}

} // namespace

AppDelegate::AppDelegate(RingWindow &window, const ControllerServices &services, ToolkitLink &toolkit,
                         const DesktopAppearance &appearance, QObject *parent)
    : QObject(parent), m_window(window), m_services(services), m_toolkit(toolkit), m_appearance(appearance)
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::listenToTriggers()
{
    m_services.settings.startHandlers();
}

void AppDelegate::followSession()
{
    const QString refusal = refusalToShow(m_services.session.state());
    // Whose fingers are on the touchpad while the user is away is none of ours to know.
    m_services.settings.setHandlersSuspended(!refusal.isEmpty());
    if (refusal.isEmpty())
        return;
    qCInfo(lcApp).noquote() << refusal;
    if (m_windowController) {
        m_windowController->finishDrag();
        // Raising a window now could bring it before the locker's.
        m_windowController->hideWindow(ReactivatePrevious::No, ForceHide::Yes);
    }
}

void AppDelegate::applicationDidFinishLaunching(TakesKeyboard settingsKeyboard)
{
    AppSettings &settings = m_services.settings;
    connect(&settings, &AppSettings::shouldShow, this, &AppDelegate::orbitaShouldShow);
    connect(&settings, &AppSettings::shouldHide, this, &AppDelegate::orbitaShouldHide);
    connect(&m_services.session, &SessionState::changed, this, &AppDelegate::followSession);
    if (!settings.launchedBefore()) {
        presentSettings(settingsKeyboard);
        settings.setLaunchedBefore(true);
    }
}

void AppDelegate::prepareAtLeisure()
{
    m_window.prepare();
    m_preparedItems.emplace(m_services.itemFolder, m_services.defaults, m_services.settings, m_services.items);
    preparePictures();
    connect(&m_services.items.files, &FileLookup::changed, this, &AppDelegate::preparePictures);
    m_statusItem = std::make_unique<StatusItem>(m_appearance);
    connect(m_statusItem.get(), &StatusItem::clicked, this, &AppDelegate::showSettings);
    connect(&m_toolkit, &ToolkitLink::quitRequested, qApp, &QApplication::quit, Qt::QueuedConnection);
    m_toolkit.start();
}

void AppDelegate::preparePictures()
{
    if (!m_preparedItems)
        return;
    const double side = restingItemSide(ringSize(m_services.settings.menuSizeSettings()), m_preparedItems->count());
    for (const MenuItem::Pointer &item : *m_preparedItems)
        m_services.ring.pictures.prepare(item->image(), int(std::ceil(side * m_window.devicePixelRatioF())));
}

void AppDelegate::applicationWillTerminate()
{
    m_services.settings.stopHandlers();
    m_services.defaults.synchronize();
    m_toolkit.terminate();
}

void AppDelegate::follow(CommandService &commands)
{
    commands.setRefusalToShow([this] { return refusalToShow(m_services.session.state()); });
    connect(&commands, &CommandService::showRequested, this, &AppDelegate::showRing);
    connect(&commands, &CommandService::hideRequested, this, [this] {
        if (m_windowController)
            m_windowController->hideWindow(ReactivatePrevious::Yes, ForceHide::Yes);
    });
    connect(&commands, &CommandService::toggleRequested, this, &AppDelegate::toggle);
    connect(&commands, &CommandService::settingsRequested, this, &AppDelegate::showSettings);
    connect(&commands, &CommandService::urlsOpened, this, [this](const QStringList &urls) {
        for (const QString &url : urls)
            m_toolkit.handleUrl(url);
    });
    connect(&commands, &CommandService::quitRequested, qApp, &QApplication::quit, Qt::QueuedConnection);
}

void AppDelegate::orbitaShouldShow(ShowEvent event)
{
    m_services.ring.stage.locatePointer(this, [this, event](QPointF pointer) { showAt(pointer, event); });
}

bool AppDelegate::presentDialog()
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog || !dialog->windowHandle())
        return false;
    dialog->setWindowState(dialog->windowState() & ~Qt::WindowMinimized);
    if (auto *sheet = qobject_cast<VXSheetWindow *>(dialog))
        sheet->recover();
    m_services.ring.stage.present(*dialog->windowHandle());
    return true;
}

void AppDelegate::showAt(QPointF pointer, ShowEvent event)
{
    if (!m_services.session.isUsable())
        return;
    // An open dialog is what has to be answered first; the ring stays as it is.
    if (presentDialog() || (m_windowController && !m_windowController->canClose()))
        return;
    const QPointF centre = centreFor(pointer);
    const bool inside
        = m_windowController && m_windowController->windowVisible() && m_windowController->frame().contains(centre);
    if (!inside)
        ensureController().showWindowAtScreenPosition(centre);
    else if (event == ShowEvent::Shortcut)
        m_windowController->hideWindow(ReactivatePrevious::Yes);
}

void AppDelegate::orbitaShouldHide()
{
    if (!m_windowController)
        return;
    m_windowController->mouseHoveringOverMenu([this](bool hovering) {
        if (hovering || !m_windowController || !m_windowController->windowVisible())
            return;
        m_windowController->finishDrag();
        m_windowController->hideWindow(ReactivatePrevious::Yes, ForceHide::Yes);
    });
}

void AppDelegate::toggle()
{
    // Somebody who asks twice at once wants it gone, even where it has hardly faded in.
    if (m_windowController && m_windowController->isShown())
        m_windowController->hideWindow(ReactivatePrevious::Yes, ForceHide::Yes);
    else
        showRing();
}

void AppDelegate::showRing()
{
    m_services.ring.stage.locatePointer(this, [this](QPointF pointer) {
        if (!m_services.session.isUsable())
            return;
        // A trigger over a ring that fades out is not heard; a command is.
        if (m_windowController && m_windowController->isShown())
            showAt(pointer, ShowEvent::Trackpad);
        else if (!presentDialog())
            ensureController().showWindowAtScreenPosition(centreFor(pointer));
    });
}

QPointF AppDelegate::centreFor(QPointF pointer) const
{
    return requestedCentre(pointer, m_services.settings.menuPositionSettings(), m_services.ring.stage.screens());
}

RingWindowController &AppDelegate::ensureController()
{
    if (!m_windowController) {
        m_preparedItems.reset(); // the ring asks for its own pictures
        m_windowController = std::make_unique<RingWindowController>(m_window, m_services);
        // Queued, because the controller must not end within its own signal.
        connect(m_windowController.get(), &RingWindowController::didDisappear, this,
                &AppDelegate::ringWindowDidDisappear, Qt::QueuedConnection);
    }
    return *m_windowController;
}

void AppDelegate::ringWindowDidDisappear()
{
    // A trigger may have shown the ring again meanwhile.
    if (!m_window.isVisible())
        m_windowController.reset();
}

void AppDelegate::showSettings()
{
    if (m_services.session.isUsable())
        presentSettings(TakesKeyboard::Yes);
}

void AppDelegate::presentSettings(TakesKeyboard keyboard)
{
    if (!m_settingsWindow)
        m_settingsWindow = std::make_unique<SettingsStandInWindow>();
    m_settingsWindow->present(keyboard);
}

} // namespace Orbita
