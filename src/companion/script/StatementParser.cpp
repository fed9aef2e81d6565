#include "companion/script/StatementParser.h"

#include "companion/script/CommandSyntax.h"

#include <QHash>

namespace Orbita {

StatementParser::Rule StatementParser::ruleFor(const TokenCursor &cursor)
{
    static const QHash<QString, Rule> rules = {
        {QStringLiteral("set"), &StatementParser::parseSet},
        {QStringLiteral("copy"), &StatementParser::parseCopy},
        {QStringLiteral("if"), &StatementParser::parseIf},
        {QStringLiteral("repeat"), &StatementParser::parseRepeat},
        {QStringLiteral("exit"), &StatementParser::parseExit},
        {QStringLiteral("try"), &StatementParser::parseTry},
        {QStringLiteral("error"), &StatementParser::parseRaise},
        {QStringLiteral("return"), &StatementParser::parseReturn},
        {QStringLiteral("tell"), &StatementParser::parseTell},
        {QStringLiteral("considering"), &StatementParser::parseCaseBlock},
        {QStringLiteral("ignoring"), &StatementParser::parseCaseBlock},
        {QStringLiteral("with"), &StatementParser::parseTimeout},
        {QStringLiteral("global"), &StatementParser::parseDeclaration},
        {QStringLiteral("local"), &StatementParser::parseDeclaration},
    };
    const Token &token = cursor.peek();
    if (token.kind != TokenKind::Word || commands().find(cursor).first)
        return &StatementParser::parseEvaluation;
    return rules.value(token.name, &StatementParser::parseEvaluation);
}

Statement StatementParser::parseStatement()
{
    const NestingLevel level(m_depth, m_cursor);
    refuseStrayEnd();
    const int line = m_cursor.peek().line;
    const Rule rule = ruleFor(m_cursor);
    return {line, (this->*rule)()};
}

void StatementParser::refuseStrayEnd() const
{
    const bool isBranch = m_cursor.isWord("else") || m_cursor.isWord("then");
    if (!isBranch && !m_cursor.isWord("end"))
        return;
    const Token &block = m_cursor.peek(1);
    const QString word = m_cursor.peek().name;
    if (isBranch)
        m_cursor.fail(QStringLiteral("There is no open \"if\" before \"%1\".").arg(word));
    if (block.kind == TokenKind::Word)
        m_cursor.fail(QStringLiteral("There is no open %1 before \"end\".").arg(tokenDescription(block)));
    m_cursor.fail(QStringLiteral("There is nothing before \"end\" that it could end."));
}

Block StatementParser::parseBlock()
{
    Block block;
    while (true) {
        while (m_cursor.peek().kind == TokenKind::EndOfLine)
            m_cursor.next();
        if (m_cursor.peek().kind == TokenKind::EndOfScript || m_cursor.isWord("end") || m_cursor.isWord("else")
            || m_cursor.phraseLength("on error") > 0)
            return block;
        block.push_back(parseStatement());
        m_cursor.expectEndOfLine();
    }
}

Block StatementParser::parseBody(const char *endWord)
{
    m_cursor.expectEndOfLine();
    Block block = parseBlock();
    expectEnd(endWord);
    return block;
}

void StatementParser::expectEnd(const char *word)
{
    if (!m_cursor.isWord("end"))
        m_cursor.failExpecting(QStringLiteral("\"end %1\"").arg(QLatin1String(word)));
    m_cursor.next();
    if (!m_cursor.peek().isEnd())
        m_cursor.expectPhrase(word);
}

StatementParser::Node StatementParser::parseEvaluation()
{
    m_cursor.acceptPhrase("get");
    const size_t start = m_cursor.position();
    const Token &first = m_cursor.peek();
    ExpressionPtr value = m_expressions.parse();
    const bool isLoneWord = std::holds_alternative<Variable>(value->node) && first.kind == TokenKind::Word;
    if (isLoneWord && !m_cursor.peek().isEnd()) {
        m_cursor.moveTo(start);
        failUnknownCommand();
    }
    return Evaluation{std::move(value)};
}

void StatementParser::failUnknownCommand()
{
    auto [length, next] = commands().findBeginning(m_cursor);
    if (length == 0)
        m_cursor.fail(tokenDescription(m_cursor.peek()) + QStringLiteral(" is no command that is known here."));
    QStringList before;
    for (; length > 0; --length)
        before.append(m_cursor.next().name);
    const QString last = next.takeLast();
    QString expected = next.isEmpty() ? QString() : next.join(QStringLiteral("\", \"")) + QStringLiteral("\" or \"");
    m_cursor.fail(QStringLiteral("\"%1\" was expected behind \"%2\", not %3.")
                      .arg(expected + last, before.join(QLatin1Char(' ')), tokenDescription(m_cursor.peek())));
}

StatementParser::Node StatementParser::parseSet()
{
    m_cursor.next();
    ExpressionPtr target = m_expressions.parseTarget();
    m_cursor.expectPhrase("to");
    return Assignment{std::move(target), m_expressions.parse()};
}

StatementParser::Node StatementParser::parseCopy()
{
    m_cursor.next();
    ExpressionPtr value = m_expressions.parse();
    m_cursor.expectPhrase("to");
    return Assignment{m_expressions.parseTarget(), std::move(value)};
}

StatementParser::Node StatementParser::parseRaise()
{
    m_cursor.next();
    Raise raise;
    if (!m_cursor.isWord("number") && !m_cursor.peek().isEnd())
        raise.message = m_expressions.parse();
    if (m_cursor.acceptPhrase("number"))
        raise.number = m_expressions.parse();
    return raise;
}

StatementParser::Node StatementParser::parseReturn()
{
    m_cursor.next();
    return Return{m_cursor.peek().isEnd() ? nullptr : m_expressions.parse()};
}

StatementParser::Node StatementParser::parseExit()
{
    m_cursor.next();
    m_cursor.acceptPhrase("repeat");
    if (m_loops == 0)
        m_cursor.fail(QStringLiteral("\"exit repeat\" stands outside of a repeat."));
    return ExitRepeat{};
}

StatementParser::Node StatementParser::parseDeclaration()
{
    const bool isGlobal = m_cursor.isWord("global");
    m_cursor.next();
    return Declaration{isGlobal, parseNames()};
}

QStringList StatementParser::parseNames()
{
    QStringList names;
    do {
        names.append(m_cursor.expectName());
    } while (m_cursor.acceptSymbol(u","));
    return names;
}

} // namespace Orbita
