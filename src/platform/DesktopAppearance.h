#pragma once

#include <QObject>

namespace Orbita {

/// What the user asked the desktop for in general.
class DesktopAppearance : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether animations are to be left out.
    [[nodiscard]] virtual bool isMotionReduced() const = 0;
    /// Whether the panel that status items stand in is dark.
    [[nodiscard]] virtual bool hasDarkPanel() const = 0;

Q_SIGNALS:
    void motionReducedChanged(bool reduced);
    void darkPanelChanged(bool dark);
};

} // namespace Orbita
