#include "shortcut/MASShortcut.h"

#include "platform/KeyCodes.h"
#include "platform/KeyCombination.h"
#include "platform/KeyedArchive.h"

#include <QKeyEvent>

namespace Orbita {

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 modifierMask = ShiftModifierFlag | ControlModifierFlag | OptionModifierFlag | CommandModifierFlag;

quint64 flagsOf(Qt::KeyboardModifiers modifiers)
{
    quint64 flags = 0;
    if (modifiers & Qt::ShiftModifier)
        flags |= ShiftModifierFlag;
    if (modifiers & Qt::ControlModifier)
        flags |= ControlModifierFlag;
    if (modifiers & Qt::AltModifier)
        flags |= OptionModifierFlag;
    if (modifiers & Qt::MetaModifier)
        flags |= CommandModifierFlag;
    return flags;
}

/// The modifier that the key of \a event is; 0 for other keys.
quint64 ownFlag(const QKeyEvent &event, std::optional<quint16> keyCode)
{
    constexpr quint16 leftAlt = 58;
    constexpr quint16 rightAlt = 61;
    switch (event.key()) {
    case Qt::Key_Shift:
        return ShiftModifierFlag;
    case Qt::Key_Control:
        return ControlModifierFlag;
    case Qt::Key_Alt:
        return OptionModifierFlag;
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return CommandModifierFlag;
    case Qt::Key_Meta: // which the Alt keys are while Shift is held
        return keyCode == leftAlt || keyCode == rightAlt ? OptionModifierFlag : CommandModifierFlag;
    default:
        return 0;
    }
}

/// The whole number in \a value; nothing when that is of another type, or above the range of a signed one.
std::optional<qint64> integer(const QVariant &value)
{
    if (value.typeId() != QMetaType::LongLong)
        return {};
    return value.toLongLong();
}

} // namespace

MASShortcut MASShortcut::fromKeyEvent(const QKeyEvent &event)
{
    const auto keyCode = KeyCodes::fromKeyEvent(event);
    // The state of the keyboard before the event, without the guess that QKeyEvent adds to it.
    const quint64 before = flagsOf(static_cast<const QInputEvent &>(event).modifiers());
    const quint64 own = ownFlag(event, keyCode);
    const quint64 flags = event.type() == QEvent::KeyRelease ? before & ~own : before | own;
    return MASShortcut(keyCode ? *keyCode : NotFound, flags);
}

std::optional<MASShortcut> MASShortcut::withData(const QByteArray &archive)
{
    constexpr qint64 lastKeyCode = 127;
    const auto object = KeyedArchive::decode(archive);
    if (!object || !object->classes.contains(u"MASShortcut"_s))
        return {};
    const auto keyCode = integer(object->fields.value(u"KeyCode"_s));
    const auto modifierFlags = integer(object->fields.value(u"ModifierFlags"_s));
    if (!keyCode || !modifierFlags || *keyCode > lastKeyCode)
        return {};
    return MASShortcut(*keyCode < 0 ? NotFound : *keyCode, *modifierFlags);
}

QByteArray MASShortcut::data() const
{
    return KeyedArchive::encode(
        u"MASShortcut"_s,
        {{u"KeyCode"_s, hasKey() ? qint64(m_keyCode) : -1}, {u"ModifierFlags"_s, qint64(m_modifierFlags)}});
}

void MASShortcut::setModifierFlags(quint64 modifierFlags)
{
    m_modifierFlags = modifierFlags & modifierMask;
}

quint32 MASShortcut::carbonFlags() const
{
    quint32 flags = 0;
    if (m_modifierFlags & CommandModifierFlag)
        flags |= CommandKey;
    if (m_modifierFlags & ShiftModifierFlag)
        flags |= ShiftKey;
    if (m_modifierFlags & OptionModifierFlag)
        flags |= OptionKey;
    if (m_modifierFlags & ControlModifierFlag)
        flags |= ControlKey;
    return flags;
}

} // namespace Orbita
