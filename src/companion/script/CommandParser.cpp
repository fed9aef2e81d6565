#include "companion/script/CommandSyntax.h"
#include "companion/script/ExpressionParser.h"

namespace Orbita {
namespace {

using Kind = CommandOption::Kind;

ExpressionPtr truth(int line, bool value)
{
    return std::make_unique<const Expression>(Expression{line, Literal{value}});
}

} // namespace

ExpressionPtr ExpressionParser::parseCommand(const CommandSyntax &command)
{
    const int line = this->line();
    CommandCall call = {&command, parseSubject(command), {}};
    while (acceptOption(call)) {}
    return make(line, std::move(call));
}

ExpressionPtr ExpressionParser::parseSubject(const CommandSyntax &command)
{
    using Subject = CommandSyntax::Subject;
    switch (command.subject) {
    case Subject::None:
        return nullptr;
    case Subject::Required:
        return parse();
    case Subject::Name:
        return parseNameOrExpression();
    case Subject::Optional:
        break;
    }
    if (!startsOperand())
        return nullptr;
    for (const CommandOption &option : command.options) {
        if (m_cursor.phraseLength(option.phrase) > 0)
            return nullptr;
    }
    return parse();
}

bool ExpressionParser::acceptOption(CommandCall &call)
{
    for (const CommandOption &option : call.command->options) {
        const int line = this->line();
        if (m_cursor.acceptPhrase(option.phrase)) {
            call.options.push_back({&option, option.kind == Kind::Name ? parseNameOrExpression() : parse()});
            return true;
        }
        const bool value = m_cursor.isWord("with");
        if (option.kind != Kind::Flag || (!value && !m_cursor.isWord("without")))
            continue;
        if (const size_t length = m_cursor.phraseLength(option.phrase, 1)) {
            m_cursor.skip(1 + length);
            call.options.push_back({&option, truth(line, value)});
            acceptFurtherFlags(call, value);
            return true;
        }
    }
    return false;
}

/// `with a, b and c` sets each of them.
void ExpressionParser::acceptFurtherFlags(CommandCall &call, bool value)
{
    bool isFound = true;
    while (isFound && (m_cursor.isWord("and") || m_cursor.peek().isSymbol(u","))) {
        isFound = false;
        for (const CommandOption &option : call.command->options) {
            const size_t length = option.kind == Kind::Flag ? m_cursor.phraseLength(option.phrase, 1) : 0;
            if (length == 0)
                continue;
            call.options.push_back({&option, truth(line(), value)});
            m_cursor.skip(1 + length);
            isFound = true;
            break;
        }
    }
}

/// A word is taken as it stands, with "folder" or "items" behind it.
ExpressionPtr ExpressionParser::parseNameOrExpression()
{
    const int line = this->line();
    if (m_cursor.peek().kind != TokenKind::Word)
        return parse();
    if (m_cursor.isWord("the"))
        m_cursor.next();
    QString name = m_cursor.expectName();
    if (m_cursor.isWord("folder") || m_cursor.isWord("items"))
        name += QLatin1Char(' ') + m_cursor.expectName();
    return make(line, Literal{Word{name}});
}

} // namespace Orbita
