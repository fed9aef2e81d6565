#include "control/RingKeyMonitor.h"

#include "platform/KeyCodes.h"
#include "platform/Stage.h"

#include <QKeyEvent>
#include <QWidget>

namespace Orbita {

RingKeyMonitor::RingKeyMonitor(QWidget &window, RingKeyTarget &target, const Stage &stage, QObject *parent)
    : QObject(parent), m_target(target), m_stage(stage)
{
    m_clock.start();
    window.installEventFilter(this);
}

bool RingKeyMonitor::eventFilter(QObject *, QEvent *event)
{
    if (!m_isEnabled || event->type() != QEvent::KeyPress)
        return false;
    const RingKey key{KeyCodes::fromKeyEvent(*static_cast<QKeyEvent *>(event)),
                      std::chrono::milliseconds(m_clock.elapsed()), m_stage.areButtonsUp()};
    const RingKeyPlan plan = planRingKey(key, {m_target.itemCount(), m_target.highlightedPosition(), m_lastTime});
    m_lastTime = plan.lastTime;
    carryOut(plan);
    return plan.action != RingKeyPlan::Action::PassOn;
}

void RingKeyMonitor::carryOut(const RingKeyPlan &plan)
{
    switch (plan.action) {
    case RingKeyPlan::Action::PassOn:
    case RingKeyPlan::Action::Swallow:
        break;
    case RingKeyPlan::Action::Hide:
        m_target.dismiss();
        break;
    case RingKeyPlan::Action::Highlight:
        m_target.highlight(plan.position);
        break;
    case RingKeyPlan::Action::Click:
        m_target.click(plan.position);
        break;
    }
}

} // namespace Orbita
