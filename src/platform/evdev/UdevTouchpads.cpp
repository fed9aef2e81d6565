#include "platform/evdev/UdevTouchpads.h"

#include <QFile>
#include <QSocketNotifier>

#include <libudev.h>

#include <string_view>

namespace Orbita {

namespace {

struct DeviceDeleter {
    void operator()(udev_device *device) const { udev_device_unref(device); }
    void operator()(udev_enumerate *enumeration) const { udev_enumerate_unref(enumeration); }
};
using Device = std::unique_ptr<udev_device, DeviceDeleter>;
using Enumeration = std::unique_ptr<udev_enumerate, DeviceDeleter>;

constexpr auto subsystem = "input";
constexpr auto touchpadProperty = "ID_INPUT_TOUCHPAD";

/// A null pointer of udev is an empty text.
std::string_view text(const char *string)
{
    return string ? string : "";
}

/// The event node of \a device, or an empty text when it is no touchpad or another of its nodes.
QString touchpadNode(udev_device *device)
{
    const bool isTouchpad = text(udev_device_get_property_value(device, touchpadProperty)) == "1";
    const bool isEventNode = text(udev_device_get_sysname(device)).starts_with("event");
    return isTouchpad && isEventNode ? QFile::decodeName(udev_device_get_devnode(device)) : QString();
}

} // namespace

void UdevDeleter::operator()(udev *context) const
{
    udev_unref(context);
}

void UdevDeleter::operator()(udev_monitor *monitor) const
{
    udev_monitor_unref(monitor);
}

UdevTouchpads::UdevTouchpads(QObject *parent) : QObject(parent), m_udev(udev_new()) {}

UdevTouchpads::~UdevTouchpads() = default;

QStringList UdevTouchpads::nodes() const
{
    QStringList nodes;
    const Enumeration enumeration(m_udev ? udev_enumerate_new(m_udev.get()) : nullptr);
    if (!enumeration)
        return nodes;
    udev_enumerate_add_match_subsystem(enumeration.get(), subsystem);
    udev_enumerate_add_match_property(enumeration.get(), touchpadProperty, "1");
    udev_enumerate_scan_devices(enumeration.get());
    udev_list_entry *entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(enumeration.get()))
    {
        const Device device(udev_device_new_from_syspath(m_udev.get(), udev_list_entry_get_name(entry)));
        const QString node = device ? touchpadNode(device.get()) : QString();
        if (!node.isEmpty())
            nodes.append(node);
    }
    return nodes;
}

bool UdevTouchpads::watch()
{
    if (m_notifier)
        return true;
    m_monitor.reset(m_udev ? udev_monitor_new_from_netlink(m_udev.get(), "udev") : nullptr);
    if (!m_monitor || udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), subsystem, nullptr) < 0
        || udev_monitor_enable_receiving(m_monitor.get()) < 0) {
        m_monitor.reset();
        return false;
    }
    m_notifier = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(m_monitor.get()), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &UdevTouchpads::receive);
    return true;
}

void UdevTouchpads::stopWatching()
{
    if (!m_notifier)
        return;
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater(); // it may be what has called us
    m_monitor.reset();
}

void UdevTouchpads::receive()
{
    while (m_monitor) {
        const Device device(udev_monitor_receive_device(m_monitor.get()));
        if (!device)
            return;
        const QString node = touchpadNode(device.get());
        if (node.isEmpty())
            continue;
        const std::string_view action = text(udev_device_get_action(device.get()));
        if (action == "remove")
            Q_EMIT vanished(node);
        else if (action == "add" || action == "change")
            Q_EMIT appeared(node);
    }
}

} // namespace Orbita
