#pragma once

#include <array>
#include <cstddef>

namespace Orbita {

/// The names that the X11 back ends use, interned once per connection.
enum class X11Atom : std::size_t {
    GtkApplicationId,
    KdeBlurBehindRegion,
    NetActiveWindow,
    NetClientList,
    NetClientListStacking,
    NetCloseWindow,
    NetCurrentDesktop,
    NetMoveresizeWindow,
    NetSupportingWmCheck,
    NetWmDesktop,
    NetWmIcon,
    NetWmName,
    NetWmPid,
    NetWmState,
    NetWmStateAbove,
    NetWmStateSkipTaskbar,
    NetWmWindowType,
    NetWmWindowTypeCombo,
    NetWmWindowTypeDesktop,
    NetWmWindowTypeDialog,
    NetWmWindowTypeDnd,
    NetWmWindowTypeDock,
    NetWmWindowTypeDropdownMenu,
    NetWmWindowTypeMenu,
    NetWmWindowTypeNormal,
    NetWmWindowTypeNotification,
    NetWmWindowTypePopupMenu,
    NetWmWindowTypeSplash,
    NetWmWindowTypeToolbar,
    NetWmWindowTypeTooltip,
    NetWmWindowTypeUtility,
    OrbitaTime,
    Utf8String,
    WmDeleteWindow,
    WmProtocols,
    WmState,
    CompositorSelection, ///< "_NET_WM_CM_Sn" for the connection's screen n
    Count
};

constexpr std::size_t X11AtomCount = static_cast<std::size_t>(X11Atom::Count);

/// In the order of X11Atom, without the compositor's, whose name holds the number of the screen.
constexpr std::array<const char *, X11AtomCount - 1> x11AtomNames{
    "_GTK_APPLICATION_ID",
    "_KDE_NET_WM_BLUR_BEHIND_REGION",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_CLOSE_WINDOW",
    "_NET_CURRENT_DESKTOP",
    "_NET_MOVERESIZE_WINDOW",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WM_DESKTOP",
    "_NET_WM_ICON",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DND",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "ORBITA_TIME",
    "UTF8_STRING",
    "WM_DELETE_WINDOW",
    "WM_PROTOCOLS",
    "WM_STATE",
};

} // namespace Orbita
