#include "companion/service/SessionPrograms.h"

#include <algorithm>
#include <array>

namespace Orbita {

namespace {

/// The names of the programs as the packages of Debian install them.
constexpr std::array sessionPrograms{
    // The user's services, and the buses.
    "systemd", "init", "elogind-daemon", "dbus-daemon", "dbus-broker", "dbus-broker-launch", "dbus-run-session",
    "at-spi-bus-launcher",
    // Terminals that outlive their windows.
    "tmux", "tmux: server", "screen", "SCREEN", "dtach", "abduco",
    // Display servers, and what starts them.
    "Xorg", "Xorg.wrap", "X", "Xwayland", "Xvfb", "Xephyr", "Xnest", "Xtigervnc", "Xvnc", "xinit", "startx",
    "gdm-x-session", "gdm-wayland-session", "gdm-session-worker", "sddm-helper", "lightdm",
    // Session managers.
    "budgie-session", "cinnamon-session-binary", "dde-session", "gnome-session-binary", "gnome-session-ctl",
    "gnome-session-service", "kded5", "kded6", "kdeinit5", "ksmserver", "lxqt-session", "lxsession", "mate-session",
    "plasma_session", "startdde", "startplasma-wayland", "startplasma-x11", "ukui-session", "xfce4-session",
    // Window managers and compositors.
    "awesome", "bspwm", "budgie-wm", "cage", "compiz", "cwm", "dwm", "enlightenment", "fluxbox", "fvwm2", "fvwm3",
    "herbstluftwm", "hikari", "Hyprland", "i3", "icewm", "icewm-session", "jwm", "kwin_wayland", "kwin_wayland_wrapper",
    "kwin_x11", "labwc", "marco", "metacity", "muffin", "mutter", "openbox", "picom", "qtile", "river", "spectrwm",
    "sway", "twm", "wayfire", "weston", "wmaker", "xfwm4", "xmonad",
    // Desktop shells.
    "budgie-panel", "cinnamon", "cinnamon-launcher", "gala", "gnome-flashback", "gnome-panel", "gnome-shell", "lxpanel",
    "lxqt-panel", "mate-panel", "phosh", "plasmashell", "tint2", "unity-panel-service", "waybar", "wingpanel",
    "xfce4-panel", "xfdesktop",
    // Screen lockers, and their parts.
    "auth_x11", "authproto_pam", "cinnamon-screensaver", "cinnamon-screensaver-pam-helper", "cs-backup-locker",
    "dde-lock", "gnome-screensaver", "gnome-screensaver-dialog", "gtklock", "hyprlock", "i3lock", "i3lock-fancy",
    "kscreenlocker_greet", "mate-screensaver", "mate-screensaver-dialog", "physlock", "slock", "swaylock",
    "ukui-screensaver-backend", "ukui-screensaver-dialog", "vlock", "waylock", "xflock4", "xfce4-screensaver",
    "xfce4-screensaver-dialog", "xlock", "xscreensaver", "xscreensaver-auth", "xscreensaver-gfx",
    "xscreensaver-systemd", "xsecurelock", "xtrlock",
    // What locks the screen when the user is idle or the machine goes to sleep.
    "csd-power", "csd-screensaver-proxy", "gnome-flashback-idle-monitor", "gsd-power", "gsd-screensaver-proxy",
    "hypridle", "light-locker", "lxqt-powermanagement", "mate-power-manager", "org_kde_powerdevil", "swayidle",
    "ukui-powermanagement", "xautolock", "xfce4-power-manager", "xidlehook", "xss-lock",
    // Agents that ask for the user's password on behalf of the system.
    "budgie-polkit-dialog", "dde-polkit-agent", "hyprpolkitagent", "io.elementary.desktop.agent-polkit",
    "krb5-auth-dialog", "lxpolkit", "lxqt-policykit-agent", "pantheon-agent-polkit", "pkttyagent",
    "polkit-agent-helper-1", "polkit-gnome-authentication-agent-1", "polkit-kde-authentication-agent-1",
    "polkit-mate-authentication-agent-1", "polkit-ukui-authentication-agent-1", "xfce-polkit",
    // What keeps keys and passwords, and asks for those that open them.
    "gcr-prompter", "gcr-ssh-agent", "gcr-ssh-askpass", "gcr4-ssh-agent", "gcr4-ssh-askpass", "gnome-keyring-daemon",
    "gnome-ssh-askpass", "gpg-agent", "keyboxd", "ksecretd", "ksshaskpass", "kwalletd5", "kwalletd6",
    "lxqt-openssh-askpass", "oo7-daemon", "pinentry", "pinentry-curses", "pinentry-fltk", "pinentry-gnome3",
    "pinentry-gtk-2", "pinentry-qt", "pinentry-qt5", "pinentry-tty", "pinentry-x2go", "scdaemon", "ssh-agent",
    "ssh-askpass", "ssh-pkcs11-helper", "ssh-sk-helper", "x11-ssh-askpass"};

constexpr qsizetype maximumProcessName = 15; ///< TASK_COMM_LEN of the kernel, less its NUL

bool isKnown(const QString &name)
{
    return std::ranges::any_of(sessionPrograms, [&](const char *known) { return name == QLatin1String(known); });
}

bool isBeginningOfKnown(const QString &name)
{
    return std::ranges::any_of(sessionPrograms,
                               [&](const char *known) { return QLatin1String(known).startsWith(name); });
}

} // namespace

bool isSessionProgram(const QString &executable, const QString &process)
{
    if (isKnown(executable) || isKnown(process))
        return true;
    const bool isCut = process.size() == maximumProcessName;
    return isCut && !executable.startsWith(process) && isBeginningOfKnown(process);
}

} // namespace Orbita
