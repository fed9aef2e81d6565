#pragma once

#include <QStringList>

namespace Orbita {

/// Where the user may have chosen an icon theme; empty where nothing was said.
struct IconThemeHints {
    bool isKde = false;       ///< This is a KDE session.
    QString kde;              ///< kdeglobals, [Icons] Theme
    QString gsettings;        ///< "icon-theme" as the user set it
    QString gsettingsDefault; ///< "icon-theme" as the desktop ships it
    QString gtk;              ///< gtk-3.0/settings.ini, gtk-icon-theme-name
    QString toolkit;          ///< what Qt found out by itself
};

/// The names of icon themes to try, best first, each once. Last come themes that are complete enough to stand alone
/// (Papirus, breeze, Adwaita, gnome) and "hicolor", which has little more than applications' own icons.
[[nodiscard]] QStringList iconThemeOrder(const IconThemeHints &hints);

/// The folders that hold icon themes: ~/.icons, then "icons" in each XDG data folder.
[[nodiscard]] QStringList iconThemeFolders();

/// Makes Qt's icon loader use the user's theme, and the first complete one for what that theme lacks.
void useDesktopIconTheme();

} // namespace Orbita
