#include "companion/script/CommandSyntax.h"
#include "companion/script/ExpressionParser.h"
#include "companion/script/Lexer.h"
#include "companion/script/Vocabulary.h"

#include <QLocale>

#include <cmath>

namespace Orbita {

ExpressionPtr ExpressionParser::parsePrimary()
{
    const NestingLevel level(m_depth, m_cursor);
    const Token &token = m_cursor.peek();
    switch (token.kind) {
    case TokenKind::Text:
        return make(token.line, Literal{unescaped(m_cursor.next().text)});
    case TokenKind::Integer:
    case TokenKind::Real:
        return parseNumber();
    case TokenKind::Word:
        return parseWord();
    case TokenKind::QuotedName:
        return parseName();
    default:
        break;
    }
    if (m_cursor.acceptSymbol(u"(")) {
        ExpressionPtr inner = parse();
        m_cursor.expectSymbol(u")");
        return inner;
    }
    if (token.isSymbol(u"{"))
        return parseBraces();
    m_cursor.failExpecting(QStringLiteral("an expression"));
}

ExpressionPtr ExpressionParser::parseNumber()
{
    const Token &token = m_cursor.peek();
    bool isOk = false;
    if (const qint64 integer = token.text.toLongLong(&isOk); token.kind == TokenKind::Integer && isOk) {
        m_cursor.next();
        return make(token.line, Literal{integer});
    }
    const double real = QLocale::c().toDouble(token.text, &isOk);
    if (!isOk || !std::isfinite(real))
        m_cursor.fail(QStringLiteral("The number %1 is too large.").arg(tokenDescription(token)));
    m_cursor.next();
    return make(token.line, Literal{real});
}

ExpressionPtr ExpressionParser::parseBraces()
{
    const int line = m_cursor.next().line;
    const auto [phrase, length] = propertyPhrases().find(m_cursor);
    const size_t nameLength = phrase ? length : 1;
    return m_cursor.peek().isName() && m_cursor.peek(nameLength).isSymbol(u":") ? parseRecord(line) : parseList(line);
}

ExpressionPtr ExpressionParser::parseList(int line)
{
    ListLiteral list;
    if (m_cursor.acceptSymbol(u"}"))
        return make(line, std::move(list));
    do {
        list.items.push_back(parse());
    } while (m_cursor.acceptSymbol(u","));
    if (!m_cursor.acceptSymbol(u"}"))
        m_cursor.failExpecting(QStringLiteral("\",\" or \"}\""));
    return make(line, std::move(list));
}

ExpressionPtr ExpressionParser::parseRecord(int line)
{
    constexpr qsizetype mostFields = 1000;
    RecordLiteral record;
    do {
        const QString *phrase = propertyPhrases().accept(m_cursor);
        const QString name = phrase ? *phrase : m_cursor.expectName();
        if (record.names.contains(name))
            m_cursor.fail(QStringLiteral("The record has two fields \"%1\".").arg(name.left(40)));
        if (record.names.size() >= mostFields)
            m_cursor.fail(QStringLiteral("A record has %1 fields at most.").arg(mostFields));
        m_cursor.expectSymbol(u":");
        record.names.append(name);
        record.values.push_back(parse());
    } while (m_cursor.acceptSymbol(u","));
    if (!m_cursor.acceptSymbol(u"}"))
        m_cursor.failExpecting(QStringLiteral("\",\" or \"}\""));
    return make(line, std::move(record));
}

ExpressionPtr ExpressionParser::parseWord()
{
    const int line = this->line();
    skipArticles();
    if (const CommandSyntax *const *command = commands().accept(m_cursor))
        return parseCommand(**command);
    if (ExpressionPtr special = acceptSpecialWord())
        return special;
    if (ExpressionPtr reference = acceptFileOrApplication())
        return reference;
    if (m_cursor.peek(1).isSymbol(u"("))
        return parseName();
    if (const Value *value = constants().accept(m_cursor))
        return make(line, Literal{*value});
    if (const Value *value = classNames().accept(m_cursor))
        return make(line, Literal{*value});
    return parseName();
}

/// The words that look at what the script is doing, and `count x`.
ExpressionPtr ExpressionParser::acceptSpecialWord()
{
    const int line = this->line();
    const auto partOf = [&](ExpressionPtr base, Step step) {
        std::vector<Step> steps;
        steps.push_back(std::move(step));
        return make(line, Path{std::move(base), std::move(steps)});
    };
    const auto word = [&](const char *name) { return make(line, Literal{Word{QString::fromLatin1(name)}}); };
    if (m_cursor.acceptPhrase("text item delimiters"))
        return partOf(word("applescript"), PropertyStep{QStringLiteral("text item delimiters")});
    if (m_cursor.acceptPhrase("it"))
        return make(line, CurrentTarget{});
    if (m_cursor.acceptPhrase("its"))
        return partOf(make(line, CurrentTarget{}), parsePossessive());
    if (m_cursor.acceptPhrase("result"))
        return make(line, LastResult{});
    if (m_cursor.acceptPhrase("my"))
        return m_cursor.peek(1).isSymbol(u"(") ? parseName() : partOf(word("me"), parsePossessive());
    if (m_cursor.isWord("count") && startsOperand(1)) {
        m_cursor.next();
        return partOf(parsePath(), PropertyStep{QStringLiteral("count")});
    }
    return nullptr;
}

ExpressionPtr ExpressionParser::acceptFileOrApplication()
{
    struct Row {
        const char *phrase;
        Unary::Kind kind;
    };
    constexpr Row rows[] = {{"application", Unary::Kind::Application},
                            {"app", Unary::Kind::Application},
                            {"posix file", Unary::Kind::File},
                            {"file", Unary::Kind::File},
                            {"alias", Unary::Kind::File},
                            {"folder", Unary::Kind::File}};
    const int line = this->line();
    for (const Row &row : rows) {
        const size_t length = m_cursor.phraseLength(row.phrase);
        if (length == 0 || !startsOperand(length))
            continue;
        m_cursor.skip(length);
        return make(line, Unary{row.kind, parsePrimary()});
    }
    return nullptr;
}

ExpressionPtr ExpressionParser::parseName()
{
    const Token &token = m_cursor.peek();
    if (token.kind == TokenKind::Word && isReserved(token.name))
        m_cursor.failExpecting(QStringLiteral("an expression"));
    QString name = m_cursor.expectName();
    if (m_cursor.peek().isSymbol(u"("))
        return parseCall(token.line, std::move(name));
    return make(token.line, Variable{std::move(name)});
}

ExpressionPtr ExpressionParser::parseCall(int line, QString name)
{
    HandlerCall call = {std::move(name), {}};
    m_cursor.expectSymbol(u"(");
    if (!m_cursor.acceptSymbol(u")")) {
        do {
            call.arguments.push_back(parse());
        } while (m_cursor.acceptSymbol(u","));
        if (!m_cursor.acceptSymbol(u")"))
            m_cursor.failExpecting(QStringLiteral("\",\" or \")\""));
    }
    m_cursor.acceptPhrase("of me");
    return make(line, std::move(call));
}

bool ExpressionParser::startsOperand(size_t ahead) const
{
    const Token &token = m_cursor.peek(ahead);
    switch (token.kind) {
    case TokenKind::Text:
    case TokenKind::Integer:
    case TokenKind::Real:
    case TokenKind::QuotedName:
        return true;
    case TokenKind::Word:
        return !isReserved(token.name);
    case TokenKind::Symbol:
        return token.isSymbol(u"(") || token.isSymbol(u"{");
    default:
        return false;
    }
}

} // namespace Orbita
