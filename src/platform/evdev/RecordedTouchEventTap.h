#pragma once

#include "platform/EventTap.h"
#include "platform/evdev/TouchRecording.h"

#include <QElapsedTimer>
#include <QTimer>

namespace Orbita {

/// Plays a recording in the place of the touchpads, once and in real time, from the moment the tap is first enabled.
/// While the tap is disabled the recording goes on unheard. At its end all fingers are lifted.
class RecordedTouchEventTap final : public TouchEventTap {
    Q_OBJECT
public:
    explicit RecordedTouchEventTap(TouchRecording recording, QObject *parent = nullptr);

    [[nodiscard]] bool isEnabled() const override { return m_enabled; }
    bool setEnabled(bool enabled) override;

Q_SIGNALS:
    /// The recording has been played to its end.
    void finished();

private:
    void play();
    void take(const TouchRecording::Event &event);
    void tell();

    TouchRecording m_recording;
    TouchDecoder m_decoder;
    std::size_t m_next = 0; ///< index of the first event that has not been played
    bool m_enabled = false;
    QElapsedTimer m_clock; ///< started with the first event
    QTimer m_timer;        ///< for the next event
};

} // namespace Orbita
