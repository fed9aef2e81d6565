#include "platform/evdev/EvdevTouchpad.h"

#include <QFile>

#include <libevdev/libevdev.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace Orbita {

namespace {

using OpenError = EvdevTouchpad::OpenError;

QString describe(int error)
{
    return QString::fromLocal8Bit(strerror(error));
}

TouchpadAxes::Range axisRange(const libevdev *device, unsigned int code)
{
    const input_absinfo *const info = libevdev_get_abs_info(device, code);
    return info ? TouchpadAxes::Range{info->minimum, info->maximum} : TouchpadAxes::Range{};
}

TouchpadAxes axesOf(const libevdev *device)
{
    return {axisRange(device, ABS_MT_POSITION_X), axisRange(device, ABS_MT_POSITION_Y), libevdev_get_num_slots(device)};
}

Result<LibevdevPointer, OpenError> openDevice(const QString &node)
{
    const int file = ::open(QFile::encodeName(node).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return Failure(OpenError{OpenError::Kind::Unreadable, describe(errno)});
    libevdev *device = nullptr;
    if (const int result = libevdev_new_from_fd(file, &device); result < 0) {
        ::close(file);
        return Failure(OpenError{OpenError::Kind::Unreadable, describe(-result)});
    }
    return LibevdevPointer(device);
}

} // namespace

void LibevdevDeleter::operator()(libevdev *device) const
{
    const int file = libevdev_get_fd(device);
    libevdev_free(device);
    ::close(file);
}

Result<std::unique_ptr<EvdevTouchpad>, OpenError> EvdevTouchpad::open(const QString &node)
{
    auto device = openDevice(node);
    if (!device)
        return Failure(device.error());
    const TouchpadAxes axes = axesOf(device->get());
    if (!axes.areThoseOfATouchpad())
        return Failure(
            OpenError{OpenError::Kind::NoTouchpad, QStringLiteral("it does not tell the places of fingers")});
    return std::unique_ptr<EvdevTouchpad>(new EvdevTouchpad(node, std::move(device).value(), axes));
}

EvdevTouchpad::EvdevTouchpad(const QString &node, LibevdevPointer device, const TouchpadAxes &axes)
    : m_node(QFile::encodeName(node)),
      m_device(std::move(device)),
      m_notifier(libevdev_get_fd(m_device.get()), QSocketNotifier::Read),
      m_decoder(axes, nextTouchpadNumber())
{
    takePresentState();
    connect(&m_notifier, &QSocketNotifier::activated, this, &EvdevTouchpad::read);
}

void EvdevTouchpad::takePresentState()
{
    const auto take = [this](quint16 type, quint16 code, qint32 value) { (void)m_decoder.take(type, code, value); };
    libevdev *const device = m_device.get();
    for (int contact = 0; contact < libevdev_get_num_slots(device); ++contact) {
        take(EV_ABS, ABS_MT_SLOT, contact);
        for (const quint16 code : {ABS_MT_POSITION_X, ABS_MT_POSITION_Y, ABS_MT_TOOL_TYPE, ABS_MT_TRACKING_ID}) {
            int value = 0;
            if (libevdev_fetch_slot_value(device, unsigned(contact), code, &value))
                take(EV_ABS, code, value);
        }
    }
    take(EV_ABS, ABS_MT_SLOT, libevdev_get_current_slot(device));
    for (const quint16 code : {BTN_TOOL_DOUBLETAP, BTN_TOOL_TRIPLETAP, BTN_TOOL_QUADTAP, BTN_TOOL_QUINTTAP})
        take(EV_KEY, code, libevdev_get_event_value(device, EV_KEY, code));
}

void EvdevTouchpad::close()
{
    m_notifier.setEnabled(false);
    m_device.reset();
}

void EvdevTouchpad::read()
{
    unsigned int mode = LIBEVDEV_READ_FLAG_NORMAL;
    while (m_device) {
        input_event event;
        const int status = libevdev_next_event(m_device.get(), mode, &event);
        if (status == -EAGAIN) {
            if (std::exchange(mode, unsigned(LIBEVDEV_READ_FLAG_NORMAL)) == LIBEVDEV_READ_FLAG_NORMAL)
                return;
            if (m_decoder.resynchronised())
                tell();
        } else if (status < 0) {
            lose(-status);
        } else {
            if (status == LIBEVDEV_READ_STATUS_SYNC)
                mode = LIBEVDEV_READ_FLAG_SYNC;
            if (m_decoder.take(event.type, event.code, event.value))
                tell();
        }
    }
}

void EvdevTouchpad::lose(int error)
{
    close();
    Q_EMIT lost(describe(error));
}

void EvdevTouchpad::tell()
{
    const bool comes = !std::exchange(m_wasTouched, isTouched()) && m_wasTouched;
    if (comes && ::access(m_node.constData(), R_OK) != 0) {
        lose(errno);
        return;
    }
    Q_EMIT gesture(m_decoder.touching());
    if (m_device && m_decoder.hasMagnified())
        Q_EMIT magnify();
}

} // namespace Orbita
