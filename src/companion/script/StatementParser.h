#pragma once

#include "companion/script/ExpressionParser.h"
#include "companion/script/SyntaxTree.h"
#include "companion/script/TokenCursor.h"

namespace Orbita {

/// Reads statements, and the whole script, from tokens. What is not understood is thrown as a ScriptProblem.
class StatementParser {
public:
    explicit StatementParser(std::vector<Token> tokens) : m_cursor(std::move(tokens)), m_expressions(m_cursor, m_depth)
    {
    }
    Q_DISABLE_COPY_MOVE(StatementParser)

    [[nodiscard]] ScriptTree parseScript();

private:
    using Node = decltype(Statement::node);
    using Rule = Node (StatementParser::*)();

    void parseTopLevel(ScriptTree &tree, Block &properties);
    void parseProperty(ScriptTree &tree, Block &properties);
    void parseHandler(ScriptTree &tree);
    [[nodiscard]] Block parseRunHandler(const ScriptTree &tree);
    [[nodiscard]] QStringList parseParameters();
    [[nodiscard]] QStringList parseNames();

    /// Statements up to an "end", an "else" or an "on error".
    [[nodiscard]] Block parseBlock();
    /// The rest of a block's first line, the block, and its end.
    [[nodiscard]] Block parseBody(const char *endWord);
    void expectEnd(const char *word);
    [[nodiscard]] Statement parseStatement();
    /// Fails where the end or a further branch of a block stands that has not begun.
    void refuseStrayEnd() const;
    [[noreturn]] void failUnknownCommand();
    [[nodiscard]] static Rule ruleFor(const TokenCursor &cursor);

    [[nodiscard]] Node parseSet();
    [[nodiscard]] Node parseCopy();
    [[nodiscard]] Node parseEvaluation();
    [[nodiscard]] Node parseIf();
    [[nodiscard]] Node parseRepeat();
    [[nodiscard]] Node parseRepeatWith();
    [[nodiscard]] Block parseLoopBody();
    [[nodiscard]] Node parseExit();
    [[nodiscard]] Node parseTry();
    [[nodiscard]] Node parseRaise();
    [[nodiscard]] Node parseReturn();
    [[nodiscard]] Node parseTell();
    [[nodiscard]] Node parseCaseBlock();
    [[nodiscard]] Node parseTimeout();
    [[nodiscard]] Node parseDeclaration();

    TokenCursor m_cursor;
    int m_depth = 0;
    int m_loops = 0; ///< how many loops are round the current statement
    bool m_hasRunHandler = false;
    ExpressionParser m_expressions;
};

} // namespace Orbita
