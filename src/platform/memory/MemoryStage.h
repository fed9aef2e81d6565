#pragma once

#include "platform/BlurBehind.h"
#include "platform/DesktopAppearance.h"
#include "platform/Stage.h"

namespace Orbita {

/// A desk of planted screens with a planted pointer that writes down where windows were put.
class MemoryStage final : public Stage {
    Q_OBJECT
public:
    using Stage::Stage;

    [[nodiscard]] std::vector<Screen> screens() const override { return plantedScreens; }
    void locatePointer(QObject *, PointerCallback callback) override { callback(pointer); }
    [[nodiscard]] bool areButtonsUp() const override { return buttonsUp; }
    void place(QWindow &window, const QRectF &frame) override;
    void present(QWindow &) override { ++presented; }
    void flush() override { ++flushed; }
    void setInputRegion(QWindow &, const QRegion &region) override { inputRegion = region; }
    [[nodiscard]] bool isCompositing() const override { return m_compositing; }

    void setCompositing(bool compositing)
    {
        m_compositing = compositing;
        Q_EMIT compositingChanged(compositing);
    }

    std::vector<Screen> plantedScreens{{QRectF(0, 0, 1280, 800), 1.0}};
    QPointF mainCorner; ///< the upper left corner of the first screen, in desktop coordinates
    QPointF pointer{640, 400};
    bool buttonsUp = true;
    QRectF lastFrame;  ///< the frame of the last place()
    int presented = 0; ///< how often present() was asked
    int flushed = 0;   ///< how often flush() was asked
    QRegion inputRegion;

protected:
    [[nodiscard]] QRectF mainScreenOnDesktop() const override
    {
        return {mainCorner, plantedScreens.front().frame.size()};
    }

private:
    bool m_compositing = true;
};

class MemoryBlurBehind final : public BlurBehind {
    Q_OBJECT
public:
    using BlurBehind::BlurBehind;

    [[nodiscard]] bool isAvailable() const override { return m_available; }
    void setRegion(QWindow &, const QRegion &blurred) override { region = blurred; }
    void setAvailable(bool available)
    {
        m_available = available;
        Q_EMIT availableChanged(available);
    }

    QRegion region; ///< of the last setRegion()

private:
    bool m_available = false;
};

class MemoryDesktopAppearance final : public DesktopAppearance {
    Q_OBJECT
public:
    using DesktopAppearance::DesktopAppearance;

    [[nodiscard]] bool isMotionReduced() const override { return m_motionReduced; }
    [[nodiscard]] bool hasDarkPanel() const override { return darkPanel; }
    void setMotionReduced(bool reduced)
    {
        m_motionReduced = reduced;
        Q_EMIT motionReducedChanged(reduced);
    }

    bool darkPanel = false;

private:
    bool m_motionReduced = false;
};

} // namespace Orbita
