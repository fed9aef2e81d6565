#include "companion/script/Token.h"

namespace Orbita {

QString tokenDescription(const Token &token)
{
    constexpr qsizetype shown = 40;
    switch (token.kind) {
    case TokenKind::EndOfLine:
        return QStringLiteral("the end of the line");
    case TokenKind::EndOfScript:
        return QStringLiteral("the end of the script");
    default:
        break;
    }
    QString text = token.text.first(qMin(token.text.size(), 4 * shown)).toString().simplified();
    if (text.size() > shown)
        text = text.first(shown) + QChar(0x2026);
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace Orbita
