#pragma once

#include "companion/script/SyntaxTree.h"

#include <QHash>

#include <optional>
#include <utility>
#include <vector>

namespace Orbita {

class TokenCursor;

/// Finds which of some phrases stands at a cursor, the longest where several do.
template <typename T>
class PhraseTable {
public:
    using Row = std::pair<const char *, T>;
    PhraseTable(std::initializer_list<Row> rows) : PhraseTable(std::vector<Row>(rows)) {}
    explicit PhraseTable(const std::vector<Row> &rows);

    /// The meaning of the phrase at \a cursor, which is moved behind it. Nothing, and no move, where there is none.
    const T *accept(TokenCursor &cursor) const;
    /// The same without a move, \a ahead tokens further on: the meaning, and the phrase's length in tokens.
    [[nodiscard]] std::pair<const T *, size_t> find(const TokenCursor &cursor, size_t ahead = 0) const;

    /// How far the phrases go that only begin at \a cursor, and the words that one of them would go on with.
    struct Beginning {
        size_t length = 0; ///< in tokens; 0 where no phrase begins
        QStringList nextWords{};
    };
    [[nodiscard]] Beginning findBeginning(const TokenCursor &cursor) const;

private:
    QHash<QString, std::vector<Row>> m_rows; ///< by the first word
};

/// Binary operators in words, by their spelling.
[[nodiscard]] const PhraseTable<Operator> &wordOperators();
/// The binary operator that a symbol stands for.
[[nodiscard]] std::optional<Operator> symbolOperator(QStringView symbol);

/// How tightly an operator binds: 0 for `or`, the loosest, to tightestPrecedence.
[[nodiscard]] int precedence(Operator op);
inline constexpr int comparisonPrecedence = 2;
inline constexpr int tightestPrecedence = 7;

/// Words that stand for a value: true, tab, text, Monday, ...
[[nodiscard]] const PhraseTable<Value> &constants();
/// Names of classes, which may follow `as`.
[[nodiscard]] const PhraseTable<Value> &classNames();

struct ElementName {
    ElementKind kind;
    bool isPlural;
};
[[nodiscard]] const PhraseTable<ElementName> &elementNames();
/// The index that "first", "second", ..., "last" stand for.
[[nodiscard]] const PhraseTable<qint64> &ordinals();
/// Properties whose names have several words.
[[nodiscard]] const PhraseTable<QString> &propertyPhrases();

/// Whether \a word, in lower case, joins the parts of statements and so cannot be the name of a variable.
[[nodiscard]] bool isReserved(const QString &word);

} // namespace Orbita
