#pragma once

#include <QColor>
#include <QStringList>

#include <optional>

namespace Orbita {

/// What the desktop's settings say; absent where a desktop has no such setting.
struct AppearanceHints {
    QStringList desktops;                     ///< names in XDG_CURRENT_DESKTOP
    std::optional<bool> areAnimationsEnabled; ///< GNOME's "enable-animations"
    std::optional<double> animationFactor;    ///< KDE's AnimationDurationFactor: 0 is no animation, 1 is usual
    bool prefersDark = false;                 ///< "color-scheme" is "prefer-dark"
    std::optional<QColor> panelColor;         ///< background of windows and panels in KDE's colour scheme
};

/// Whether animations are to be left out. KDE's setting counts in a KDE session only.
[[nodiscard]] bool isMotionReduced(const AppearanceHints &hints);

/// Whether the panel is dark. Some desktops and bars are dark whatever the colours of windows; in KDE the panel has
/// the colour of the scheme, everywhere else it follows the preference for dark.
[[nodiscard]] bool hasDarkPanel(const AppearanceHints &hints);

} // namespace Orbita
