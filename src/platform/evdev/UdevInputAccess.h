#pragma once

#include "platform/InputAccess.h"
#include "platform/evdev/UdevTouchpads.h"

namespace Orbita {

/// Asks udev for the touchpads and the kernel for the right to read them.
class UdevInputAccess final : public InputAccess {
    Q_OBJECT
public:
    explicit UdevInputAccess(QObject *parent = nullptr);

    [[nodiscard]] Touchpads touchpads() const override;

private:
    UdevTouchpads m_touchpads;
};

} // namespace Orbita
