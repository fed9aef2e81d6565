#include "settings/triggers/TriggerHandlers.h"

#include "platform/EventTap.h"
#include "platform/Stage.h"
#include "settings/Log.h"
#include "settings/triggers/TriggerMatch.h"
#include "shortcut/MASShortcutUserDefaultsHotKeys.h"

namespace Orbita {

namespace {

const QString shortcutKey = QStringLiteral("GlobalShortcut");

void enable(EventTap *tap)
{
    if (tap && !tap->isEnabled())
        tap->setEnabled(true);
}

} // namespace

TriggerHandlers::TriggerHandlers(const TriggerSources &sources, std::function<GestureTrigger()> trigger,
                                 std::function<Time()> clock, QObject *parent)
    : QObject(parent), m_sources(sources), m_trigger(std::move(trigger)), m_clock(std::move(clock))
{
    m_watchdogTimer.setInterval(std::chrono::seconds(8));
    m_watchdogTimer.setTimerType(Qt::VeryCoarseTimer);
    // One timer that ticks serves all checks, several of which are pending while fingers rest.
    m_restTimer.setInterval(std::chrono::milliseconds(10));
    m_restTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_watchdogTimer, &QTimer::timeout, this, &TriggerHandlers::check);
    connect(&m_restTimer, &QTimer::timeout, this, &TriggerHandlers::makeRestChecks);
    connect(&m_sources.mouseUp, &MouseUpEventTap::mouseUp, this, &TriggerHandlers::shouldHide);
    connect(&m_sources.otherMouseDown, &OtherMouseDownEventTap::otherMouseDown, this, &TriggerHandlers::otherMouseDown);
    connect(&m_sources.mouseMoved, &MouseMovedEventTap::mouseMoved, this, &TriggerHandlers::mouseMoved);
    connect(&m_sources.touch, &TouchEventTap::gesture, this, &TriggerHandlers::touched);
    connect(&m_sources.touch, &TouchEventTap::magnify, this, &TriggerHandlers::pinched);
}

TriggerHandlers::~TriggerHandlers()
{
    m_sources.shortcuts.unregisterGlobalShortcut(shortcutKey); // its handler is ours
}

void TriggerHandlers::start()
{
    stop();
    m_sources.shortcuts.registerGlobalShortcut(shortcutKey, [this] { Q_EMIT shouldShow(ShowEvent::Shortcut); });
    check();
    m_watchdogTimer.start();
}

void TriggerHandlers::stop()
{
    m_sources.shortcuts.unregisterGlobalShortcut(shortcutKey);
    disableTaps();
    m_watchdogTimer.stop();
}

void TriggerHandlers::disableTaps()
{
    m_sources.touch.setEnabled(false);
    m_sources.mouseUp.setEnabled(false);
    m_sources.mouseMoved.setEnabled(false);
    m_sources.otherMouseDown.setEnabled(false);
}

void TriggerHandlers::setSuspended(bool suspended)
{
    m_isSuspended = suspended;
    disableTaps();
    if (isStarted())
        check();
}

void TriggerHandlers::check()
{
    if (m_isSuspended)
        return;
    enable(&m_sources.mouseUp);
    enable(tapOfTrigger());
}

EventTap *TriggerHandlers::tapOfTrigger() const
{
    switch (triggerTap(m_trigger())) {
    case TriggerTap::Touch:
        return &m_sources.touch;
    case TriggerTap::OtherMouseDown:
        return &m_sources.otherMouseDown;
    case TriggerTap::MouseMoved:
        return &m_sources.mouseMoved;
    case TriggerTap::None:
        break;
    }
    return nullptr;
}

void TriggerHandlers::otherMouseDown(int buttonNumber)
{
    qCInfo(lcSettings, "%d", buttonNumber);
    if (buttonNumber == triggerButtonNumber(m_trigger()))
        fire();
}

void TriggerHandlers::touched(const Touches &touching)
{
    const GestureTrigger trigger = m_trigger();
    if (const int resting = restingFingers(trigger)) {
        if (m_fingerRest.onTouches(resting, touching))
            scheduleRestCheck();
    } else if (const int spreading = spreadingFingers(trigger)) {
        if (m_fingerSpread.onTouches(spreading, touching))
            fire();
    }
}

void TriggerHandlers::pinched()
{
    if (restingFingers(m_trigger()) != 0)
        m_fingerRest.onMagnify();
}

void TriggerHandlers::scheduleRestCheck()
{
    m_restChecks.enqueue(m_clock() + FingerRestDetector::restDelay);
    if (!m_restTimer.isActive())
        m_restTimer.start();
}

void TriggerHandlers::makeRestChecks()
{
    const Time now = m_clock();
    while (!m_restChecks.isEmpty() && m_restChecks.head() <= now) {
        m_restChecks.dequeue();
        // Another trigger may be wanted by now, or none.
        if (m_fingerRest.check() && isStarted() && restingFingers(m_trigger()) != 0)
            fire();
    }
    if (m_restChecks.isEmpty())
        m_restTimer.stop();
}

void TriggerHandlers::mouseMoved()
{
    const Time now = m_clock();
    if (!m_circle.isDue(now))
        return;
    m_sources.mouseMoved.pause(CircleDetector::samplingInterval);
    m_sources.stage.locatePointer(this, [this, now](QPointF pointer) {
        if (m_circle.onPointer(pointer, now) && isStarted())
            fire();
    });
}

} // namespace Orbita
