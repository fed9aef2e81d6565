#include "companion/service/SessionPrograms.h"

#include <algorithm>
#include <array>

namespace Orbita {

namespace {

/// The names of the programs as the packages of Debian install them.
constexpr std::array sessionPrograms{
    // The user's services, and the buses.
    "systemd",
    "init",
    "elogind-daemon",
    "dbus-daemon",
    "dbus-broker",
    "dbus-broker-launch",
    "dbus-run-session",
    "at-spi-bus-launcher",
    // Terminals that outlive their windows.
    "tmux",
    "tmux: server",
    "screen",
    "SCREEN",
    "dtach",
    "abduco",
    // Display servers, and what starts them.
    "Xorg",
    "Xorg.wrap",
    "X",
    "Xwayland",
    "Xvfb",
    "Xephyr",
    "Xnest",
    "Xtigervnc",
    "Xvnc",
    "xinit",
    "startx",
    "gdm-x-session",
    "gdm-wayland-session",
    "gdm-session-worker",
    "sddm-helper",
    "lightdm",
    // Session managers.
    "cinnamon-session-binary",
    "gnome-session-binary",
    "gnome-session-ctl",
    "gnome-session-service",
    "ksmserver",
    "kded5",
    "kded6",
    "kdeinit5",
    "lxqt-session",
    "lxsession",
    "mate-session",
    "plasma_session",
    "startplasma-wayland",
    "startplasma-x11",
    "ukui-session",
    "xfce4-session",
    "budgie-session",
    "dde-session",
    "startdde",
    // Window managers and compositors.
    "awesome",
    "bspwm",
    "budgie-wm",
    "cage",
    "compiz",
    "cwm",
    "dwm",
    "enlightenment",
    "fluxbox",
    "fvwm2",
    "fvwm3",
    "herbstluftwm",
    "hikari",
    "Hyprland",
    "i3",
    "icewm",
    "icewm-session",
    "jwm",
    "kwin_wayland",
    "kwin_wayland_wrapper",
    "kwin_x11",
    "labwc",
    "marco",
    "metacity",
    "muffin",
    "mutter",
    "openbox",
    "picom",
    "qtile",
    "river",
    "spectrwm",
    "sway",
    "twm",
    "wayfire",
    "weston",
    "wmaker",
    "xfwm4",
    "xmonad",
    // Desktop shells.
    "budgie-panel",
    "cinnamon",
    "cinnamon-launcher",
    "gala",
    "gnome-panel",
    "gnome-shell",
    "lxpanel",
    "lxqt-panel",
    "mate-panel",
    "phosh",
    "plasmashell",
    "tint2",
    "unity-panel-service",
    "waybar",
    "wingpanel",
    "xfce4-panel",
    "xfdesktop",
};

constexpr qsizetype maximumProcessName = 15; ///< TASK_COMM_LEN of the kernel, less its NUL

} // namespace

bool isSessionProgram(const QString &program)
{
    return std::ranges::any_of(sessionPrograms, [&](const char *name) {
        const QLatin1String known(name);
        return program == known || (program.size() == maximumProcessName && known.startsWith(program));
    });
}

} // namespace Orbita
