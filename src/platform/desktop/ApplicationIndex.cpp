#include <gio/gdesktopappinfo.h>

#include "platform/desktop/ApplicationIndex.h"

#include <QFileInfo>

#include <memory>
#include <utility>

namespace Orbita {

namespace {

QString withoutSuffix(QString id)
{
    if (id.endsWith(QLatin1String(".desktop")))
        id.chop(8);
    return id;
}

DesktopEntry entryOf(GDesktopAppInfo *info)
{
    GAppInfo *application = G_APP_INFO(info);
    DesktopEntry entry;
    entry.id = withoutSuffix(QString::fromUtf8(g_app_info_get_id(application)));
    entry.path = QFile::decodeName(g_desktop_app_info_get_filename(info));
    entry.name = QString::fromUtf8(g_app_info_get_display_name(application));
    entry.startupWmClass = QString::fromUtf8(g_desktop_app_info_get_startup_wm_class(info));
    entry.program = QFileInfo(QFile::decodeName(g_app_info_get_executable(application))).fileName();
    entry.isHidden = g_app_info_should_show(application) == FALSE;
    return entry;
}

} // namespace

DesktopCatalog readInstalledApplications()
{
    std::vector<DesktopEntry> entries;
    GList *applications = g_app_info_get_all();
    for (const GList *item = applications; item != nullptr; item = item->next) {
        if (G_IS_DESKTOP_APP_INFO(item->data))
            entries.push_back(entryOf(G_DESKTOP_APP_INFO(item->data)));
    }
    g_list_free_full(applications, g_object_unref);
    return DesktopCatalog(std::move(entries));
}

ApplicationIndex::ApplicationIndex(Reader read, QObject *parent) : QObject(parent), m_read(std::move(read))
{
    m_pool.setMaxThreadCount(1);
}

ApplicationIndex::~ApplicationIndex()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void ApplicationIndex::reload()
{
    m_pool.clear(); // a reading that has not begun would see no less than this one
    m_pool.start([this] {
        auto catalog = std::make_shared<DesktopCatalog>(m_read());
        QMetaObject::invokeMethod(
            this, [this, catalog] { take(std::move(*catalog)); }, Qt::QueuedConnection);
    });
}

void ApplicationIndex::take(DesktopCatalog catalog)
{
    if (m_loaded && catalog.entries() == m_catalog.entries())
        return;
    m_loaded = true;
    m_catalog = std::move(catalog);
    Q_EMIT changed();
}

} // namespace Orbita
