#pragma once

#include "platform/EventTap.h"
#include "platform/evdev/UdevTouchpads.h"

#include <map>
#include <set>

namespace Orbita {

class EvdevTouchpad;

/// All touchpads of the machine, also those that come later. While disabled it has no device open.
///
/// It is disabled when there are touchpads of which none can be read, when the last one was unplugged, and when reading
/// one has failed, although the others are still heard then. A touchpad that comes, or is made readable, enables it
/// again, and so does setEnabled(). Without any touchpad it waits for one and is enabled.
class EvdevTouchEventTap final : public TouchEventTap {
    Q_OBJECT
public:
    explicit EvdevTouchEventTap(QObject *parent = nullptr);

    [[nodiscard]] bool isEnabled() const override { return m_enabled; }
    bool setEnabled(bool enabled) override;

private:
    bool enable();
    void disable();
    void open(const QString &node);
    void onAppeared(const QString &node);
    void onVanished(const QString &node);
    void close(const QString &node);
    void warnOnce(const QString &node, const QString &complaint);

    bool m_enabled = false;
    UdevTouchpads m_touchpads;
    std::map<QString, EvdevTouchpad *> m_open; ///< by node; children of ours
    std::set<QString> m_unreadable;            ///< nodes
    std::set<QString> m_warnings;              ///< those that were given since the tap was enabled
};

} // namespace Orbita
