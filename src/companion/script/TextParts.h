#pragma once

#include "companion/script/SyntaxTree.h"
#include "companion/script/TextRules.h"

#include <vector>

namespace Orbita {

/// Where the characters (as a reader counts them), words, paragraphs or text items of a text are.
class TextParts {
public:
    /// An Item of a text is a character. Throws a ScriptFailure for more than 4 million parts.
    TextParts(const QString &text, ElementKind kind, const TextRules &rules);

    [[nodiscard]] qsizetype count() const { return m_isUniform ? m_text.size() : qsizetype(m_spans.size()); }
    [[nodiscard]] QString at(qsizetype index) const { return between(index, index); }
    /// The text from one part to another, both and all between included.
    [[nodiscard]] QString between(qsizetype first, qsizetype last) const;

private:
    struct Span {
        qsizetype start;
        qsizetype end;
    };
    void add(qsizetype start, qsizetype end);
    void findCharacters();
    void findWords();
    void findParagraphs();
    void findTextItems(const TextRules &rules);

    QString m_text;
    bool m_isUniform = false; ///< every unit is a part: no spans are stored
    std::vector<Span> m_spans;
};

} // namespace Orbita
