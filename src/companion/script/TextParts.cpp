#include "companion/script/TextParts.h"

#include "companion/script/Limits.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace Orbita {

TextParts::TextParts(const QString &text, ElementKind kind, const TextRules &rules) : m_text(text)
{
    if (kind == ElementKind::Word)
        findWords();
    else if (kind == ElementKind::Paragraph)
        findParagraphs();
    else if (kind == ElementKind::TextItem)
        findTextItems(rules);
    else
        findCharacters();
}

QString TextParts::between(qsizetype first, qsizetype last) const
{
    if (m_isUniform)
        return m_text.mid(first, last - first + 1);
    const qsizetype start = m_spans[size_t(first)].start;
    return m_text.mid(start, m_spans[size_t(last)].end - start);
}

void TextParts::add(qsizetype start, qsizetype end)
{
    checkItemCount(qint64(m_spans.size()) + 1);
    m_spans.push_back({start, end});
}

void TextParts::findCharacters()
{
    constexpr char16_t firstCombining = 0x0300;
    m_isUniform = std::all_of(m_text.cbegin(), m_text.cend(),
                              [](QChar c) { return c < QChar(firstCombining) && c != QLatin1Char('\r'); });
    if (m_isUniform)
        return;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, m_text);
    qsizetype start = 0;
    while (finder.toNextBoundary() >= 0) {
        add(start, finder.position());
        start = finder.position();
    }
}

void TextParts::findWords()
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, m_text);
    qsizetype start = 0;
    do {
        if (finder.boundaryReasons() & QTextBoundaryFinder::EndOfItem)
            add(start, finder.position());
        start = finder.position();
    } while (finder.toNextBoundary() >= 0);
}

void TextParts::findParagraphs()
{
    qsizetype start = 0;
    for (qsizetype i = 0; i < m_text.size(); ++i) {
        const QChar c = m_text[i];
        if (c != QLatin1Char('\n') && c != QLatin1Char('\r') && c != QChar(QChar::ParagraphSeparator))
            continue;
        add(start, i);
        if (c == QLatin1Char('\r') && i + 1 < m_text.size() && m_text[i + 1] == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    add(start, m_text.size());
}

void TextParts::findTextItems(const TextRules &rules)
{
    QStringList delimiters = rules.delimiters;
    delimiters.removeAll(QString());
    if (delimiters.isEmpty())
        return findCharacters();
    // The longest first, so that "--" is not taken for two of "-".
    std::stable_sort(delimiters.begin(), delimiters.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
    qsizetype start = 0;
    for (qsizetype i = 0; i < m_text.size();) {
        const QStringView rest = QStringView(m_text).sliced(i);
        const auto found = std::find_if(delimiters.cbegin(), delimiters.cend(), [&](const QString &delimiter) {
            return rest.startsWith(delimiter, rules.caseSensitivity());
        });
        if (found == delimiters.cend()) {
            ++i;
            continue;
        }
        add(start, i);
        i += found->size();
        start = i;
    }
    add(start, m_text.size());
}

} // namespace Orbita
