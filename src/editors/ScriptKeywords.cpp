#include "editors/ScriptKeywords.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace Orbita {

namespace {

// clang-format off
constexpr std::array<QStringView, 99> keywords{
    u"about", u"above", u"after", u"against", u"and", u"apart from", u"around", u"as", u"aside from", u"at",
    u"back", u"before", u"beginning", u"behind", u"below", u"beneath", u"beside", u"between", u"but", u"by",
    u"considering", u"contain, contains", u"continue", u"copy", u"div", u"does", u"eighth", u"else", u"end",
    u"equal, equals", u"error", u"every", u"exit", u"false", u"fifth", u"first", u"for", u"fourth", u"from",
    u"front", u"get", u"given", u"global", u"if", u"ignoring", u"in", u"instead of", u"into", u"is", u"it",
    u"its", u"last", u"local", u"me", u"middle", u"mod", u"my", u"ninth", u"not", u"of", u"on", u"onto", u"or",
    u"out of", u"over", u"prop, property", u"put", u"ref", u"reference", u"repeat", u"return", u"returning",
    u"script", u"second", u"set", u"seventh", u"since", u"sixth", u"some", u"tell", u"tenth", u"that", u"the",
    u"then", u"third", u"through, thru", u"timeout", u"times", u"to", u"transaction", u"true", u"try", u"until",
    u"use", u"where", u"while", u"whose", u"with", u"without",
};
// clang-format on

using Letters = std::array<std::vector<QStringView>, 26>;

/// The keywords by their first letter, the longest first.
Letters byFirstLetter()
{
    Letters letters;
    for (const QStringView keyword : keywords)
        letters[std::size_t(keyword.front().unicode() - u'a')].push_back(keyword);
    for (auto &sameLetter : letters)
        std::ranges::stable_sort(sameLetter, std::ranges::greater(), &QStringView::size);
    return letters;
}

} // namespace

std::span<const QStringView> scriptKeywords()
{
    return keywords;
}

qsizetype keywordLengthAtStart(QStringView text)
{
    static const Letters letters = byFirstLetter();
    const char16_t first = text.isEmpty() ? u'\0' : text.front().toCaseFolded().unicode();
    if (first < u'a' || first > u'z')
        return 0;
    const auto &candidates = letters[std::size_t(first - u'a')];
    const auto found = std::ranges::find_if(
        candidates, [text](QStringView keyword) { return text.startsWith(keyword, Qt::CaseInsensitive); });
    return found == candidates.end() ? 0 : found->size();
}

} // namespace Orbita
