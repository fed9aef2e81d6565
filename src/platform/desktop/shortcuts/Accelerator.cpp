#include "platform/desktop/shortcuts/Accelerator.h"

#include "platform/KeyCombination.h"
#include "platform/desktop/shortcuts/NamedKeys.h"

#include <QKeySequence>

#include <xkbcommon/xkbcommon.h>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype maximumLength = 128; // characters; far more than all modifiers and the longest key take

/// Zero for "Release", which says when a combination acts; nothing for modifiers that hot keys lack.
std::optional<quint32> gtkModifier(QStringView name)
{
    static constexpr struct {
        QLatin1String name;
        quint32 bit;
    } modifiers[] = {
        {"shift"_L1, ShiftKey},   {"shft"_L1, ShiftKey},      {"control"_L1, ControlKey}, {"ctrl"_L1, ControlKey},
        {"ctl"_L1, ControlKey},   {"primary"_L1, ControlKey}, {"alt"_L1, OptionKey},      {"mod1"_L1, OptionKey},
        {"super"_L1, CommandKey}, {"mod4"_L1, CommandKey},    {"release"_L1, 0},
    };
    for (const auto &modifier : modifiers) {
        if (name.compare(modifier.name, Qt::CaseInsensitive) == 0)
            return modifier.bit;
    }
    return std::nullopt;
}

quint32 keysymFromGtk(QStringView name)
{
    if (name.compare("Above_Tab"_L1, Qt::CaseInsensitive) == 0)
        return keyAboveTab;
    const quint32 keysym = xkb_keysym_from_name(name.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
    return xkb_keysym_to_lower(keysym);
}

quint32 modifiersFromQt(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? ShiftKey : 0U)
        | (modifiers.testFlag(Qt::ControlModifier) ? ControlKey : 0U)
        | (modifiers.testFlag(Qt::AltModifier) ? OptionKey : 0U)
        | (modifiers.testFlag(Qt::MetaModifier) ? CommandKey : 0U);
}

} // namespace

std::optional<Accelerator> acceleratorFromGtk(QStringView name)
{
    name = name.trimmed();
    if (name.size() > maximumLength)
        return std::nullopt;
    Accelerator accelerator;
    while (name.startsWith(u'<')) {
        const qsizetype end = name.indexOf(u'>');
        const auto modifier = end < 0 ? std::nullopt : gtkModifier(name.mid(1, end - 1));
        if (!modifier)
            return std::nullopt;
        accelerator.modifiers |= *modifier;
        name = name.mid(end + 1);
    }
    accelerator.keysym = keysymFromGtk(name);
    return accelerator.keysym == XKB_KEY_NoSymbol ? std::nullopt : std::optional(accelerator);
}

std::optional<Accelerator> acceleratorFromQt(const QString &name)
{
    if (name.size() > maximumLength)
        return std::nullopt;
    const auto sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
    if (sequence.count() != 1)
        return std::nullopt;
    const QKeyCombination combination = sequence[0];
    const auto keysym = keysymFromQt(combination);
    if (!keysym)
        return std::nullopt;
    return Accelerator{*keysym, modifiersFromQt(combination.keyboardModifiers())};
}

QList<Accelerator> acceleratorsFromGtk(const QStringList &names)
{
    QList<Accelerator> accelerators;
    for (const QString &name : names) {
        if (const auto accelerator = acceleratorFromGtk(name))
            accelerators.append(*accelerator);
    }
    return accelerators;
}

} // namespace Orbita
