#include "platform/desktop/DesktopSettings.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace Orbita {

QStringList currentDesktops()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

GObjectPointer<GSettings> openInterfaceSettings()
{
    constexpr char id[] = "org.gnome.desktop.interface";
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    const GlibPointer<GSettingsSchema> schema(source ? g_settings_schema_source_lookup(source, id, TRUE) : nullptr);
    return GObjectPointer<GSettings>(schema ? g_settings_new_full(schema.get(), nullptr, nullptr) : nullptr);
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
