#pragma once

#include "companion/script/Value.h"

#include <memory>
#include <variant>
#include <vector>

namespace Orbita {

struct CommandSyntax;
struct CommandOption;
struct Expression;
using ExpressionPtr = std::unique_ptr<const Expression>;

enum class Operator {
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    StartsWith,
    EndsWith,
    Contains,
    DoesNotContain,
    IsContainedBy,
    IsNotContainedBy,
    Coerce,
    Join,
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Power
};

struct Literal {
    Value value;
};
struct Variable {
    QString name; ///< lower case, as all names in the tree
};
struct CurrentTarget {}; ///< `it`
struct LastResult {};    ///< `result`
struct ListLiteral {
    std::vector<ExpressionPtr> items;
};
struct RecordLiteral {
    QStringList names;
    std::vector<ExpressionPtr> values;
};

/// Operators before one operand; the last two turn a text into what it names.
struct Unary {
    enum class Kind { Negate, Not, File, Application } kind;
    ExpressionPtr operand;
};

/// Operands with operators of one precedence between them. A chain of any length is one node, so that long ones nest
/// no deeper than short ones.
struct Chain {
    struct Link {
        Operator op;
        ExpressionPtr operand;
    };
    ExpressionPtr first;
    std::vector<Link> links;
};

enum class ElementKind { Item, Character, Word, Paragraph, TextItem, Text };

/// Picks items, or parts of a text: `word 2 of`, `every item of`, `text 1 thru 3 of`.
struct ElementStep {
    enum class Selection { Every, Index, Range, Middle, Some } selection;
    ElementKind kind;
    ExpressionPtr first; ///< the index of Index and Range, from 1, or from the end when it is negative
    ExpressionPtr last;  ///< the end of Range, included
};
struct PropertyStep {
    QString name;
};
struct EndStep {
    bool isBeginning; ///< a place before the first item of a list, else after the last
};
using Step = std::variant<ElementStep, PropertyStep, EndStep>;

/// Steps that lead from a value to a part of it: `last word of name of x`.
struct Path {
    ExpressionPtr base;
    std::vector<Step> steps; ///< the first is taken first
};

struct HandlerCall {
    QString name;
    std::vector<ExpressionPtr> arguments;
};

struct CommandCall {
    struct Option {
        const CommandOption *option;
        ExpressionPtr value;
    };
    const CommandSyntax *command;
    ExpressionPtr direct; ///< nothing where it has none
    std::vector<Option> options;
};

struct Expression {
    int line;
    std::variant<Literal, Variable, CurrentTarget, LastResult, ListLiteral, RecordLiteral, Unary, Chain, Path,
                 HandlerCall, CommandCall>
        node;
};

struct Statement;
using Block = std::vector<Statement>;

/// `set` and `copy`.
struct Assignment {
    ExpressionPtr target;
    ExpressionPtr value;
};
struct Evaluation {
    ExpressionPtr value;
};
struct If {
    struct Branch {
        ExpressionPtr condition;
        Block body;
    };
    std::vector<Branch> branches;
    Block otherwise;
};
struct RepeatTimes {
    ExpressionPtr count; ///< nothing: for ever
    Block body;
};
struct RepeatWhile {
    ExpressionPtr condition;
    bool endsWith; ///< the value of the condition that ends it
    Block body;
};
struct RepeatRange {
    QString variable;
    ExpressionPtr from;
    ExpressionPtr to;
    ExpressionPtr by; ///< nothing: 1
    Block body;
};
struct RepeatIn {
    QString variable;
    ExpressionPtr list;
    Block body;
};
struct ExitRepeat {};
struct Try {
    Block body;
    QString messageName; ///< empty where the handler names no variable for it
    QString numberName;
    Block onError;
};
struct Raise {
    ExpressionPtr message; ///< may be nothing
    ExpressionPtr number;  ///< may be nothing
};
struct Return {
    ExpressionPtr value; ///< may be nothing
};
struct Tell {
    ExpressionPtr target;
    Block body;
};
struct CaseBlock {
    bool considersCase;
    Block body;
};
struct Timeout {
    ExpressionPtr seconds;
    Block body;
};
struct Declaration {
    bool isGlobal;
    QStringList names;
};

struct Statement {
    int line;
    std::variant<Assignment, Evaluation, If, RepeatTimes, RepeatWhile, RepeatRange, RepeatIn, ExitRepeat, Try, Raise,
                 Return, Tell, CaseBlock, Timeout, Declaration>
        node;
};

struct Handler {
    QString name;
    QStringList parameters;
    int line;
    Block body;
};

struct ScriptTree {
    Block body;
    std::vector<Handler> handlers;
    QStringList sharedNames; ///< properties and globals of the script, which its handlers see
};

} // namespace Orbita
