#include "platform/evdev/EvdevTouchEventTap.h"

#include "platform/Log.h"
#include "platform/evdev/EvdevTouchpad.h"

namespace Orbita {

EvdevTouchEventTap::EvdevTouchEventTap(QObject *parent) : TouchEventTap(parent)
{
    connect(&m_touchpads, &UdevTouchpads::appeared, this, &EvdevTouchEventTap::onAppeared);
    connect(&m_touchpads, &UdevTouchpads::vanished, this, &EvdevTouchEventTap::onVanished);
}

bool EvdevTouchEventTap::setEnabled(bool enabled)
{
    if (enabled)
        return m_enabled || enable();
    disable();
    return true;
}

bool EvdevTouchEventTap::enable()
{
    // Watched first: what comes while the list is made is in the list, or told later, or both.
    if (!m_touchpads.watch()) {
        warnOnce(QStringLiteral("udev"), QStringLiteral("cannot be reached"));
        return false;
    }
    m_unreadable.clear();
    for (const QString &node : m_touchpads.nodes())
        open(node);
    m_enabled = !m_open.empty() || m_unreadable.empty();
    return m_enabled;
}

void EvdevTouchEventTap::disable()
{
    m_enabled = false;
    m_touchpads.stopWatching();
    while (!m_open.empty())
        close(m_open.begin()->first);
    m_unreadable.clear();
    m_warnings.clear();
}

void EvdevTouchEventTap::open(const QString &node)
{
    if (m_open.contains(node))
        return;
    auto opened = EvdevTouchpad::open(node);
    if (!opened) {
        if (opened.error().kind == EvdevTouchpad::OpenError::Kind::Unreadable)
            m_unreadable.insert(node);
        warnOnce(node, QStringLiteral("is not listened to: ") + opened.error().reason);
        return;
    }
    m_unreadable.erase(node);
    EvdevTouchpad *const pad = std::move(opened).value().release();
    pad->setParent(this);
    m_open.emplace(node, pad);
    connect(pad, &EvdevTouchpad::gesture, this, &TouchEventTap::gesture);
    connect(pad, &EvdevTouchpad::magnify, this, &TouchEventTap::magnify);
    connect(pad, &EvdevTouchpad::lost, this, [this, node](const QString &reason) {
        warnOnce(node, QStringLiteral("was lost: ") + reason);
        onVanished(node);
        m_enabled = false; // although others may go on: it has to be opened again
    });
}

void EvdevTouchEventTap::onAppeared(const QString &node)
{
    open(node);
    m_enabled = !m_open.empty() || (m_enabled && m_unreadable.empty());
}

void EvdevTouchEventTap::onVanished(const QString &node)
{
    m_unreadable.erase(node);
    const auto found = m_open.find(node);
    if (found == m_open.end())
        return;
    const bool wasTouched = found->second->isTouched();
    m_enabled = m_open.size() > 1;
    close(node);
    if (wasTouched)
        Q_EMIT gesture({});
}

void EvdevTouchEventTap::close(const QString &node)
{
    EvdevTouchpad *const pad = m_open.extract(node).mapped();
    pad->close();
    pad->deleteLater(); // it may be what has called us
}

void EvdevTouchEventTap::warnOnce(const QString &node, const QString &complaint)
{
    const QString warning = node + u' ' + complaint;
    if (m_warnings.insert(warning).second)
        qCWarning(lcPlatform).noquote() << warning;
}

} // namespace Orbita
