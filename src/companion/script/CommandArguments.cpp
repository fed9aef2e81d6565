#include "companion/script/CommandArguments.h"

#include "companion/script/Coercions.h"

#include <cstring>

namespace Orbita {

QString CommandArguments::subjectText() const
{
    Q_ASSERT(m_subject);
    return toText(*m_subject, m_rules);
}

const Value *CommandArguments::find(const char *phrase) const
{
    for (const auto &[name, value] : m_options) {
        if (std::strcmp(name, phrase) == 0)
            return &value;
    }
    return nullptr;
}

QString CommandArguments::text(const char *phrase) const
{
    const Value *value = find(phrase);
    return value ? toText(*value, m_rules) : QString();
}

QStringList CommandArguments::texts(const char *phrase) const
{
    const Value *value = find(phrase);
    return value ? toTexts(*value, m_rules) : QStringList();
}

double CommandArguments::number(const char *phrase, double otherwise) const
{
    const Value *value = find(phrase);
    return value ? toReal(*value) : otherwise;
}

bool CommandArguments::flag(const char *phrase) const
{
    const Value *value = find(phrase);
    return value && toBoolean(*value);
}

} // namespace Orbita
