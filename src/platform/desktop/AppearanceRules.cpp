#include "platform/desktop/AppearanceRules.h"

#include <algorithm>
#include <array>

namespace Orbita {

namespace {

bool isOneOf(const QStringList &desktops, std::initializer_list<QLatin1String> names)
{
    return std::any_of(desktops.begin(), desktops.end(), [&names](const QString &desktop) {
        return std::any_of(names.begin(), names.end(),
                           [&desktop](QLatin1String name) { return desktop.compare(name, Qt::CaseInsensitive) == 0; });
    });
}

bool isKde(const AppearanceHints &hints)
{
    return isOneOf(hints.desktops, {QLatin1String("KDE")});
}

bool isDark(const QColor &color)
{
    return 0.2126 * color.redF() + 0.7152 * color.greenF() + 0.0722 * color.blueF() < 0.5; // Rec. 709 weights
}

} // namespace

bool isMotionReduced(const AppearanceHints &hints)
{
    if (hints.areAnimationsEnabled == false)
        return true;
    return isKde(hints) && hints.animationFactor && *hints.animationFactor <= 0.0;
}

bool hasDarkPanel(const AppearanceHints &hints)
{
    if (isKde(hints))
        return hints.panelColor ? isDark(*hints.panelColor) : hints.prefersDark;
    // GNOME's classic session names GNOME second and has a light panel.
    if (isOneOf(hints.desktops, {QLatin1String("GNOME-Classic")}))
        return hints.prefersDark;
    return hints.prefersDark
        || isOneOf(hints.desktops,
                   {QLatin1String("GNOME"), QLatin1String("Unity"), QLatin1String("X-Cinnamon"),
                    QLatin1String("Budgie"), QLatin1String("Pantheon"), QLatin1String("i3"), QLatin1String("sway"),
                    QLatin1String("Hyprland")});
}

} // namespace Orbita
