#pragma once

#include "companion/script/Token.h"

#include <QString>

#include <vector>

namespace Orbita {

/// A place among the tokens of a script. Expectations that are not met are thrown as a ScriptProblem.
class TokenCursor {
public:
    /// \a tokens end with an EndOfScript.
    explicit TokenCursor(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}

    /// The token that many places ahead; the EndOfScript for any past it.
    [[nodiscard]] const Token &peek(size_t ahead = 0) const;
    const Token &next();
    void skip(size_t count) { m_position += count; }
    /// How many tokens are behind.
    [[nodiscard]] size_t position() const { return m_position; }
    void moveTo(size_t position) { m_position = position; }

    [[nodiscard]] bool isWord(const char *word, size_t ahead = 0) const;
    /// How many tokens make up \a phrase, lower-case words with single blanks between, that many places ahead; 0 where
    /// it is not.
    [[nodiscard]] size_t phraseLength(const char *phrase, size_t ahead = 0) const;
    bool acceptPhrase(const char *phrase);
    bool acceptSymbol(const char16_t *symbol);

    void expectPhrase(const char *phrase);
    void expectSymbol(const char16_t *symbol);
    void expectEndOfLine();
    /// The name that stands here, in lower case.
    QString expectName();

    /// \a what was expected, not what stands here.
    [[noreturn]] void failExpecting(const QString &what) const;
    [[noreturn]] void fail(const QString &message) const;

private:
    std::vector<Token> m_tokens;
    size_t m_position = 0;
};

} // namespace Orbita
