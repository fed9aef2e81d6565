#include "app/StatusItem.h"

#include "platform/DesktopAppearance.h"
#include "platform/Image.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QIcon>
#include <QPainter>
#include <QSystemTrayIcon>

namespace Orbita {

namespace {

/// The one-colour picture "small" in \a color, at the sizes that trays use.
QIcon templateIcon(const QColor &color)
{
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 48, 64}) {
        QImage picture = Image::named(QStringLiteral("small")).render({side, side});
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), color);
        painter.end();
        icon.addPixmap(QPixmap::fromImage(picture));
    }
    return icon;
}

} // namespace

StatusItem::StatusItem(const DesktopAppearance &appearance, QObject *parent) : QObject(parent), m_appearance(appearance)
{
    createIcon();
    connect(&m_appearance, &DesktopAppearance::darkPanelChanged, this, &StatusItem::createIcon);
    // A tray that was there and is started again needs the icon again. Qt 6.4 looks for one that speaks D-Bus only once
    // in a process's life, so that the first one to appear after the start stays without an icon.
    m_hostWatcher = std::make_unique<QDBusServiceWatcher>(QStringLiteral("org.kde.StatusNotifierWatcher"),
                                                          QDBusConnection::sessionBus(),
                                                          QDBusServiceWatcher::WatchForRegistration);
    connect(m_hostWatcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &StatusItem::createIcon);
}

StatusItem::~StatusItem() = default;

void StatusItem::createIcon()
{
    m_icon = std::make_unique<QSystemTrayIcon>(templateIcon(m_appearance.hasDarkPanel() ? Qt::white : Qt::black));
    m_icon->setToolTip(QStringLiteral("Orbita"));
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
            Q_EMIT clicked();
    });
    m_icon->show();
}

} // namespace Orbita
