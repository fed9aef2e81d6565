#include "companion/script/TokenCursor.h"

#include "companion/script/ScriptProblem.h"

#include <cstring>

namespace Orbita {
namespace {

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

const Token &TokenCursor::peek(size_t ahead) const
{
    return m_tokens[std::min(m_position + ahead, m_tokens.size() - 1)];
}

const Token &TokenCursor::next()
{
    const Token &token = peek();
    m_position = std::min(m_position + 1, m_tokens.size() - 1);
    return token;
}

bool TokenCursor::isWord(const char *word, size_t ahead) const
{
    return peek(ahead).isWord(QLatin1String(word));
}

size_t TokenCursor::phraseLength(const char *phrase, size_t ahead) const
{
    size_t length = 0;
    while (true) {
        const char *const blank = std::strchr(phrase, ' ');
        const QLatin1String word = blank ? QLatin1String(phrase, blank) : QLatin1String(phrase);
        if (!peek(ahead + length).isWord(word))
            return 0;
        ++length;
        if (!blank)
            return length;
        phrase = blank + 1;
    }
}

bool TokenCursor::acceptPhrase(const char *phrase)
{
    const size_t length = phraseLength(phrase);
    skip(length);
    return length > 0;
}

bool TokenCursor::acceptSymbol(const char16_t *symbol)
{
    if (!peek().isSymbol(symbol))
        return false;
    next();
    return true;
}

void TokenCursor::expectPhrase(const char *phrase)
{
    if (!acceptPhrase(phrase))
        failExpecting(quoted(QString::fromLatin1(phrase)));
}

void TokenCursor::expectSymbol(const char16_t *symbol)
{
    if (!acceptSymbol(symbol))
        failExpecting(quoted(QString::fromUtf16(symbol)));
}

void TokenCursor::expectEndOfLine()
{
    if (!peek().isEnd())
        failExpecting(QStringLiteral("the end of the line"));
    next();
}

QString TokenCursor::expectName()
{
    if (!peek().isName())
        failExpecting(QStringLiteral("a name"));
    return next().name;
}

void TokenCursor::failExpecting(const QString &what) const
{
    QString expectation = what;
    expectation[0] = expectation[0].toUpper();
    fail(expectation + QStringLiteral(" was expected, not ") + tokenDescription(peek()) + QLatin1Char('.'));
}

void TokenCursor::fail(const QString &message) const
{
    throw ScriptProblem{peek().line, ScriptProblem::syntax, message};
}

} // namespace Orbita
