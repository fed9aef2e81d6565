#include "companion/script/Vocabulary.h"

#include "companion/script/TokenCursor.h"

#include <QSet>

#include <cmath>

namespace Orbita {

template <typename T>
PhraseTable<T>::PhraseTable(const std::vector<Row> &rows)
{
    for (const Row &row : rows)
        m_rows[QString::fromLatin1(row.first).section(QLatin1Char(' '), 0, 0)].push_back(row);
}

template <typename T>
std::pair<const T *, size_t> PhraseTable<T>::find(const TokenCursor &cursor, size_t ahead) const
{
    std::pair<const T *, size_t> found = {nullptr, 0};
    const Token &token = cursor.peek(ahead);
    if (token.kind != TokenKind::Word)
        return found;
    const auto rows = m_rows.constFind(token.name);
    if (rows == m_rows.constEnd())
        return found;
    for (const Row &row : *rows) {
        const size_t length = cursor.phraseLength(row.first, ahead);
        if (length > found.second)
            found = {&row.second, length};
    }
    return found;
}

template <typename T>
typename PhraseTable<T>::Beginning PhraseTable<T>::findBeginning(const TokenCursor &cursor) const
{
    Beginning longest;
    for (const Row &row : m_rows.value(cursor.peek().name)) {
        const QStringList words = QString::fromLatin1(row.first).split(QLatin1Char(' '));
        size_t length = 0;
        while (length < size_t(words.size()) && cursor.isWord(words[qsizetype(length)].toLatin1(), length))
            ++length;
        if (length == size_t(words.size()) || length < longest.length)
            continue;
        if (length > longest.length)
            longest = {length};
        if (const QString &next = words[qsizetype(length)]; !longest.nextWords.contains(next))
            longest.nextWords.append(next);
    }
    return longest;
}

template <typename T>
const T *PhraseTable<T>::accept(TokenCursor &cursor) const
{
    const auto [meaning, length] = find(cursor);
    cursor.skip(length);
    return meaning;
}

template class PhraseTable<Operator>;
template class PhraseTable<Value>;
template class PhraseTable<ElementName>;
template class PhraseTable<qint64>;
template class PhraseTable<QString>;
template class PhraseTable<const CommandSyntax *>;

const PhraseTable<Operator> &wordOperators()
{
    static const PhraseTable<Operator> table = {
        {"or", Operator::Or},
        {"and", Operator::And},
        {"is", Operator::Equal},
        {"equal", Operator::Equal},
        {"equals", Operator::Equal},
        {"equal to", Operator::Equal},
        {"is equal to", Operator::Equal},
        {"is not", Operator::NotEqual},
        {"is not equal to", Operator::NotEqual},
        {"does not equal", Operator::NotEqual},
        {"is less than", Operator::Less},
        {"less than", Operator::Less},
        {"comes before", Operator::Less},
        {"is not greater than or equal to", Operator::Less},
        {"is less than or equal to", Operator::LessOrEqual},
        {"less than or equal to", Operator::LessOrEqual},
        {"is not greater than", Operator::LessOrEqual},
        {"does not come after", Operator::LessOrEqual},
        {"is greater than", Operator::Greater},
        {"greater than", Operator::Greater},
        {"comes after", Operator::Greater},
        {"is not less than or equal to", Operator::Greater},
        {"is greater than or equal to", Operator::GreaterOrEqual},
        {"greater than or equal to", Operator::GreaterOrEqual},
        {"is not less than", Operator::GreaterOrEqual},
        {"does not come before", Operator::GreaterOrEqual},
        {"starts with", Operator::StartsWith},
        {"start with", Operator::StartsWith},
        {"begins with", Operator::StartsWith},
        {"ends with", Operator::EndsWith},
        {"end with", Operator::EndsWith},
        {"contains", Operator::Contains},
        {"contain", Operator::Contains},
        {"does not contain", Operator::DoesNotContain},
        {"is in", Operator::IsContainedBy},
        {"is contained by", Operator::IsContainedBy},
        {"is not in", Operator::IsNotContainedBy},
        {"is not contained by", Operator::IsNotContainedBy},
        {"as", Operator::Coerce},
        {"div", Operator::IntegerDivide},
        {"mod", Operator::Modulo},
    };
    return table;
}

std::optional<Operator> symbolOperator(QStringView symbol)
{
    static const QHash<QString, Operator> table = {
        {QStringLiteral("="), Operator::Equal},
        {QStringLiteral("/="), Operator::NotEqual},
        {QStringLiteral("\u2260"), Operator::NotEqual},
        {QStringLiteral("<"), Operator::Less},
        {QStringLiteral("<="), Operator::LessOrEqual},
        {QStringLiteral("\u2264"), Operator::LessOrEqual},
        {QStringLiteral(">"), Operator::Greater},
        {QStringLiteral(">="), Operator::GreaterOrEqual},
        {QStringLiteral("\u2265"), Operator::GreaterOrEqual},
        {QStringLiteral("&"), Operator::Join},
        {QStringLiteral("+"), Operator::Add},
        {QStringLiteral("-"), Operator::Subtract},
        {QStringLiteral("*"), Operator::Multiply},
        {QStringLiteral("\u00D7"), Operator::Multiply},
        {QStringLiteral("/"), Operator::Divide},
        {QStringLiteral("\u00F7"), Operator::Divide},
        {QStringLiteral("^"), Operator::Power},
    };
    const auto found = table.constFind(symbol.toString());
    return found == table.constEnd() ? std::nullopt : std::optional(*found);
}

int precedence(Operator op)
{
    switch (op) {
    case Operator::Or:
        return 0;
    case Operator::And:
        return 1;
    case Operator::Coerce:
        return 3;
    case Operator::Join:
        return 4;
    case Operator::Add:
    case Operator::Subtract:
        return 5;
    case Operator::Multiply:
    case Operator::Divide:
    case Operator::IntegerDivide:
    case Operator::Modulo:
        return 6;
    case Operator::Power:
        return tightestPrecedence;
    default:
        return comparisonPrecedence;
    }
}

const PhraseTable<Value> &classNames()
{
    static const auto word = [](const char *name) { return Value(Word{QString::fromLatin1(name)}); };
    static const PhraseTable<Value> table = {
        {"text", word("text")},       {"string", word("text")},   {"unicode text", word("text")},
        {"integer", word("integer")}, {"real", word("real")},     {"number", word("number")},
        {"list", word("list")},       {"record", word("record")}, {"boolean", word("boolean")},
        {"date", word("date")},       {"alias", word("file")},    {"file", word("file")},
        {"posix file", word("file")},
    };
    return table;
}

const PhraseTable<Value> &constants()
{
    static const auto word = [](const char *name) { return Value(Word{QString::fromLatin1(name)}); };
    static const auto text = [](const char *characters) { return Value(QString::fromLatin1(characters)); };
    static const PhraseTable<Value> table = {
        {"true", true},
        {"false", false},
        {"missing value", MissingValue()},
        {"return", text("\r")},
        {"linefeed", text("\n")},
        {"tab", text("\t")},
        {"space", text(" ")},
        {"quote", text("\"")},
        {"pi", M_PI},
        {"me", word("me")},
        {"applescript", word("applescript")},
        {"monday", word("monday")},
        {"tuesday", word("tuesday")},
        {"wednesday", word("wednesday")},
        {"thursday", word("thursday")},
        {"friday", word("friday")},
        {"saturday", word("saturday")},
        {"sunday", word("sunday")},
        {"january", word("january")},
        {"february", word("february")},
        {"march", word("march")},
        {"april", word("april")},
        {"may", word("may")},
        {"june", word("june")},
        {"july", word("july")},
        {"august", word("august")},
        {"september", word("september")},
        {"october", word("october")},
        {"november", word("november")},
        {"december", word("december")},
    };
    return table;
}

const PhraseTable<ElementName> &elementNames()
{
    static const PhraseTable<ElementName> table = {
        {"item", {ElementKind::Item, false}},           {"items", {ElementKind::Item, true}},
        {"character", {ElementKind::Character, false}}, {"characters", {ElementKind::Character, true}},
        {"word", {ElementKind::Word, false}},           {"words", {ElementKind::Word, true}},
        {"paragraph", {ElementKind::Paragraph, false}}, {"paragraphs", {ElementKind::Paragraph, true}},
        {"text item", {ElementKind::TextItem, false}},  {"text items", {ElementKind::TextItem, true}},
        {"text", {ElementKind::Text, false}},
    };
    return table;
}

const PhraseTable<qint64> &ordinals()
{
    static const PhraseTable<qint64> table = {
        {"first", 1},  {"second", 2}, {"third", 3},  {"fourth", 4}, {"fifth", 5}, {"sixth", 6}, {"seventh", 7},
        {"eighth", 8}, {"ninth", 9},  {"tenth", 10}, {"last", -1},  {"back", -1}, {"front", 1},
    };
    return table;
}

const PhraseTable<QString> &propertyPhrases()
{
    static const auto row = [](const char *name) { return PhraseTable<QString>::Row{name, QString::fromLatin1(name)}; };
    static const PhraseTable<QString> table = {
        row("text item delimiters"), row("button returned"), row("text returned"), row("gave up"),
        row("quoted form"),          row("posix path"),      row("time string"),   row("date string"),
    };
    return table;
}

bool isReserved(const QString &word)
{
    static const QSet<QString> words = [] {
        QSet<QString> set;
        for (const char *name :
             {"and",      "as",       "at",    "begins",  "by",       "comes",   "considering", "contain",
              "contains", "copy",     "div",   "does",    "else",     "end",     "ends",        "equal",
              "equals",   "error",    "exit",  "from",    "get",      "given",   "global",      "greater",
              "if",       "ignoring", "in",    "into",    "is",       "less",    "local",       "mod",
              "not",      "of",       "on",    "or",      "property", "repeat",  "return",      "set",
              "starts",   "tell",     "then",  "through", "thru",     "timeout", "times",       "to",
              "try",      "until",    "where", "while",   "whose",    "with",    "without"})
            set.insert(QString::fromLatin1(name));
        return set;
    }();
    return words.contains(word);
}

} // namespace Orbita
