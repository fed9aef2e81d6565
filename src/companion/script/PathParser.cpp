#include "companion/script/CommandSyntax.h"
#include "companion/script/ExpressionParser.h"
#include "companion/script/Vocabulary.h"

#include <algorithm>
#include <iterator>

namespace Orbita {
namespace {

using Selection = ElementStep::Selection;

ExpressionPtr index(int line, qint64 value)
{
    return std::make_unique<const Expression>(Expression{line, Literal{value}});
}

bool isOf(const Token &token)
{
    return token.isWord(QLatin1String("of")) || token.isWord(QLatin1String("in"));
}

} // namespace

ExpressionPtr ExpressionParser::parsePath()
{
    const int line = this->line();
    std::vector<Step> steps;
    skipArticles();
    while (auto step = acceptStep()) {
        steps.push_back(std::move(*step));
        skipArticles();
    }
    ExpressionPtr base = parsePrimary();
    std::vector<Step> possessives;
    while (m_cursor.acceptSymbol(u"'s") || m_cursor.acceptSymbol(u"\u2019s"))
        possessives.push_back(parsePossessive());
    std::move(steps.rbegin(), steps.rend(), std::back_inserter(possessives));
    return possessives.empty() ? std::move(base) : make(line, Path{std::move(base), std::move(possessives)});
}

void ExpressionParser::skipArticles()
{
    while (m_cursor.isWord("the") && !commands().find(m_cursor).first)
        m_cursor.next();
}

/// A step with the "of" behind it.
std::optional<Step> ExpressionParser::acceptStep()
{
    if (m_cursor.acceptPhrase("beginning of"))
        return EndStep{true};
    if (m_cursor.acceptPhrase("end of"))
        return EndStep{false};
    if (auto property = acceptProperty())
        return property;
    auto element = acceptElement();
    if (!element)
        return {};
    if (!isOf(m_cursor.peek()))
        m_cursor.failExpecting(QStringLiteral("\"of\""));
    m_cursor.next();
    return std::move(*element);
}

std::optional<Step> ExpressionParser::acceptProperty()
{
    const auto [phrase, length] = propertyPhrases().find(m_cursor);
    if (phrase && isOf(m_cursor.peek(length))) {
        m_cursor.skip(length + 1);
        return PropertyStep{*phrase};
    }
    const Token &token = m_cursor.peek();
    if (!token.isName() || !m_cursor.isWord("of", 1) || commands().find(m_cursor).first)
        return {};
    const auto [element, elementLength] = elementNames().find(m_cursor);
    const QString name = token.name;
    if ((element && element->isPlural) || (token.kind == TokenKind::Word && isReserved(name)))
        return {};
    m_cursor.skip(2);
    return PropertyStep{name};
}

std::optional<ElementStep> ExpressionParser::acceptElement()
{
    if (auto ordinal = acceptOrdinal())
        return ordinal;
    const auto [element, length] = elementNames().find(m_cursor);
    if (!element || propertyPhrases().find(m_cursor).first) // "text item delimiters" is no text item
        return {};
    if (element->isPlural && isOf(m_cursor.peek(length))) {
        m_cursor.skip(length);
        return ElementStep{Selection::Every, element->kind, nullptr, nullptr};
    }
    if (!startsOperand(length) && !m_cursor.peek(length).isSymbol(u"-"))
        return {};
    m_cursor.skip(length);
    return parseSelection(*element);
}

/// `first word`, `3rd item`, `last character`, `some item`, `every paragraph`.
std::optional<ElementStep> ExpressionParser::acceptOrdinal()
{
    const Token &token = m_cursor.peek();
    const auto [ordinal, length] = ordinals().find(m_cursor);
    const bool isNumbered = token.kind == TokenKind::Integer
        && (m_cursor.isWord("st", 1) || m_cursor.isWord("nd", 1) || m_cursor.isWord("rd", 1)
            || m_cursor.isWord("th", 1));
    const bool isEvery = m_cursor.isWord("every");
    const bool isSome = m_cursor.isWord("some");
    const bool isMiddle = m_cursor.isWord("middle");
    if (!ordinal && !isNumbered && !isEvery && !isSome && !isMiddle)
        return {};
    const size_t ordinalLength = isNumbered ? 2 : 1;
    const auto [element, elementLength] = elementNames().find(m_cursor, ordinalLength);
    if (!element)
        return {};
    const int line = this->line();
    const qint64 number = ordinal ? *ordinal : token.text.toLongLong();
    m_cursor.skip(ordinalLength + elementLength);
    if (ordinal || isNumbered)
        return ElementStep{Selection::Index, element->kind, index(line, number), nullptr};
    const Selection selection = isEvery ? Selection::Every : isSome ? Selection::Some : Selection::Middle;
    return ElementStep{selection, element->kind, nullptr, nullptr};
}

ElementStep ExpressionParser::parseSelection(const ElementName &element)
{
    ElementStep step = {Selection::Index, element.kind, parseIndex(), nullptr};
    if (m_cursor.acceptPhrase("thru") || m_cursor.acceptPhrase("through")) {
        step.selection = Selection::Range;
        step.last = parseIndex();
    } else if (element.isPlural || element.kind == ElementKind::Text) {
        m_cursor.failExpecting(QStringLiteral("\"thru\""));
    }
    return step;
}

ExpressionPtr ExpressionParser::parseIndex()
{
    const NestingLevel level(m_depth, m_cursor);
    const int line = this->line();
    if (m_cursor.acceptSymbol(u"-"))
        return make(line, Unary{Unary::Kind::Negate, parsePrimary()});
    return parsePrimary();
}

Step ExpressionParser::parsePossessive()
{
    if (const QString *phrase = propertyPhrases().accept(m_cursor))
        return PropertyStep{*phrase};
    if (auto element = acceptElement())
        return std::move(*element);
    if (const auto [element, length] = elementNames().find(m_cursor); element && element->isPlural) {
        m_cursor.skip(length);
        return ElementStep{Selection::Every, element->kind, nullptr, nullptr};
    }
    return PropertyStep{m_cursor.expectName()};
}

} // namespace Orbita
