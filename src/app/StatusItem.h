#pragma once

#include <QObject>

#include <memory>

class QDBusServiceWatcher;
class QSystemTrayIcon;

namespace Orbita {

class DesktopAppearance;

/// The program's icon in the tray. It has no menu; a click opens the settings.
class StatusItem final : public QObject {
    Q_OBJECT
public:
    explicit StatusItem(const DesktopAppearance &appearance, QObject *parent = nullptr);
    ~StatusItem() override;

Q_SIGNALS:
    void clicked();

private:
    void createIcon();

    const DesktopAppearance &m_appearance;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    std::unique_ptr<QDBusServiceWatcher> m_hostWatcher;
};

} // namespace Orbita
