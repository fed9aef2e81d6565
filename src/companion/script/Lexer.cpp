#include "companion/script/Lexer.h"

#include "companion/script/ScriptProblem.h"

#include <QString>

namespace Orbita {
namespace {

constexpr QChar continuation(0x00AC);
constexpr QChar curlyApostrophe(0x2019);

[[noreturn]] void refuse(int line, const QString &message)
{
    throw ScriptProblem{line, ScriptProblem::syntax, message};
}

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

bool isBlank(QChar c)
{
    return (c.isSpace() && !isLineBreak(c)) || c == QChar::ByteOrderMark;
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

bool startsWord(QChar c)
{
    return c.isLetter() || c == u'_';
}

QString characterDescription(QChar c)
{
    return c.isPrint() ? QLatin1Char('"') + QString(c) + QLatin1Char('"')
                       : QStringLiteral("U+%1").arg(c.unicode(), 4, 16, QLatin1Char('0')).toUpper();
}

} // namespace

std::vector<Token> Lexer::tokens()
{
    while (m_position < m_source.size())
        readNext();
    add(TokenKind::EndOfScript, 0);
    return std::move(m_tokens);
}

QChar Lexer::at(qsizetype ahead) const
{
    const qsizetype index = m_position + ahead;
    return index < m_source.size() ? m_source[index] : QChar();
}

void Lexer::add(TokenKind kind, qsizetype length)
{
    m_tokens.push_back({kind, m_line, m_source.sliced(m_position, length)});
    m_position += length;
}

void Lexer::readNext()
{
    const QChar c = at();
    if (isBlank(c))
        ++m_position;
    else if (isLineBreak(c))
        endLine();
    else if (isAt(QLatin1String("--")) || c == u'#')
        skipLine();
    else if (isAt(QLatin1String("(*")))
        skipComment();
    else if (c == continuation || c == u'\\')
        continueLine();
    else if (c == u'"')
        readText();
    else if (c == u'|')
        readQuotedName();
    else if (isDigit(c) || (c == u'.' && isDigit(at(1))))
        readNumber();
    else if (startsWord(c))
        readWord();
    else
        readSymbol();
}

void Lexer::endLine()
{
    if (!m_tokens.empty() && m_tokens.back().kind != TokenKind::EndOfLine)
        m_tokens.push_back({TokenKind::EndOfLine, m_line, {}});
    m_position += isAt(QLatin1String("\r\n")) ? 2 : 1;
    ++m_line;
}

void Lexer::skipLine()
{
    while (m_position < m_source.size() && !isLineBreak(at()))
        ++m_position;
}

void Lexer::skipComment()
{
    const int firstLine = m_line;
    int depth = 0;
    do {
        if (m_position >= m_source.size())
            refuse(firstLine, QStringLiteral("This comment has no end: \"*)\" was expected."));
        const bool opens = isAt(QLatin1String("(*"));
        const bool closes = isAt(QLatin1String("*)"));
        depth += int(opens) - int(closes);
        if (isLineBreak(at()) && !isAt(QLatin1String("\r\n")))
            ++m_line;
        m_position += opens || closes ? 2 : 1;
    } while (depth > 0);
}

void Lexer::continueLine()
{
    const QString mark = characterDescription(at());
    ++m_position;
    while (isBlank(at()))
        ++m_position;
    if (isAt(QLatin1String("--")))
        skipLine();
    if (m_position < m_source.size() && !isLineBreak(at()))
        refuse(m_line, mark + QStringLiteral(" has to be the last character of its line."));
    if (m_position < m_source.size()) {
        m_position += isAt(QLatin1String("\r\n")) ? 2 : 1;
        ++m_line;
    }
}

void Lexer::readText()
{
    const int firstLine = m_line;
    const qsizetype start = ++m_position;
    while (at() != u'"' || m_position >= m_source.size()) {
        if (m_position >= m_source.size())
            refuse(firstLine, QStringLiteral("This text has no end: a closing \" was expected."));
        if (at() == u'\\') {
            ++m_position;
            if (!QStringView(u"\"\\ntr").contains(at()) || at().isNull())
                refuse(m_line, QStringLiteral("\"\\\" may be followed by \", \\, n, r or t only."));
        } else if (isLineBreak(at()) && !isAt(QLatin1String("\r\n"))) {
            ++m_line;
        }
        ++m_position;
    }
    m_tokens.push_back({TokenKind::Text, firstLine, m_source.sliced(start, m_position - start)});
    ++m_position;
}

void Lexer::readQuotedName()
{
    const qsizetype start = ++m_position;
    while (at() != u'|') {
        if (m_position >= m_source.size() || isLineBreak(at()))
            refuse(m_line, QStringLiteral("This name has no end: a closing \"|\" was expected."));
        ++m_position;
    }
    if (m_position == start)
        refuse(m_line, QStringLiteral("A name was expected between \"|\" and \"|\"."));
    const QStringView name = m_source.sliced(start, m_position - start);
    m_tokens.push_back({TokenKind::QuotedName, m_line, name, name.toString().toLower()});
    ++m_position;
}

void Lexer::readNumber()
{
    qsizetype length = 0;
    const auto skipDigits = [&] {
        while (isDigit(at(length)))
            ++length;
    };
    skipDigits();
    TokenKind kind = TokenKind::Integer;
    if (at(length) == u'.') {
        kind = TokenKind::Real;
        ++length;
        skipDigits();
    }
    if (at(length).toLower() == u'e') {
        const qsizetype sign = at(length + 1) == u'+' || at(length + 1) == u'-' ? 1 : 0;
        if (isDigit(at(length + 1 + sign))) {
            kind = TokenKind::Real;
            length += 1 + sign;
            skipDigits();
        }
    }
    add(kind, length);
}

void Lexer::readWord()
{
    qsizetype length = 1;
    while (isWordCharacter(at(length)))
        ++length;
    add(TokenKind::Word, length);
    m_tokens.back().name = m_tokens.back().text.toString().toLower();
}

void Lexer::readSymbol()
{
    for (const QLatin1String symbol : {QLatin1String("<="), QLatin1String(">="), QLatin1String("/=")}) {
        if (isAt(symbol))
            return add(TokenKind::Symbol, 2);
    }
    const bool isApostrophe = at() == u'\'' || at() == curlyApostrophe;
    if (isApostrophe && at(1).toLower() == u's' && !isWordCharacter(at(2)))
        return add(TokenKind::Symbol, 2);
    if (!QStringView(u"+-*/^&=<>(){},:\u2264\u2265\u2260\u00F7\u00D7").contains(at()) || at().isNull())
        refuse(m_line, QStringLiteral("%1 does not belong in a script.").arg(characterDescription(at())));
    add(TokenKind::Symbol, 1);
}

QString unescaped(QStringView literal)
{
    QString text;
    text.reserve(literal.size());
    for (qsizetype i = 0; i < literal.size(); ++i) {
        QChar c = literal[i];
        if (c == u'\\') {
            c = literal[++i];
            c = c == u'n' ? u'\n' : c == u'r' ? u'\r' : c == u't' ? u'\t' : c;
        }
        text += c;
    }
    return text;
}

} // namespace Orbita
