#pragma once

#include "base/Result.h"
#include "platform/evdev/TouchDecoder.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

struct libevdev;

namespace Orbita {

/// Frees the device and closes its file.
struct LibevdevDeleter {
    void operator()(libevdev *device) const;
};
using LibevdevPointer = std::unique_ptr<libevdev, LibevdevDeleter>;

/// One touchpad that is listened to. It is only read, never grabbed, so that everybody else hears of it, too. Whether
/// it may still be read is looked at whenever a finger comes: another user may sit at the machine by now.
class EvdevTouchpad final : public QObject {
    Q_OBJECT
public:
    struct OpenError {
        enum class Kind {
            Unreadable,
            NoTouchpad, ///< It does not tell the places of several fingers.
        };
        Kind kind;
        QString reason; ///< for the log
    };
    /// Opens the event node \a node. Fingers that touch it already are told with its next change.
    [[nodiscard]] static Result<std::unique_ptr<EvdevTouchpad>, OpenError> open(const QString &node);

    /// Lets go of the device; nothing is told any more. May be called while a signal is being told.
    void close();
    [[nodiscard]] bool isTouched() const { return !m_decoder.touching().isEmpty(); }

Q_SIGNALS:
    /// As those of TouchEventTap.
    void gesture(const Orbita::Touches &touching);
    void magnify();
    /// It can be read no longer, for \a reason, and is closed.
    void lost(const QString &reason);

private:
    EvdevTouchpad(const QString &node, LibevdevPointer device, const TouchpadAxes &axes);

    void takePresentState();
    void read();
    void tell();
    void lose(int error);

    const QByteArray m_node; ///< as the file system has it
    bool m_wasTouched = false;
    LibevdevPointer m_device; ///< nothing once closed
    QSocketNotifier m_notifier;
    TouchDecoder m_decoder;
};

} // namespace Orbita
