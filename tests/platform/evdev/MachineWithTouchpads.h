#pragma once

#include <QByteArray>

#include <initializer_list>
#include <memory>

#include <linux/input.h>
#include <umockdev.h>
#include <unistd.h>

namespace Orbita {

/// A machine whose touchpads come, are touched and go as a test says. Only one may exist at a time.
class MachineWithTouchpads {
public:
    enum class Node { Readable, Missing };

    /// Plugs in "/dev/input/<name>", which tells the places of two fingers and feels three. Its axes go from 0 to 100.
    /// This alone tells of it.
    void plugIn(const QByteArray &name, Node node = Node::Readable)
    {
        const QByteArray file = node == Node::Readable ? "N: input/" + name + '\n' : QByteArray();
        umockdev_testbed_add_from_string(m_testbed.get(),
                                         "P: /devices/pad/" + name + '\n' + file + "E: DEVNAME=/dev/input/" + name
                                             + "\nE: SUBSYSTEM=input\nE: ID_INPUT_TOUCHPAD=1\n",
                                         nullptr);
        if (node == Node::Readable)
            umockdev_testbed_load_ioctl(m_testbed.get(), "/dev/input/" + name, TOUCHPAD_ANSWERS, nullptr);
    }
    void unplug(const QByteArray &name)
    {
        umockdev_testbed_uevent(m_testbed.get(), "/sys/devices/pad/" + name, "remove");
        umockdev_testbed_remove_device(m_testbed.get(), "/sys/devices/pad/" + name);
    }

    struct Event {
        quint16 type;
        quint16 code;
        qint32 value;
    };
    /// Sends \a events and the end of their frame.
    void send(const QByteArray &name, std::initializer_list<Event> events)
    {
        for (const Event &event : events)
            write(name, event);
        write(name, {EV_SYN, SYN_REPORT, 0});
    }
    /// Makes the next read fail, with half an event.
    void breakReading(const QByteArray &name) { write(name, {}, sizeof(input_event) / 2); }

private:
    void write(const QByteArray &name, const Event &event, std::size_t size = sizeof(input_event))
    {
        const input_event raw{{}, event.type, event.code, event.value};
        const int file = umockdev_testbed_get_dev_fd(m_testbed.get(), "/dev/input/" + name);
        if (::write(file, &raw, size) != ssize_t(size))
            qFatal("cannot touch a touchpad");
    }

    struct Unref {
        void operator()(UMockdevTestbed *testbed) const { g_object_unref(testbed); }
    };
    std::unique_ptr<UMockdevTestbed, Unref> m_testbed{umockdev_testbed_new()};
};

} // namespace Orbita
