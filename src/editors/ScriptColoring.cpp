#include "editors/ScriptColoring.h"

#include "editors/ScriptKeywords.h"

#include <algorithm>
#include <optional>

namespace Orbita {

namespace {

bool isQuote(QChar c)
{
    return c == u'"' || c == u'\'';
}

/// Reads a script character by character.
struct Reader {
    bool isInString = false;
    bool isInComment = false;

    /// The colour of \a c, the next character; nothing for what keeps the colour of a keyword or none.
    std::optional<ColorRole> read(QChar c)
    {
        if (isQuote(c)) { // first, so that an apostrophe in a comment counts
            isInString = !isInString;
            return ColorRole::String;
        }
        if (c == u'#' && !isInString) {
            isInComment = true;
            return ColorRole::Comment;
        }
        if (isInComment && c == u'\n') {
            isInComment = false;
            return std::nullopt;
        }
        if (isInComment)
            return ColorRole::Comment;
        return isInString || c.isDigit() ? std::optional(ColorRole::String) : std::nullopt;
    }
};

void append(std::vector<ColorRange> &ranges, qsizetype position, ColorRole role)
{
    if (!ranges.empty() && ranges.back().role == role && ranges.back().start + ranges.back().length == position)
        ++ranges.back().length;
    else
        ranges.push_back({position, 1, role});
}

} // namespace

std::vector<ColorRange> scriptColoring(QStringView script)
{
    std::vector<ColorRange> ranges;
    Reader reader;
    bool beginsWord = true;
    qsizetype keywordEnd = 0;
    for (qsizetype i = 0; i < script.size(); ++i) {
        const QChar c = script[i];
        if (beginsWord)
            keywordEnd = std::max(keywordEnd, i + keywordLengthAtStart(script.sliced(i)));
        if (const auto role = reader.read(c))
            append(ranges, i, *role);
        else if (i < keywordEnd)
            append(ranges, i, ColorRole::Keyword);
        beginsWord = c.isSpace();
    }
    return ranges;
}

} // namespace Orbita
