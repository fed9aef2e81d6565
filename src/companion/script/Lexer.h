#pragma once

#include "companion/script/Token.h"

#include <vector>

namespace Orbita {

/// Cuts a script into tokens: comments, blanks and continued line ends are gone, and an EndOfScript comes last.
///
/// Throws the ScriptProblem of the first character that belongs to no token, and of a text or comment without an end.
class Lexer {
public:
    explicit Lexer(QStringView source) : m_source(source) {}
    [[nodiscard]] std::vector<Token> tokens();

private:
    [[nodiscard]] QChar at(qsizetype ahead = 0) const; ///< a null character past the end
    [[nodiscard]] bool isAt(QLatin1String text) const { return m_source.sliced(m_position).startsWith(text); }
    void add(TokenKind kind, qsizetype length);
    void readNext();
    void endLine();
    void skipLine();
    void skipComment();
    void continueLine();
    void readText();
    void readQuotedName();
    void readNumber();
    void readWord();
    void readSymbol();

    QStringView m_source;
    qsizetype m_position = 0;
    int m_line = 1;
    std::vector<Token> m_tokens;
};

/// The text that stands for \a literal, a Text token's: its escapes replaced.
[[nodiscard]] QString unescaped(QStringView literal);

} // namespace Orbita
