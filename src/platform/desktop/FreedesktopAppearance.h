#pragma once

#include "platform/DesktopAppearance.h"

#include <memory>

namespace Orbita {

/// Reads GNOME's settings, which most desktops share, and KDE's file, and follows both.
/// Nothing is read before the first question.
class FreedesktopAppearance final : public DesktopAppearance {
    Q_OBJECT
public:
    explicit FreedesktopAppearance(QObject *parent = nullptr);
    ~FreedesktopAppearance() override;

    [[nodiscard]] bool isMotionReduced() const override;
    [[nodiscard]] bool hasDarkPanel() const override;

protected:
    void connectNotify(const QMetaMethod &signal) override;

private:
    class Sources;
    struct Answers;

    const Answers &answers() const;
    void update();

    mutable std::unique_ptr<Sources> m_sources;
    mutable std::unique_ptr<Answers> m_answers;
};

} // namespace Orbita
