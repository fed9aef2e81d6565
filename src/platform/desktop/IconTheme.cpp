#include "platform/Glib.h"

#include "platform/desktop/IconTheme.h"

#include "platform/desktop/DesktopSettings.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QStandardPaths>

#include <algorithm>

namespace Orbita {

namespace {

const QStringList &completeThemes()
{
    static const QStringList names{QStringLiteral("Papirus"), QStringLiteral("breeze"), QStringLiteral("Adwaita"),
                                   QStringLiteral("gnome"), QStringLiteral("hicolor")};
    return names;
}

QString fromFile(const QString &path, const QString &key)
{
    const auto settings = openSettingsFile(path);
    return settings ? settings->value(key).toString() : QString();
}

void readInterfaceSettings(IconThemeHints &hints)
{
    constexpr char key[] = "icon-theme";
    const auto settings = openInterfaceSettings();
    if (!settings || !hasKey(settings.get(), key))
        return;
    const GlibPointer<char> effective(g_settings_get_string(settings.get(), key));
    const GlibPointer<GVariant> own(g_settings_get_user_value(settings.get(), key));
    (own ? hints.gsettings : hints.gsettingsDefault) = QString::fromUtf8(effective.get());
}

IconThemeHints readHints()
{
    IconThemeHints hints;
    hints.isKde = currentDesktops().contains(QLatin1String("KDE"), Qt::CaseInsensitive);
    hints.kde = fromFile(kdeGlobalsPath(), QStringLiteral("Icons/Theme"));
    readInterfaceSettings(hints);
    const QString gtk = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/gtk-3.0/settings.ini");
    hints.gtk = fromFile(gtk, QStringLiteral("Settings/gtk-icon-theme-name"));
    hints.toolkit = QIcon::themeName();
    return hints;
}

bool isInstalled(const QString &theme)
{
    const QStringList folders = iconThemeFolders();
    return !theme.contains(u'/') && std::any_of(folders.begin(), folders.end(), [&theme](const QString &folder) {
        return QFileInfo(folder + u'/' + theme + QStringLiteral("/index.theme")).isFile();
    });
}

QString firstInstalled(const QStringList &themes)
{
    const auto found = std::find_if(themes.begin(), themes.end(), isInstalled);
    return found != themes.end() ? *found : QStringLiteral("hicolor");
}

} // namespace

QStringList iconThemeOrder(const IconThemeHints &hints)
{
    QStringList order;
    if (hints.isKde)
        order << hints.kde << hints.toolkit;
    order << hints.gsettings << hints.gtk << hints.toolkit << hints.gsettingsDefault;
    // Chosen by nobody: it is what is named where nothing is known.
    order.removeAll(QStringLiteral("hicolor"));
    order.removeAll(QString());
    order << completeThemes();
    order.removeDuplicates();
    return order;
}

QStringList iconThemeFolders()
{
    QStringList folders{QDir::homePath() + QStringLiteral("/.icons")};
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders << folder + QStringLiteral("/icons");
    return folders;
}

void useDesktopIconTheme()
{
    const QStringList order = iconThemeOrder(readHints());
    QIcon::setThemeSearchPaths(iconThemeFolders() << QStringLiteral(":/icons"));
    QIcon::setFallbackThemeName(firstInstalled(completeThemes()));
    QIcon::setThemeName(firstInstalled(order));
}

} // namespace Orbita
