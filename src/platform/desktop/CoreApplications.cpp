#include "platform/Glib.h"

#include "platform/desktop/CoreApplications.h"

#include "platform/Log.h"
#include "platform/desktop/ApplicationEntry.h"
#include "platform/desktop/DefaultApplications.h"
#include "platform/desktop/DesktopFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

// Resources in a static library are only found after this, which must not stand in a namespace.
static void initializeResources()
{
    Q_INIT_RESOURCE(platform);
}

namespace Orbita {

namespace {

using Entry = GObjectPointer<GDesktopAppInfo>;

Entry entryOf(const QString &candidate)
{
    if (candidate.startsWith(u':')) {
        initializeResources();
        auto bundled = applicationEntry(candidate);
        return bundled ? std::move(bundled).value() : Entry();
    }
    const QString value = candidate.mid(candidate.indexOf(u':') + 1);
    if (candidate.startsWith(QLatin1String("mime:")))
        return defaultApplicationForType(value);
    if (candidate.startsWith(QLatin1String("scheme:")))
        return schemeHandler(value);
    return isSafeToLookUp(value) ? Entry(g_desktop_app_info_new(value.toUtf8().constData())) : Entry();
}

bool isOrbita(GDesktopAppInfo *entry)
{
    const char *id = g_app_info_get_id(G_APP_INFO(entry));
    if (id && QByteArray(id).startsWith("org.orbita."))
        return true;
    const QString program = QFile::decodeName(g_app_info_get_executable(G_APP_INFO(entry)));
    return QFileInfo(QStandardPaths::findExecutable(program)).canonicalFilePath()
        == QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
}

} // namespace

std::optional<QString> CoreApplications::find(const QString &name) const
{
    const auto known = m_found.constFind(name);
    if (known != m_found.cend())
        return *known;
    std::optional<QString> found;
    for (const QString &candidate : m_table.value(name)) {
        found = m_lookup(candidate);
        if (found)
            break;
    }
    // Any string may be asked for, so only the table's names are worth remembering.
    if (m_table.contains(name))
        m_found.insert(name, found);
    return found;
}

CoreApplications::Table CoreApplications::bundledTable()
{
    initializeResources();
    QFile file(QStringLiteral(":/platform/core-applications.json"));
    QJsonParseError error;
    const QJsonObject roles
        = QJsonDocument::fromJson(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray(), &error).object();
    Q_ASSERT_X(error.error == QJsonParseError::NoError, "core-applications.json", qPrintable(error.errorString()));
    Table table;
    for (auto role = roles.begin(); role != roles.end(); ++role)
        table.insert(role.key(), role.value().toVariant().toStringList());
    return table;
}

std::optional<QString> CoreApplications::lookUp(const QString &candidate)
{
    const Entry entry = entryOf(candidate);
    if (!entry || !g_desktop_app_info_get_show_in(entry.get(), nullptr) || isOrbita(entry.get()))
        return std::nullopt;
    const char *file = g_desktop_app_info_get_filename(entry.get());
    return file ? QFile::decodeName(file) : candidate;
}

} // namespace Orbita
