#include "platform/desktop/shortcuts/GSettingsShortcuts.h"

#include "platform/desktop/DesktopSettings.h"

#include <vector>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

/// Where a desktop keeps its shortcuts.
struct Schemas {
    QLatin1String desktop;
    std::vector<const char *> ids; ///< every text and list of texts in these may name a combination
    const char *customId;          ///< of the schema that each shortcut of the user's own has, its key being "binding"
    const char *listId;            ///< of the schema with the list of the user's own shortcuts; null: "custom0" and on
    const char *listKey;
    QLatin1String customFolder; ///< below which those are; the list may name their whole paths as well
};

const std::vector<Schemas> &allSchemas()
{
    static const std::vector<Schemas> schemas{
        {"GNOME"_L1,
         {"org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings", "org.gnome.mutter.keybindings",
          "org.gnome.mutter.wayland.keybindings", "org.gnome.settings-daemon.plugins.media-keys"},
         "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding",
         "org.gnome.settings-daemon.plugins.media-keys",
         "custom-keybindings",
         "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/"_L1},
        {"X-Cinnamon"_L1,
         {"org.cinnamon.desktop.keybindings", "org.cinnamon.desktop.keybindings.wm",
          "org.cinnamon.desktop.keybindings.media-keys"},
         "org.cinnamon.desktop.keybindings.custom-keybinding",
         "org.cinnamon.desktop.keybindings",
         "custom-list",
         "/org/cinnamon/desktop/keybindings/custom-keybindings/"_L1},
        {"MATE"_L1,
         {"org.mate.Marco.global-keybindings", "org.mate.Marco.window-keybindings",
          "org.mate.SettingsDaemon.plugins.media-keys"},
         "org.mate.control-center.keybinding",
         nullptr,
         nullptr,
         "/org/mate/desktop/keybindings/"_L1},
    };
    return schemas;
}

constexpr qsizetype maximumCustom = 256; // shortcuts of the user's own

/// The texts under \a key; none when it holds something else.
QStringList texts(GSettings *settings, const char *key)
{
    const GlibPointer<GVariant> value(g_settings_get_value(settings, key));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
        return {QString::fromUtf8(g_variant_get_string(value.get(), nullptr))};
    QStringList texts;
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY)) {
        GVariantIter iterator;
        g_variant_iter_init(&iterator, value.get());
        const char *text = nullptr;
        while (g_variant_iter_next(&iterator, "&s", &text))
            texts.append(QString::fromUtf8(text));
    }
    return texts;
}

QStringList allTexts(GSettings *settings, GSettingsSchema *schema)
{
    QStringList all;
    const std::unique_ptr<char *, void (*)(char **)> keys(g_settings_schema_list_keys(schema), g_strfreev);
    for (const char *const *key = keys.get(); *key; ++key)
        all += texts(settings, *key);
    return all;
}

/// What the user's own shortcuts are called, or where they are.
QStringList customNames(const Schemas &schemas)
{
    if (schemas.listId) {
        const auto settings = openSettings(schemas.listId);
        return settings && hasKey(settings.get(), schemas.listKey) ? texts(settings.get(), schemas.listKey)
                                                                   : QStringList();
    }
    // MATE lists them nowhere. It gives a new one the first number that is free, so those in use are low.
    QStringList names;
    for (int number = 0; number < 32; ++number)
        names.append(u"custom%1"_s.arg(number));
    return names;
}

QStringList customTexts(const Schemas &schemas)
{
    QStringList all;
    for (const QString &name : customNames(schemas).mid(0, maximumCustom)) {
        const QString path = name.startsWith(u'/') ? name : schemas.customFolder + name + u'/';
        const auto settings = openSettings(schemas.customId, path);
        if (settings && hasKey(settings.get(), "binding"))
            all += texts(settings.get(), "binding");
    }
    return all;
}

} // namespace

std::optional<QList<Accelerator>> gsettingsShortcuts(const QString &desktop)
{
    const auto &known = allSchemas();
    const auto schemas = std::ranges::find(known, desktop, &Schemas::desktop);
    if (schemas == known.end())
        return std::nullopt;
    bool isInstalled = false;
    QStringList names;
    for (const char *id : schemas->ids) {
        if (const auto settings = openSettings(id)) {
            isInstalled = true;
            names += allTexts(settings.get(), installedSchema(id).get());
        }
    }
    if (!isInstalled)
        return std::nullopt;
    return acceleratorsFromGtk(names + customTexts(*schemas));
}

} // namespace Orbita
