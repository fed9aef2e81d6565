#include "platform/Glib.h"

#include "platform/desktop/ApplicationIndex.h"

#include "platform/desktop/DesktopFile.h"

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

QString iconOf(GAppInfo *application)
{
    GIcon *icon = g_app_info_get_icon(application); // belongs to the application
    const GlibPointer<char> text(icon ? g_icon_to_string(icon) : nullptr);
    return QString::fromUtf8(text.get());
}

DesktopEntry entryOf(const InstalledDesktopFile &file, GDesktopAppInfo *info)
{
    GAppInfo *application = G_APP_INFO(info);
    DesktopEntry entry;
    entry.id = withoutSuffix(file.id);
    entry.path = file.path;
    entry.name = QString::fromUtf8(g_app_info_get_display_name(application));
    entry.icon = iconOf(application);
    entry.startupWmClass = QString::fromUtf8(g_desktop_app_info_get_startup_wm_class(info));
    entry.program = QFileInfo(QFile::decodeName(g_app_info_get_executable(application))).fileName();
    entry.isHidden = g_app_info_should_show(application) == FALSE;
    return entry;
}

} // namespace

DesktopCatalog readInstalledApplications()
{
    // One after the other: asking for all at once would keep all in memory, and the lock that look-ups on other
    // threads need.
    std::vector<DesktopEntry> entries;
    for (const InstalledDesktopFile &file : installedDesktopFiles()) {
        const GObjectPointer<GDesktopAppInfo> info(
            g_desktop_app_info_new_from_filename(QFile::encodeName(file.path).constData()));
        if (info && !g_desktop_app_info_get_is_hidden(info.get()))
            entries.push_back(entryOf(file, info.get()));
    }
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
