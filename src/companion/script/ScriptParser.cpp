#include "companion/script/Lexer.h"
#include "companion/script/Script.h"
#include "companion/script/StatementParser.h"

#include <algorithm>
#include <iterator>

namespace Orbita {

ScriptTree StatementParser::parseScript()
{
    ScriptTree tree;
    Block properties;
    while (m_cursor.peek().kind != TokenKind::EndOfScript) {
        if (m_cursor.peek().kind == TokenKind::EndOfLine)
            m_cursor.next();
        else
            parseTopLevel(tree, properties);
    }
    properties.insert(properties.end(), std::make_move_iterator(tree.body.begin()),
                      std::make_move_iterator(tree.body.end()));
    tree.body = std::move(properties);
    return tree;
}

void StatementParser::parseTopLevel(ScriptTree &tree, Block &properties)
{
    if (m_cursor.isWord("property"))
        return parseProperty(tree, properties);
    if (m_cursor.phraseLength("on run") > 0) {
        tree.body = parseRunHandler(tree);
        m_hasRunHandler = true;
    } else if (m_cursor.isWord("on") || m_cursor.isWord("to")) {
        parseHandler(tree);
    } else if (m_cursor.acceptPhrase("global")) {
        tree.sharedNames += parseNames();
    } else {
        if (m_hasRunHandler)
            m_cursor.fail(QStringLiteral("A statement outside of \"on run\" would never be run."));
        tree.body.push_back(parseStatement());
    }
    m_cursor.expectEndOfLine();
}

void StatementParser::parseProperty(ScriptTree &tree, Block &properties)
{
    const int line = m_cursor.next().line;
    tree.sharedNames.append(m_cursor.expectName());
    ExpressionPtr target = std::make_unique<const Expression>(Expression{line, Variable{tree.sharedNames.constLast()}});
    m_cursor.expectSymbol(u":");
    properties.push_back({line, Assignment{std::move(target), m_expressions.parse()}});
    m_cursor.expectEndOfLine();
}

Block StatementParser::parseRunHandler(const ScriptTree &tree)
{
    if (m_hasRunHandler || !tree.body.empty())
        m_cursor.fail(QStringLiteral("\"on run\" would be run twice: statements or another \"on run\" stand above."));
    m_cursor.next();
    m_cursor.next();
    return parseBody("run");
}

void StatementParser::parseHandler(ScriptTree &tree)
{
    const int line = m_cursor.next().line;
    Handler handler = {m_cursor.expectName(), parseParameters(), line, {}};
    m_cursor.expectEndOfLine();
    handler.body = parseBlock();
    if (!m_cursor.isWord("end"))
        m_cursor.failExpecting(QStringLiteral("\"end %1\"").arg(handler.name.left(40)));
    m_cursor.next();
    if (!m_cursor.peek().isEnd() && m_cursor.expectName() != handler.name)
        m_cursor.fail(QStringLiteral("The handler that ends here is called \"%1\".").arg(handler.name.left(40)));
    tree.handlers.push_back(std::move(handler));
}

QStringList StatementParser::parseParameters()
{
    m_cursor.expectSymbol(u"(");
    if (m_cursor.acceptSymbol(u")"))
        return {};
    QStringList names = parseNames();
    m_cursor.expectSymbol(u")");
    return names;
}

Result<Script, ScriptProblem> readScript(QStringView source)
{
    using Failed = Failure<ScriptProblem>;
    if (source.size() > longestScript)
        return Failed({1, ScriptProblem::syntax, QStringLiteral("The script is longer than 4 MiB.")});
    try {
        StatementParser parser(Lexer(source).tokens());
        return Script(std::make_shared<const ScriptTree>(parser.parseScript()));
    } catch (const ScriptProblem &problem) {
        return Failed(problem);
    }
}

} // namespace Orbita
