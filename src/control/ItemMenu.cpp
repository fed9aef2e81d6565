#include "control/ItemMenu.h"

#include "model/CoreMenuItem.h"
#include "platform/Scheduler.h"
#include "platform/Workspace.h"

#include <QIcon>
#include <QPixmap>

namespace Orbita {

namespace {

constexpr std::chrono::milliseconds reopeningGuard{500};
constexpr int iconSide = 16; // points

QIcon menuIcon(const Image &image, double devicePixelRatio)
{
    const int side = qRound(iconSide * devicePixelRatio);
    QImage pixels = image.render({side, side});
    pixels.setDevicePixelRatio(devicePixelRatio);
    return QIcon(QPixmap::fromImage(pixels));
}

/// A name as it stands: an ampersand in it marks no key.
QString menuText(const QString &name)
{
    return QString(name).replace(u'&', QStringLiteral("&&"));
}

} // namespace

ItemMenuPlan planItemMenu(const MenuItem &item, bool toolkitAvailable)
{
    if (dynamic_cast<const CoreMenuItem *>(&item) && item.name() == QLatin1String("Finder"))
        return {};
    return {item.openWithAppPaths(), item.canEdit(), item.canQuit() && toolkitAvailable};
}

ItemMenu::ItemMenu(Workspace &workspace, Scheduler &scheduler, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_scheduler(scheduler)
{
}

ItemMenu::~ItemMenu()
{
    delete m_menu;
}

void ItemMenu::popup(const MenuItem::Pointer &item, bool toolkitAvailable, QWidget &owner, QPoint where)
{
    if (m_isVisible) {
        close();
        return;
    }
    const ItemMenuPlan plan = planItemMenu(*item, toolkitAvailable);
    if (plan.isEmpty())
        return;
    delete m_menu;
    m_menu = new QMenu(&owner);
    m_menu->setWindowTitle(item->name());
    fill(item, plan);
    connect(m_menu, &QMenu::aboutToHide, this,
            [this] { m_scheduler.after(reopeningGuard, *this, [this] { m_isVisible = false; }); });
    m_isVisible = true;
    m_menu->popup(where);
}

void ItemMenu::close()
{
    if (m_menu)
        m_menu->close();
}

void ItemMenu::fill(const MenuItem::Pointer &item, const ItemMenuPlan &plan)
{
    if (!plan.openWithAppPaths.isEmpty())
        addOpenWithMenu(item, plan.openWithAppPaths);
    if (plan.canEdit)
        connect(m_menu->addAction(tr("Edit")), &QAction::triggered, this, [this, item] { Q_EMIT editChosen(item); });
    if (plan.canQuit) {
        connect(m_menu->addAction(tr("Quit Application")), &QAction::triggered, this,
                [this, item] { Q_EMIT quitChosen(item); });
    }
}

void ItemMenu::addOpenWithMenu(const MenuItem::Pointer &item, const QStringList &applicationPaths)
{
    QMenu *openWith = m_menu->addMenu(tr("Open With..."));
    // Not before somebody looks: each application has a name and an icon to be read.
    connect(openWith, &QMenu::aboutToShow, this, [this, item, applicationPaths, openWith] {
        if (openWith->isEmpty())
            fillOpenWithMenu(*openWith, item, applicationPaths);
    });
}

void ItemMenu::fillOpenWithMenu(QMenu &openWith, const MenuItem::Pointer &item, const QStringList &applicationPaths)
{
    for (const QString &path : applicationPaths) {
        QAction *entry = openWith.addAction(menuIcon(m_workspace.icon(path), m_menu->devicePixelRatioF()),
                                            menuText(m_workspace.displayName(path)));
        entry->setIconVisibleInMenu(true);
        connect(entry, &QAction::triggered, this, [this, item, path] { Q_EMIT openWithChosen(item, path); });
        if (path == applicationPaths.first() && applicationPaths.size() > 1)
            openWith.addSeparator();
    }
}

} // namespace Orbita
