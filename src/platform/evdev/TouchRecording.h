#pragma once

#include "base/Result.h"
#include "platform/evdev/TouchDecoder.h"

#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <vector>

namespace Orbita {

/// What a touchpad reported over some time, as `evemu-record` (of the evemu tools) writes it down.
///
/// Of that text the lines `A:` (an axis: its code in hexadecimal, minimum, maximum, …) and `E:` (an event: seconds with
/// a fraction of up to six digits, type and code in hexadecimal, value) matter; `N:`, `I:`, `P:`, `B:`, `L:`, `S:` and
/// comments may be there.
struct TouchRecording {
    struct Event {
        std::chrono::microseconds due; ///< after the first event; never less than the one before
        quint16 type;
        quint16 code;
        qint32 value;
    };
    TouchpadAxes axes; ///< those of a touchpad
    std::vector<Event> events;

    /// No recording may be larger than this many bytes.
    static constexpr qint64 maximumSize = 16 * 1024 * 1024;
    /// Nor may it take longer.
    static constexpr std::chrono::hours maximumDuration{24};

    /// Reads the file at \a path. The error is a sentence for the user without a full stop.
    [[nodiscard]] static Result<TouchRecording, QString> load(const QString &path);
    /// Reads \a text; the error names the line. Times that go backwards count as no time at all.
    [[nodiscard]] static Result<TouchRecording, QString> parse(QByteArrayView text);
};

} // namespace Orbita
