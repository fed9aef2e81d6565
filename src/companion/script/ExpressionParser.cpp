#include "companion/script/ExpressionParser.h"

#include "companion/script/CommandSyntax.h"
#include "companion/script/Lexer.h"
#include "companion/script/Vocabulary.h"

#include <algorithm>

namespace Orbita {
namespace {

constexpr int deepestNesting = 200;

bool isPlace(const Step &step)
{
    const auto *element = std::get_if<ElementStep>(&step);
    return !element || (element->kind == ElementKind::Item && element->selection == ElementStep::Selection::Index);
}

bool isTarget(const Expression &expression)
{
    if (const auto *list = std::get_if<ListLiteral>(&expression.node))
        return std::all_of(list->items.begin(), list->items.end(), [](const auto &item) { return isTarget(*item); });
    if (const auto *path = std::get_if<Path>(&expression.node)) {
        const auto &base = path->base->node;
        const bool isStored = std::holds_alternative<Variable>(base) || std::holds_alternative<Literal>(base);
        return isStored && std::all_of(path->steps.begin(), path->steps.end(), isPlace);
    }
    return std::holds_alternative<Variable>(expression.node);
}

} // namespace

NestingLevel::NestingLevel(int &depth, const TokenCursor &cursor) : m_depth(depth)
{
    if (depth >= deepestNesting)
        cursor.fail(QStringLiteral("The script is nested more than %1 levels deep.").arg(deepestNesting));
    ++depth;
}

ExpressionPtr ExpressionParser::parse()
{
    const NestingLevel level(m_depth, m_cursor);
    return parseChain(0);
}

ExpressionPtr ExpressionParser::parseTarget()
{
    ExpressionPtr target = parsePath();
    if (!isTarget(*target))
        m_cursor.fail(QStringLiteral("A variable, or an item or property of one, was expected before %1.")
                          .arg(tokenDescription(m_cursor.peek())));
    return target;
}

ExpressionPtr ExpressionParser::parseChain(int level)
{
    if (level > tightestPrecedence)
        return parseUnary();
    const int line = this->line();
    if (level == comparisonPrecedence && m_cursor.acceptPhrase("not")) {
        const NestingLevel nesting(m_depth, m_cursor);
        return make(line, Unary{Unary::Kind::Not, parseChain(level)});
    }
    Chain chain = {parseChain(level + 1), {}};
    if (level == comparisonPrecedence)
        acceptIsRunning(chain.first);
    while (const auto op = acceptOperator(level))
        chain.links.push_back({*op, parseChain(level + 1)});
    return chain.links.empty() ? std::move(chain.first) : make(line, std::move(chain));
}

std::optional<Operator> ExpressionParser::acceptOperator(int level)
{
    const Token &token = m_cursor.peek();
    if (token.kind == TokenKind::Symbol) {
        const auto op = symbolOperator(token.text);
        if (!op || precedence(*op) != level)
            return {};
        m_cursor.next();
        return op;
    }
    const auto [op, length] = wordOperators().find(m_cursor);
    if (!op || precedence(*op) != level)
        return {};
    // "as critical" is no conversion, but belongs to the command that it follows.
    if (*op == Operator::Coerce && !classNames().find(m_cursor, length).first)
        return {};
    m_cursor.skip(length);
    return *op;
}

void ExpressionParser::acceptIsRunning(ExpressionPtr &operand)
{
    const int line = this->line();
    const bool isNegated = m_cursor.acceptPhrase("is not running");
    if (!isNegated && !m_cursor.acceptPhrase("is running"))
        return;
    std::vector<Step> steps;
    steps.push_back(PropertyStep{QStringLiteral("running")});
    operand = make(line, Path{std::move(operand), std::move(steps)});
    if (isNegated)
        operand = make(line, Unary{Unary::Kind::Not, std::move(operand)});
}

ExpressionPtr ExpressionParser::parseUnary()
{
    const int line = this->line();
    const bool isNegated = m_cursor.acceptSymbol(u"-");
    if (!isNegated && !m_cursor.acceptSymbol(u"+"))
        return parsePath();
    const NestingLevel level(m_depth, m_cursor);
    ExpressionPtr operand = parseUnary();
    return isNegated ? make(line, Unary{Unary::Kind::Negate, std::move(operand)}) : std::move(operand);
}

} // namespace Orbita
