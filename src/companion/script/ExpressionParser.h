#pragma once

#include "companion/script/SyntaxTree.h"
#include "companion/script/TokenCursor.h"

#include <optional>

namespace Orbita {

struct CommandSyntax;
struct ElementName;

/// Counts how deep a script is nested while it is alive; throws a ScriptProblem past 200 levels.
class NestingLevel {
public:
    NestingLevel(int &depth, const TokenCursor &cursor);
    ~NestingLevel() { --m_depth; }
    Q_DISABLE_COPY_MOVE(NestingLevel)

private:
    int &m_depth;
};

/// Reads expressions, commands among them, from a cursor. What is not understood is thrown as a ScriptProblem.
class ExpressionParser {
public:
    ExpressionParser(TokenCursor &cursor, int &depth) : m_cursor(cursor), m_depth(depth) {}

    [[nodiscard]] ExpressionPtr parse();
    /// A place that a value can be stored in, or a list of such places.
    [[nodiscard]] ExpressionPtr parseTarget();

private:
    [[nodiscard]] ExpressionPtr parseChain(int level);
    [[nodiscard]] std::optional<Operator> acceptOperator(int level);
    void acceptIsRunning(ExpressionPtr &operand);
    [[nodiscard]] ExpressionPtr parseUnary();

    [[nodiscard]] ExpressionPtr parsePath();
    [[nodiscard]] std::optional<Step> acceptStep();
    [[nodiscard]] std::optional<Step> acceptProperty();
    [[nodiscard]] std::optional<ElementStep> acceptElement();
    [[nodiscard]] std::optional<ElementStep> acceptOrdinal();
    [[nodiscard]] ElementStep parseSelection(const ElementName &element);
    [[nodiscard]] ExpressionPtr parseIndex();
    [[nodiscard]] Step parsePossessive();
    void skipArticles();

    [[nodiscard]] ExpressionPtr parsePrimary();
    [[nodiscard]] ExpressionPtr parseNumber();
    [[nodiscard]] ExpressionPtr parseBraces();
    [[nodiscard]] ExpressionPtr parseList(int line);
    [[nodiscard]] ExpressionPtr parseRecord(int line);
    [[nodiscard]] ExpressionPtr parseWord();
    [[nodiscard]] ExpressionPtr acceptSpecialWord();
    [[nodiscard]] ExpressionPtr acceptFileOrApplication();
    [[nodiscard]] ExpressionPtr parseName();
    [[nodiscard]] ExpressionPtr parseCall(int line, QString name);

    [[nodiscard]] ExpressionPtr parseCommand(const CommandSyntax &command);
    [[nodiscard]] ExpressionPtr parseSubject(const CommandSyntax &command);
    bool acceptOption(CommandCall &call);
    void acceptFurtherFlags(CommandCall &call, bool value);
    [[nodiscard]] ExpressionPtr parseNameOrExpression();
    [[nodiscard]] bool startsOperand(size_t ahead = 0) const;

    template <typename Node>
    [[nodiscard]] static ExpressionPtr make(int line, Node node)
    {
        return std::make_unique<const Expression>(Expression{line, std::move(node)});
    }
    [[nodiscard]] int line() const { return m_cursor.peek().line; }

    TokenCursor &m_cursor;
    int &m_depth;
};

} // namespace Orbita
