#include "platform/evdev/UdevInputAccess.h"

#include "platform/Log.h"

#include <QFile>

#include <algorithm>

#include <unistd.h>

namespace Orbita {

UdevInputAccess::UdevInputAccess(QObject *parent) : InputAccess(parent)
{
    connect(&m_touchpads, &UdevTouchpads::appeared, this, &InputAccess::changed);
    connect(&m_touchpads, &UdevTouchpads::vanished, this, &InputAccess::changed);
    if (!m_touchpads.watch())
        qCWarning(lcPlatform) << "udev cannot be reached: touchpads that come later will go unnoticed";
}

InputAccess::Touchpads UdevInputAccess::touchpads() const
{
    const QStringList nodes = m_touchpads.nodes();
    if (nodes.isEmpty())
        return Touchpads::None;
    const bool anyReadable = std::any_of(nodes.begin(), nodes.end(), [](const QString &node) {
        return ::access(QFile::encodeName(node).constData(), R_OK) == 0;
    });
    return anyReadable ? Touchpads::Trusted : Touchpads::Refused;
}

} // namespace Orbita
