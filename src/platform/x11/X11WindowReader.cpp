#include "platform/x11/X11WindowReader.h"

#include "platform/x11/X11Property.h"

#include <QSysInfo>

#include <algorithm>
#include <array>

namespace Orbita {

namespace {

/// More than a full set of icons in the usual sizes.
constexpr quint32 MaxIconBytes = 4 * 1024 * 1024;
constexpr quint32 WithdrawnState = 0;

/// The properties of one window that are under way.
struct WindowRequest {
    xcb_window_t window;
    xcb_get_property_cookie_t wmClass, machine, process, gtkId, type, state, transient, name, oldName;
};

WindowRequest requestWindow(X11Connection &connection, xcb_window_t window)
{
    const auto ask = [&](xcb_atom_t property) { return requestProperty(connection, window, property); };
    return {window,
            ask(XCB_ATOM_WM_CLASS),
            ask(XCB_ATOM_WM_CLIENT_MACHINE),
            ask(connection.atom(X11Atom::NetWmPid)),
            ask(connection.atom(X11Atom::GtkApplicationId)),
            ask(connection.atom(X11Atom::NetWmWindowType)),
            ask(connection.atom(X11Atom::NetWmState)),
            ask(XCB_ATOM_WM_TRANSIENT_FOR),
            ask(connection.atom(X11Atom::NetWmName)),
            ask(XCB_ATOM_WM_NAME)};
}

/// Whether \a machine, as WM_CLIENT_MACHINE names it, is this one. Nobody but a program of this machine leaves it out.
bool isThisMachine(const QString &machine)
{
    const QString own = QSysInfo::machineHostName();
    const auto isDomainOf = [](const QString &longer, const QString &shorter) {
        return longer.startsWith(shorter + u'.', Qt::CaseInsensitive);
    };
    return machine.isEmpty() || machine == QLatin1String("localhost") || machine.compare(own, Qt::CaseInsensitive) == 0
        || isDomainOf(machine, own) || isDomainOf(own, machine);
}

/// Whether the first type in \a types that is known is one that a task list shows.
bool isListedType(const X11Connection &connection, std::span<const quint32> types)
{
    constexpr auto first = static_cast<std::size_t>(X11Atom::NetWmWindowTypeCombo);
    constexpr auto last = static_cast<std::size_t>(X11Atom::NetWmWindowTypeUtility);
    for (const quint32 type : types) {
        for (std::size_t i = first; i <= last; ++i) {
            const auto name = static_cast<X11Atom>(i);
            if (connection.atom(name) == type)
                return name == X11Atom::NetWmWindowTypeNormal || name == X11Atom::NetWmWindowTypeDialog;
        }
    }
    return true; // what does not say is a normal window
}

bool isListed(const X11Connection &connection, const PropertyReply &type, const PropertyReply &state, bool isTransient)
{
    const bool skips = std::ranges::count(cardinals(state.get()), connection.atom(X11Atom::NetWmStateSkipTaskbar)) > 0;
    return !skips && !isTransient && isListedType(connection, cardinals(type.get()));
}

/// Nothing when the window has vanished.
std::optional<ApplicationWindow> windowFrom(X11Connection &connection, const WindowRequest &request)
{
    const auto get = [&](xcb_get_property_cookie_t cookie) { return propertyReply(connection, cookie); };
    const xcb_atom_t utf8 = connection.atom(X11Atom::Utf8String);
    const auto wmClass = get(request.wmClass);
    const QString machine = text(get(request.machine).get(), utf8);
    const qint64 process = cardinal(get(request.process).get());
    const QString gtkId = text(get(request.gtkId).get(), utf8);
    const auto type = get(request.type);
    const auto state = get(request.state);
    const xcb_window_t parent = cardinal(get(request.transient).get());
    const QString name = text(get(request.name).get(), utf8);
    const QString oldName = text(get(request.oldName).get(), utf8);
    if (!wmClass)
        return std::nullopt;

    ApplicationWindow window;
    window.window = request.window;
    if (isThisMachine(machine))
        window.process = readProcessFacts(process);
    const auto [instance, className] = instanceAndClass(wmClass.get());
    window.identity = {gtkId, className, instance, window.process.launchedDesktopFile, window.process.executablePath};
    window.title = name.isEmpty() ? oldName : name;
    // Transient for the root means for its whole group: no single window shows it along.
    window.isTransient = parent != XCB_NONE && parent != connection.root();
    window.isListed = isListed(connection, type, state, window.isTransient);
    return window;
}

} // namespace

std::vector<ApplicationWindow> readWindows(X11Connection &connection, const std::vector<xcb_window_t> &windows)
{
    std::vector<WindowRequest> requests;
    for (const xcb_window_t window : windows) {
        connection.watchWindow(window); // before it is read, or a change in between would be missed
        requests.push_back(requestWindow(connection, window));
    }
    std::vector<ApplicationWindow> found;
    for (const WindowRequest &request : requests) {
        if (auto window = windowFrom(connection, request))
            found.push_back(std::move(*window));
    }
    return found;
}

Image readWindowIcon(X11Connection &connection, xcb_window_t window)
{
    const auto cookie = requestProperty(connection, window, connection.atom(X11Atom::NetWmIcon), MaxIconBytes);
    const QImage pixels = iconFromCardinals(cardinals(propertyReply(connection, cookie).get()));
    return pixels.isNull() ? Image() : Image::fromPixels(pixels);
}

std::vector<xcb_window_t> withdrawnWindows(X11Connection &connection, const std::vector<xcb_window_t> &windows)
{
    std::vector<std::pair<xcb_get_window_attributes_cookie_t, xcb_get_property_cookie_t>> requests;
    for (const xcb_window_t window : windows) {
        requests.emplace_back(xcb_get_window_attributes(connection.xcb(), window),
                              requestProperty(connection, window, connection.atom(X11Atom::WmState)));
    }
    std::vector<xcb_window_t> found;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto attributes = connection.reply(xcb_get_window_attributes_reply, requests[i].first);
        const auto state = propertyReply(connection, requests[i].second);
        const bool isUnmapped = !attributes || attributes->map_state == XCB_MAP_STATE_UNMAPPED;
        if (isUnmapped && cardinal(state.get(), WithdrawnState) == WithdrawnState)
            found.push_back(windows[i]);
    }
    return found;
}

bool isWindowFact(const X11Connection &connection, xcb_atom_t property)
{
    constexpr std::array names{X11Atom::GtkApplicationId, X11Atom::NetWmPid, X11Atom::NetWmState,
                               X11Atom::NetWmWindowType};
    return property == XCB_ATOM_WM_CLASS || property == XCB_ATOM_WM_TRANSIENT_FOR
        || property == XCB_ATOM_WM_CLIENT_MACHINE
        || std::ranges::any_of(names, [&](X11Atom name) { return connection.atom(name) == property; });
}

} // namespace Orbita
