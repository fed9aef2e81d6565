#include "model/LinkMenuItem.h"

#include "model/ItemServices.h"
#include "model/LinkAddress.h"
#include "model/Log.h"
#include "model/WorkspaceFailure.h"

namespace Orbita {

MenuItem::Pointer LinkMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    return std::make_shared<LinkMenuItem>(dictionary, services);
}

LinkMenuItem::LinkMenuItem(const QString &urlString, ItemServices &services)
    : PicturedMenuItem(kind, linkName(urlString), urlString, services)
{
}

LinkMenuItem::LinkMenuItem(const QVariantMap &dictionary, ItemServices &services)
    : PicturedMenuItem(kind, dictionary, services)
{
}

void LinkMenuItem::open()
{
    const auto address = linkAddress(urlString());
    if (!address)
        qCWarning(lcModel, "The link \"%s\" was not opened: %s.", qUtf8Printable(forLog(name())), address.error());
    else
        logFailure(m_services.workspace.openUrl(*address),
                   QStringLiteral("The link \"%1\" could not be opened").arg(forLog(name())));
}

void LinkMenuItem::edit(ItemEditors &editors, const EditorText &text, const ItemEditors::Handlers &handlers)
{
    editors.editLink(text, image(), handlers);
}

} // namespace Orbita
