#include "platform/XmlMarkup.h"

namespace Orbita {

namespace {

constexpr qsizetype longestDeclaration = 1000; // bytes

/// Whether the tag behind whose '<' \a rest begins has at most \a most attributes.
bool hasFewAttributes(QByteArrayView rest, int most)
{
    char quote = 0;
    int attributes = 0;
    // A tag ends at a '>' outside quotes, and cannot hold a '<' even inside them.
    for (const char c : rest) {
        if (c == '<')
            break;
        if (quote != 0)
            quote = c == quote ? char(0) : quote;
        else if (c == '>')
            break;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '=' && ++attributes > most)
            return false;
    }
    return true;
}

/// Whether \a rest, which begins behind the name of a declaration, is short and declares no parameter entity.
bool isPlainDeclaration(QByteArrayView rest)
{
    const qsizetype next = rest.indexOf('<');
    const QByteArrayView declaration = next < 0 ? rest : rest.first(next);
    return declaration.size() <= longestDeclaration && !declaration.trimmed().startsWith('%');
}

} // namespace

bool isWithinLimits(QByteArrayView xml, XmlMarkupLimits limits)
{
    int declarations = 0;
    for (qsizetype start = xml.indexOf('<'); start >= 0; start = xml.indexOf('<', start + 1)) {
        const QByteArrayView markup = xml.sliced(start + 1);
        for (const QByteArrayView name : {QByteArrayView("!ENTITY"), QByteArrayView("!ATTLIST")}) {
            const bool isDeclaration = markup.startsWith(name);
            if (isDeclaration
                && (++declarations > limits.declarations || !isPlainDeclaration(markup.sliced(name.size()))))
                return false;
        }
        const bool isTag = !markup.startsWith('!') && !markup.startsWith('?');
        if (isTag && !hasFewAttributes(markup, limits.attributes))
            return false;
    }
    return true;
}

} // namespace Orbita
