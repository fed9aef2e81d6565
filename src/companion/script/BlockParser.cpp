#include "companion/script/StatementParser.h"

namespace Orbita {

StatementParser::Node StatementParser::parseIf()
{
    m_cursor.next();
    If statement;
    ExpressionPtr condition = m_expressions.parse();
    m_cursor.expectPhrase("then");
    if (!m_cursor.peek().isEnd()) {
        statement.branches.push_back({std::move(condition), {}});
        statement.branches.back().body.push_back(parseStatement());
        return statement;
    }
    statement.branches.push_back({std::move(condition), parseBlock()});
    while (m_cursor.acceptPhrase("else if")) {
        condition = m_expressions.parse();
        m_cursor.expectPhrase("then");
        m_cursor.expectEndOfLine();
        statement.branches.push_back({std::move(condition), parseBlock()});
    }
    if (m_cursor.acceptPhrase("else")) {
        m_cursor.expectEndOfLine();
        statement.otherwise = parseBlock();
    }
    expectEnd("if");
    return statement;
}

StatementParser::Node StatementParser::parseRepeat()
{
    m_cursor.next();
    if (m_cursor.acceptPhrase("with"))
        return parseRepeatWith();
    const bool isWhile = m_cursor.acceptPhrase("while");
    if (isWhile || m_cursor.acceptPhrase("until")) {
        ExpressionPtr condition = m_expressions.parse();
        return RepeatWhile{std::move(condition), !isWhile, parseLoopBody()};
    }
    if (m_cursor.peek().isEnd())
        return RepeatTimes{nullptr, parseLoopBody()};
    ExpressionPtr count = m_expressions.parse();
    m_cursor.expectPhrase("times");
    return RepeatTimes{std::move(count), parseLoopBody()};
}

StatementParser::Node StatementParser::parseRepeatWith()
{
    const QString variable = m_cursor.expectName();
    if (m_cursor.acceptPhrase("in")) {
        ExpressionPtr list = m_expressions.parse();
        return RepeatIn{variable, std::move(list), parseLoopBody()};
    }
    if (!m_cursor.acceptPhrase("from"))
        m_cursor.failExpecting(QStringLiteral("\"from\" or \"in\""));
    RepeatRange range = {variable, m_expressions.parse(), nullptr, nullptr, {}};
    m_cursor.expectPhrase("to");
    range.to = m_expressions.parse();
    if (m_cursor.acceptPhrase("by"))
        range.by = m_expressions.parse();
    range.body = parseLoopBody();
    return range;
}

Block StatementParser::parseLoopBody()
{
    ++m_loops;
    Block body = parseBody("repeat");
    --m_loops;
    return body;
}

StatementParser::Node StatementParser::parseTry()
{
    m_cursor.next();
    m_cursor.expectEndOfLine();
    Try statement;
    statement.body = parseBlock();
    if (m_cursor.acceptPhrase("on error")) {
        if (m_cursor.peek().isName() && !m_cursor.isWord("number"))
            statement.messageName = m_cursor.expectName();
        if (m_cursor.acceptPhrase("number"))
            statement.numberName = m_cursor.expectName();
        m_cursor.expectEndOfLine();
        statement.onError = parseBlock();
    }
    expectEnd("try");
    return statement;
}

StatementParser::Node StatementParser::parseTell()
{
    m_cursor.next();
    Tell tell = {m_expressions.parse(), {}};
    if (m_cursor.acceptPhrase("to"))
        tell.body.push_back(parseStatement());
    else if (m_cursor.peek().isEnd())
        tell.body = parseBody("tell");
    else
        m_cursor.failExpecting(QStringLiteral("\"to\""));
    return tell;
}

StatementParser::Node StatementParser::parseCaseBlock()
{
    const bool considersCase = m_cursor.isWord("considering");
    m_cursor.next();
    m_cursor.expectPhrase("case");
    return CaseBlock{considersCase, parseBody(considersCase ? "considering" : "ignoring")};
}

StatementParser::Node StatementParser::parseTimeout()
{
    m_cursor.next();
    m_cursor.expectPhrase("timeout");
    m_cursor.acceptPhrase("of");
    ExpressionPtr seconds = m_expressions.parse();
    if (!m_cursor.acceptPhrase("seconds") && !m_cursor.acceptPhrase("second"))
        m_cursor.failExpecting(QStringLiteral("\"seconds\""));
    return Timeout{std::move(seconds), parseBody("timeout")};
}

} // namespace Orbita
