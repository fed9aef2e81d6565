#pragma once

#include <QString>

namespace Orbita {

enum class TokenKind { Word, QuotedName, Integer, Real, Text, Symbol, EndOfLine, EndOfScript };

/// A piece of a script's source, which has to outlive it.
struct Token {
    TokenKind kind = TokenKind::EndOfScript;
    int line = 1;
    QStringView text; ///< as written; without what surrounds it for a QuotedName and a Text
    QString name{};   ///< of a Word and a QuotedName, in lower case: it is looked up many times

    [[nodiscard]] bool isWord(QLatin1String word) const { return kind == TokenKind::Word && name == word; }
    [[nodiscard]] bool isSymbol(QStringView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
    [[nodiscard]] bool isEnd() const { return kind == TokenKind::EndOfLine || kind == TokenKind::EndOfScript; }
    [[nodiscard]] bool isName() const { return kind == TokenKind::Word || kind == TokenKind::QuotedName; }
};

/// What \a token is called in a message: its text, shortened and in quotes, or what it ends.
[[nodiscard]] QString tokenDescription(const Token &token);

} // namespace Orbita
