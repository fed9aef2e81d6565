#include "model/PreservedMenuItem.h"

#include "model/Log.h"
#include "model/StoredText.h"

namespace Orbita {

MenuItem::Pointer PreservedMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    return std::make_shared<PreservedMenuItem>(dictionary, services);
}

QString PreservedMenuItem::text(const char *key) const
{
    return storedText(m_dictionary, key);
}

QString PreservedMenuItem::identity() const
{
    return text("class") + text("name") + text("url") + text("script");
}

QString PreservedMenuItem::name() const
{
    return text("name");
}

Image PreservedMenuItem::image() const
{
    return Image::named(QStringLiteral("Default"));
}

void PreservedMenuItem::open()
{
    qCWarning(lcModel, "\"%s\" cannot be opened: this version of Orbita does not know entries of the kind %s.",
              qUtf8Printable(name()), qUtf8Printable(text("class")));
}

std::vector<MenuItem::Pointer> PreservedMenuItem::subitems() const
{
    std::vector<Pointer> members;
    for (const QVariant &member : m_dictionary.value(QStringLiteral("subitems")).toList()) {
        if (auto item = MenuItem::fromDictionary(member.toMap(), m_services))
            members.push_back(std::move(item));
    }
    return members;
}

} // namespace Orbita
