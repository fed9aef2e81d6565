#include "platform/x11/X11RunningApplications.h"

#include "platform/desktop/ApplicationIndex.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11WindowManager.h"
#include "platform/x11/X11WindowReader.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace Orbita {

namespace {

/// 16384 windows, more than any desktop shows.
constexpr quint32 MaxListBytes = 64 * 1024;

bool isUnchanged(const RunningApplication &a, const RunningApplication &b)
{
    return a.serial == b.serial && a.bundlePath == b.bundlePath && a.executablePath == b.executablePath
        && a.bundleIdentifier == b.bundleIdentifier && a.localizedName == b.localizedName
        && a.processIdentifier == b.processIdentifier && a.activationPolicy == b.activationPolicy && a.icon == b.icon;
}

/// Of these nothing is shown, and their properties change with every frame of a fade.
bool isOwn(const ApplicationWindow &window)
{
    return window.process.processIdentifier == QCoreApplication::applicationPid();
}

} // namespace

X11RunningApplications::X11RunningApplications(X11Connection &connection, X11WindowManager &windowManager,
                                               ApplicationIndex &index, ApplicationTable::IconForBundle iconForBundle,
                                               QObject *parent)
    : RunningApplications(parent),
      m_connection(connection),
      m_windowManager(windowManager),
      m_index(index),
      m_table(QCoreApplication::applicationPid(), std::move(iconForBundle))
{
    connect(&connection, &X11Connection::propertyChanged, this, &X11RunningApplications::noteProperty);
    connect(&connection, &X11Connection::windowUnmapped, this, &X11RunningApplications::noteUnmapping);
    connect(&connection, &X11Connection::windowDestroyed, this, &X11RunningApplications::noteDestruction);
    connect(&connection, &X11Connection::eventsDelivered, this, &X11RunningApplications::handleChanges);
    connect(&connection, &X11Connection::lost, this, &X11RunningApplications::clear);
    connect(&index, &ApplicationIndex::changed, this, &X11RunningApplications::adoptCatalog);
    connect(&m_processWatch, &ProcessWatch::ended, this, [this](qint64 process) {
        m_table.removeProcess(process);
        report();
    });
    const auto begin = [this] {
        handleChanges();
        m_index.reload();
    };
    QMetaObject::invokeMethod(this, begin, Qt::QueuedConnection);
}

std::vector<RunningApplication> X11RunningApplications::runningApplications() const
{
    return m_index.isLoaded() ? m_table.applications() : std::vector<RunningApplication>();
}

std::optional<RunningApplication> X11RunningApplications::frontmostApplication() const
{
    const RunningApplication *owner = m_table.ownerOf(m_activeWindow);
    return owner != nullptr ? std::optional(*owner) : std::nullopt;
}

bool X11RunningApplications::activate(const RunningApplication &application)
{
    const std::vector<quint32> windows = m_table.windowsToActivate(application.serial);
    if (windows.empty() || !m_connection.isAlive())
        return false;
    const auto latest = std::ranges::max(windows, {}, [this](quint32 window) {
        // Those that were never active come first.
        const auto place = std::ranges::find(m_recent, window);
        return place == m_recent.end() ? -1 : place - m_recent.begin();
    });
    m_windowManager.switchToWorkspaceOf(latest); // not every window manager goes there by itself
    m_windowManager.activate(m_connection.xcb(), latest);
    m_connection.flush();
    return true;
}

bool X11RunningApplications::isTerminated(const RunningApplication &application) const
{
    return m_table.find(application.serial) == nullptr;
}

void X11RunningApplications::noteProperty(xcb_window_t window, xcb_atom_t property)
{
    const auto is = [&](X11Atom name) { return property == m_connection.atom(name); };
    if (window == m_connection.root()) {
        m_rootChanged |= is(X11Atom::NetClientList) || is(X11Atom::NetActiveWindow);
        return;
    }
    const auto known = m_table.windows().find(window);
    if (known == m_table.windows().end())
        return;
    if (is(X11Atom::WmState))
        m_doubtful.insert(window);
    // Titles change all the time; they count only where nothing else gives a name.
    const bool isName
        = (is(X11Atom::NetWmName) || property == XCB_ATOM_WM_NAME) && known->second.identity.windowClass.isEmpty();
    const bool isIcon = is(X11Atom::NetWmIcon) && m_table.wantsIcon(window);
    const bool isNoted = std::ranges::count(m_changed, window) > 0;
    if (!isNoted && (isName || isIcon || isWindowFact(m_connection, property)))
        m_changed.push_back(window);
}

void X11RunningApplications::noteUnmapping(xcb_window_t window)
{
    const auto known = m_table.windows().find(window);
    if (known == m_table.windows().end())
        return;
    if (isOwn(known->second))
        noteDestruction(window); // nothing further will be heard of it; when it comes back it is listed as a new one
    else
        m_doubtful.insert(window);
}

void X11RunningApplications::noteDestruction(xcb_window_t window)
{
    m_isReportDue |= m_table.windows().contains(window);
    m_table.removeWindow(window);
    std::erase(m_changed, window);
    std::erase(m_recent, window);
    m_doubtful.erase(window);
}

void X11RunningApplications::handleChanges()
{
    if (std::exchange(m_rootChanged, false))
        readRoot();
    if (!m_changed.empty())
        readNewAndChanged();
    if (!m_doubtful.empty())
        dropWithdrawn();
    if (m_isReportDue)
        report();
}

void X11RunningApplications::readRoot()
{
    m_isReportDue = true;
    const auto ask = [this](X11Atom property) {
        return requestProperty(m_connection, m_connection.root(), m_connection.atom(property), MaxListBytes);
    };
    const auto listCookie = ask(X11Atom::NetClientList);
    const auto activeCookie = ask(X11Atom::NetActiveWindow);
    const auto stackingCookie = ask(X11Atom::NetClientListStacking);
    const auto list = propertyReply(m_connection, listCookie);
    m_activeWindow = cardinal(propertyReply(m_connection, activeCookie).get());
    const auto stacking = propertyReply(m_connection, stackingCookie);

    const auto listed = cardinals(list.get());
    for (const xcb_window_t window : listed) {
        if (!m_table.windows().contains(window) && std::ranges::count(m_changed, window) == 0)
            m_changed.push_back(window);
    }
    // A list without a window that is known does not mean that it was closed: it also shrinks and disappears when the
    // window manager ends or starts anew.
    const std::set<xcb_window_t> current(listed.begin(), listed.end());
    for (const auto &[window, facts] : m_table.windows()) {
        if (!current.contains(window))
            m_doubtful.insert(window);
    }
    if (m_recent.empty()) {
        const auto order = cardinals(stacking.get());
        m_recent.assign(order.begin(), order.end());
    }
    if (m_activeWindow != XCB_NONE) {
        std::erase(m_recent, m_activeWindow);
        m_recent.push_back(m_activeWindow);
    }
}

void X11RunningApplications::readNewAndChanged()
{
    m_isReportDue = true;
    const std::vector<xcb_window_t> windows = std::exchange(m_changed, {});
    for (ApplicationWindow &window : readWindows(m_connection, windows)) {
        const auto known = m_table.windows().find(window.window);
        if (known != m_table.windows().end())
            window.icon = known->second.icon;
        if (isOwn(window))
            m_connection.watchPresence(window.window);
        m_table.setWindow(window, m_index.catalog());
    }
    readIcons(windows);
}

void X11RunningApplications::readIcons(const std::vector<xcb_window_t> &windows)
{
    if (!m_index.isLoaded())
        return; // most will turn out to be of an installed application
    for (const xcb_window_t id : windows) {
        if (!m_table.wantsIcon(id))
            continue;
        ApplicationWindow window = m_table.windows().at(id);
        window.icon = readWindowIcon(m_connection, id);
        m_table.setWindow(window, m_index.catalog());
    }
}

void X11RunningApplications::dropWithdrawn()
{
    const std::set<xcb_window_t> doubtful = std::exchange(m_doubtful, {});
    for (const xcb_window_t window : withdrawnWindows(m_connection, {doubtful.begin(), doubtful.end()}))
        noteDestruction(window);
}

void X11RunningApplications::adoptCatalog()
{
    m_table.regroup(m_index.catalog());
    std::vector<xcb_window_t> windows;
    for (const auto &[window, facts] : m_table.windows())
        windows.push_back(window);
    readIcons(windows);
    report();
}

void X11RunningApplications::clear()
{
    m_table.clear();
    m_changed.clear();
    m_doubtful.clear();
    report();
}

void X11RunningApplications::report()
{
    m_isReportDue = false;
    m_table.holdProcesses(m_processWatch.watchOnly(m_table.processes()));
    const auto applications = runningApplications();
    const auto frontmost = frontmostApplication();
    const bool isSame = std::ranges::equal(applications, m_reported, isUnchanged);
    const quint64 serial = frontmost ? frontmost->serial : 0;
    const bool isSameFront = std::exchange(m_reportedFrontmost, serial) == serial;
    m_reported = applications;
    if (!isSame)
        Q_EMIT runningApplicationsChanged();
    if (!isSameFront)
        Q_EMIT frontmostApplicationChanged();
}

} // namespace Orbita
