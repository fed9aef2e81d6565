#include "model/MenuItem.h"

#include "model/AppMenuItem.h"
#include "model/AppleScriptMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/FileMenuItem.h"
#include "model/LinkMenuItem.h"
#include "model/PreservedMenuItem.h"

#include <QHash>

namespace Orbita {

namespace {

using Constructor = MenuItem::Pointer (*)(const QVariantMap &, ItemServices &);

const QHash<QString, Constructor> &constructors()
{
    static const QHash<QString, Constructor> table{
        {QStringLiteral("AppMenuItem"), &AppMenuItem::fromDictionary},
        {QStringLiteral("CoreMenuItem"), &CoreMenuItem::fromDictionary},
        {QStringLiteral("FileMenuItem"), &FileMenuItem::fromDictionary},
        {QStringLiteral("LinkMenuItem"), &LinkMenuItem::fromDictionary},
        {QStringLiteral("AppleScriptMenuItem"), &AppleScriptMenuItem::fromDictionary},
        {QStringLiteral("CollectionMenuItem"), &PreservedMenuItem::fromDictionary},
    };
    return table;
}

} // namespace

MenuItem::Pointer MenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    const QVariant className = dictionary.value(QStringLiteral("class"));
    if (className.typeId() != QMetaType::QString)
        return {};
    const Constructor constructor = constructors().value(className.toString(), nullptr);
    return constructor ? constructor(dictionary, services) : Pointer();
}

QString MenuItem::identity() const
{
    return QStringLiteral("MenuItem:%1").arg(quintptr(this), 0, 16);
}

} // namespace Orbita
