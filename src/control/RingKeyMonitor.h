#pragma once

#include "control/KeyNavigation.h"

#include <QElapsedTimer>
#include <QObject>

class QWidget;

namespace Orbita {

class Stage;

/// The ring that keys act on.
class RingKeyTarget {
public:
    virtual ~RingKeyTarget() = default;

    [[nodiscard]] virtual qint64 itemCount() const = 0;
    /// NotFound when nothing is highlighted.
    [[nodiscard]] virtual qint64 highlightedPosition() const = 0;
    virtual void highlight(qint64 position) = 0;
    virtual void click(qint64 position) = 0;
    virtual void dismiss() = 0;
};

/// Watches the keys that reach a ring's window and carries out what planRingKey() decides.
class RingKeyMonitor final : public QObject {
    Q_OBJECT
public:
    /// \a window, \a target and \a stage outlive the monitor.
    RingKeyMonitor(QWidget &window, RingKeyTarget &target, const Stage &stage, QObject *parent = nullptr);

    /// Keys go their usual way while it is disabled; enabled at first.
    void setEnabled(bool enabled) { m_isEnabled = enabled; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void carryOut(const RingKeyPlan &plan);

    RingKeyTarget &m_target;
    const Stage &m_stage;
    QElapsedTimer m_clock;
    std::optional<std::chrono::milliseconds> m_lastTime;
    bool m_isEnabled = true;
};

} // namespace Orbita
