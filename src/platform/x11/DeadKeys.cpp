#include "platform/x11/DeadKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace Orbita {

char16_t spacingAccent(xkb_keysym_t symbol)
{
    switch (symbol) {
    case XKB_KEY_dead_grave:
        return u'`';
    case XKB_KEY_dead_acute:
        return u'\u00b4';
    case XKB_KEY_dead_circumflex:
        return u'^';
    case XKB_KEY_dead_tilde:
        return u'~';
    case XKB_KEY_dead_macron:
        return u'\u00af';
    case XKB_KEY_dead_breve:
        return u'\u02d8';
    case XKB_KEY_dead_abovedot:
        return u'\u02d9';
    case XKB_KEY_dead_diaeresis:
        return u'\u00a8';
    case XKB_KEY_dead_abovering:
        return u'\u02da';
    case XKB_KEY_dead_doubleacute:
        return u'\u02dd';
    case XKB_KEY_dead_caron:
        return u'\u02c7';
    case XKB_KEY_dead_cedilla:
        return u'\u00b8';
    case XKB_KEY_dead_ogonek:
        return u'\u02db';
    case XKB_KEY_dead_iota:
        return u'\u037a';
    case XKB_KEY_dead_voiced_sound:
        return u'\u309b';
    case XKB_KEY_dead_semivoiced_sound:
        return u'\u309c';
    case XKB_KEY_dead_abovecomma:
        return u'\u1fbf';
    case XKB_KEY_dead_abovereversedcomma:
        return u'\u1ffe';
    case XKB_KEY_dead_currency:
        return u'\u00a4';
    case XKB_KEY_dead_lowline:
        return u'_';
    case XKB_KEY_dead_stroke:
        return u'/';
    case XKB_KEY_dead_greek:
        return u'\u00b5';
    default:
        return 0;
    }
}

} // namespace Orbita
