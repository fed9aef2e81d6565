#include "model/PreservedMenuItem.h"

#include "model/Log.h"
#include "model/StoredText.h"

namespace Orbita {

MenuItem::Pointer PreservedMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &)
{
    return std::make_shared<PreservedMenuItem>(dictionary);
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

} // namespace Orbita
