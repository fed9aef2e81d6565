#include "editors/ScriptColoring.h"

#include "editors/ScriptKeywords.h"
#include "support/RowName.h"

#include <QString>

#include <gtest/gtest.h>

#include <random>

namespace Orbita {
namespace {

/// One letter for each character: k, s, c for its role, a full stop for black.
std::string letters(qsizetype length, const std::vector<ColorRange> &ranges)
{
    std::string result(std::size_t(length), '.');
    for (const ColorRange &range : ranges)
        result.replace(std::size_t(range.start), std::size_t(range.length), std::size_t(range.length),
                       "ksc"[int(range.role)]);
    return result;
}

/// The colours by one search through the text for each keyword, and then a walk over the characters.
std::string coloredBySearching(const QString &text)
{
    std::string colors(std::size_t(text.size()), '.');
    for (const QStringView keyword : scriptKeywords()) {
        for (qsizetype at = 0; (at = text.indexOf(keyword, at, Qt::CaseInsensitive)) >= 0; at += keyword.size()) {
            if (at == 0 || text[at - 1].isSpace())
                colors.replace(std::size_t(at), std::size_t(keyword.size()), std::size_t(keyword.size()), 'k');
        }
    }
    bool inString = false;
    bool inComment = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char &color = colors[std::size_t(i)];
        if (text[i] == u'"' || text[i] == u'\'') {
            inString = !inString;
            color = 's';
        } else if (text[i] == u'#' && !inString) {
            color = 'c';
            inComment = true;
            inString = false;
        } else if (inComment && text[i] == u'\n') {
            inComment = false;
        } else if (inComment) {
            color = 'c';
        } else if (inString) {
            color = 's';
            inComment = false;
        } else {
            if (text[i].isDigit())
                color = 's';
            inComment = inString = false;
        }
    }
    return colors;
}

struct Row {
    const char *name;
    QString text;
    const char *colors;
};

class ScriptColoring : public testing::TestWithParam<Row> {};

TEST_P(ScriptColoring, colors)
{
    const Row &row = GetParam();
    EXPECT_EQ(letters(row.text.size(), scriptColoring(row.text)), row.colors);
    EXPECT_EQ(coloredBySearching(row.text), row.colors);
}

INSTANTIATE_TEST_SUITE_P(
    Scripts, ScriptColoring,
    testing::Values(
        Row{"keywords at starts of words and digits", QStringLiteral("set x to 5 -- note"), "kkk...kk.s....kkk."},
        Row{"an apostrophe in a comment opens a string", QStringLiteral("# it's\nset"), "ccccsc.sss"},
        Row{"a string without an end goes on over lines", QStringLiteral("a \"b\nset\n5\" if"), "..sssssssss.kk"},
        Row{"no string, no keyword before a comment", QStringLiteral("if#to\nto"), "kkccc.kk"},
        Row{"a hash in a string is no comment", QStringLiteral("'#'#'to"), "ssscscc"},
        Row{"any case", QStringLiteral("Tell xtell telling TO"), "kkkk.......kkkk....kk"},
        Row{"the longest of several keywords", QStringLiteral("returning into its\tifx"), "kkkkkkkkk.kkkk.kkk.kk."},
        Row{"entries with a comma only as they stand", QStringLiteral("prop, property prop,property"),
            "kkkkkkkkkkkkkk.............."},
        Row{"wide spaces and digits of other scripts", QStringLiteral(u"\u00A0to\u2029to\u0665\u200Bto"), ".kk.kks..."},
        Row{"a hidden character and half of another", u"to\0to \xD83D to"_qs, "kk......kk"}),
    rowName<Row>);

TEST(ScriptColoring, isThatOfSearchingForEveryKeyword)
{
    const QString others = u"#'\"\n \t7x,s\u017F\u212A\u00DF\u0665\u00A0\xDC00\0"_qs;
    std::mt19937 random(20);
    const auto below = [&random](qsizetype end) { return qsizetype(random() % std::size_t(end)); };
    for (int round = 0; round < 4000; ++round) {
        QString text;
        for (qsizetype count = below(40); count > 0; --count) {
            const QStringView keyword = scriptKeywords()[std::size_t(below(99))];
            if (below(2) == 0)
                text += others[below(others.size())];
            else
                text += keyword.chopped(below(4) == 0 ? below(keyword.size()) : 0);
            text += below(3) == 0 ? QStringLiteral(" ") : QString();
        }
        text = below(4) == 0 ? text.toUpper() : text;
        ASSERT_EQ(letters(text.size(), scriptColoring(text)), coloredBySearching(text)) << qPrintable(text);
    }
}

} // namespace
} // namespace Orbita
