#pragma once

#include "platform/HotKeyService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>

#include <memory>
#include <vector>

namespace Orbita {

class KeyboardLayout;

/// Takes hot keys from Plasma's shortcut service.
///
/// It is no way round another program's grab on an X server: there the service accepts such a key, too, although it is
/// never told of its presses. What is taken follows the layout, and a service that is
/// started anew. Nothing goes over the bus before the first question, no question starts the service, and none waits
/// for longer than a second.
class PlasmaHotKeyService final : public HotKeyService {
    Q_OBJECT
public:
    PlasmaHotKeyService(const QDBusConnection &bus, const KeyboardLayout &layout, QObject *parent = nullptr);
    /// Gives all hot keys back.
    ~PlasmaHotKeyService() override;

    /// NotSupported when the service does not run or does not answer.
    [[nodiscard]] Result<void, GrabError> grab(HotKeyId id, KeyCombination combination) override;
    void release(HotKeyId id) override;
    [[nodiscard]] bool isTakenByOther(KeyCombination combination) override;
    /// Whether the service has the key for Orbita, since the user gave it that or a former run ended without giving it
    /// back. False also when the service does not run.
    [[nodiscard]] bool isKeptForUs(KeyCombination combination) const;

private Q_SLOTS:
    void hear(const QString &component, const QString &action, qlonglong time);

private:
    struct HotKey {
        HotKeyId id;
        KeyCombination combination;
        int key = 0; ///< as the service has it; 0 while it cannot be had
    };

    [[nodiscard]] bool isOurs(KeyCombination combination) const;
    [[nodiscard]] Result<void, GrabError> take(KeyCombination combination, int key);
    void giveBack(KeyCombination combination);
    [[nodiscard]] QDBusMessage ask(const QString &method, const QVariantList &arguments) const;
    /// Has the service's signals delivered; false when it does not answer.
    [[nodiscard]] bool listen();
    void followLayout();
    void takeAllAnew();

    QDBusConnection m_bus;
    const KeyboardLayout &m_layout;
    std::vector<HotKey> m_hotKeys;
    std::unique_ptr<QDBusServiceWatcher> m_watcher; ///< null until the service is listened to
};

} // namespace Orbita
