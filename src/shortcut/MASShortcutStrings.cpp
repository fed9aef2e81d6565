#include "shortcut/MASShortcut.h"

#include "platform/KeyCodes.h"
#include "platform/KeyboardLayout.h"
#include "shortcut/FunctionKeys.h"

#include <algorithm>
#include <iterator>

namespace Orbita {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 256; ///< UTF-16 units that a key may type

struct FixedKey {
    quint64 keyCode;
    QStringView text;
};

/// Keys that are called the same in every layout, besides Space and the function keys.
constexpr FixedKey fixedKeys[] = {
    {36, u"↩"},  // Return
    {48, u"⇥"},  // Tab
    {51, u"⌫"},  // Delete
    {53, u"⎋"},  // Escape
    {65, u"."},  // keypad
    {67, u"*"},  // keypad
    {69, u"+"},  // keypad
    {71, u"⌧"},  // keypad Clear
    {75, u"/"},  // keypad
    {76, u"⌅"},  // keypad Enter
    {78, u"–"},  // keypad, with an en dash
    {81, u"="},  // keypad
    {82, u"0"},  // keypad
    {83, u"1"},  // keypad
    {84, u"2"},  // keypad
    {85, u"3"},  // keypad
    {86, u"4"},  // keypad
    {87, u"5"},  // keypad
    {88, u"6"},  // keypad
    {89, u"7"},  // keypad
    {91, u"8"},  // keypad
    {92, u"9"},  // keypad
    {114, u"?"}, // Help
    {115, u"↖"}, // Home
    {116, u"⇞"}, // Page Up
    {117, u"⌦"}, // Forward Delete
    {119, u"↘"}, // End
    {121, u"⇟"}, // Page Down
    {123, u"←"}, // Left
    {124, u"→"}, // Right
    {125, u"↓"}, // Down
    {126, u"↑"}, // Up
};

/// The number of a function key that has a name and a character of its own, which F20 has not.
std::optional<int> namedFunctionKey(quint64 keyCode)
{
    const auto number = functionKeyNumber(keyCode);
    return number == 20 ? std::nullopt : number;
}

bool isPrintable(char32_t character)
{
    return QChar::isLetterOrNumber(character) || QChar::isMark(character) || QChar::isPunct(character)
        || QChar::isSymbol(character);
}

/// \a text as a label of its key; empty when it is no letters, digits and signs.
QString label(const QString &text)
{
    if (text.size() > longestText || !text.isValidUtf16())
        return {};
    const auto characters = text.toUcs4();
    return std::all_of(characters.begin(), characters.end(), isPrintable) ? text.toUpper() : QString();
}

} // namespace

QString MASShortcut::keyCodeString(const KeyboardLayout &layout) const
{
    if (!hasKey())
        return {};
    if (m_keyCode == KeyCodes::Space)
        return tr("Space");
    if (const auto number = namedFunctionKey(m_keyCode))
        return u"F%1"_s.arg(*number);
    const auto fixed = std::find_if(std::begin(fixedKeys), std::end(fixedKeys),
                                    [this](FixedKey key) { return key.keyCode == m_keyCode; });
    if (fixed != std::end(fixedKeys))
        return fixed->text.toString();
    constexpr quint64 lastKeyCode = 127;
    return m_keyCode <= lastKeyCode ? label(layout.text(quint16(m_keyCode))) : QString();
}

QString MASShortcut::modifierFlagsString() const
{
    QString symbols;
    if (m_modifierFlags & ControlModifierFlag)
        symbols += u'⌃';
    if (m_modifierFlags & OptionModifierFlag)
        symbols += u'⌥';
    if (m_modifierFlags & ShiftModifierFlag)
        symbols += u'⇧';
    if (m_modifierFlags & CommandModifierFlag)
        symbols += u'⌘';
    return symbols;
}

QString MASShortcut::description(const KeyboardLayout &layout) const
{
    return modifierFlagsString() + keyCodeString(layout);
}

QString MASShortcut::keyCodeStringForKeyEquivalent(const KeyboardLayout &layout) const
{
    constexpr char16_t f1 = 0xf704; // the function keys follow each other
    if (m_keyCode == KeyCodes::Space)
        return u" "_s;
    if (const auto number = namedFunctionKey(m_keyCode))
        return QChar(char16_t(f1 + *number - 1));
    const QString text = keyCodeString(layout);
    return text.size() == 1 ? text.toLower() : QString();
}

} // namespace Orbita
