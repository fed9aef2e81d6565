#include "platform/desktop/DesktopSettings.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace Orbita {

QStringList currentDesktops()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

GlibPointer<GSettingsSchema> installedSchema(const char *id)
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    return GlibPointer<GSettingsSchema>(source ? g_settings_schema_source_lookup(source, id, TRUE) : nullptr);
}

GObjectPointer<GSettings> openSettings(const char *id, const QString &path)
{
    const auto schema = installedSchema(id);
    const bool hasPlace = schema && g_settings_schema_get_path(schema.get());
    const bool isPath = path.startsWith(u'/') && path.endsWith(u'/') && !path.contains(QLatin1String("//"));
    if (!schema || hasPlace != path.isEmpty() || (!path.isEmpty() && !isPath))
        return nullptr;
    return GObjectPointer<GSettings>(
        g_settings_new_full(schema.get(), nullptr, hasPlace ? nullptr : path.toUtf8().constData()));
}

GObjectPointer<GSettings> openInterfaceSettings()
{
    return openSettings("org.gnome.desktop.interface");
}

bool hasKey(GSettings *settings, const char *key)
{
    GSettingsSchema *found = nullptr;
    g_object_get(settings, "settings-schema", &found, nullptr);
    const GlibPointer<GSettingsSchema> schema(found);
    return schema && g_settings_schema_has_key(schema.get(), key);
}

QString kdeGlobalsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/kdeglobals");
}

std::unique_ptr<QSettings> openSettingsFile(const QString &path)
{
    constexpr qint64 maximumSize = 1024 * 1024; // bytes; such files have some kilobytes
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > maximumSize)
        return nullptr;
    return std::make_unique<QSettings>(path, QSettings::IniFormat);
}

} // namespace Orbita
