#include "model/AppleScriptMenuItem.h"

#include "model/ItemServices.h"
#include "toolkit/RemoteActionSender.h"

namespace Orbita {

MenuItem::Pointer AppleScriptMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    return std::make_shared<AppleScriptMenuItem>(dictionary, services);
}

QString AppleScriptMenuItem::sampleScript()
{
    return QStringLiteral(
        "#Here are some samples of what you could do in Apple Script. Each sample is exactly one line of code. "
        "Remove the '#' in front of each line to give it a try.\n"
        "#\n"
        "#How to show a dialog:\n"
        "display dialog \"Right click an Apple Script item and click Edit to add your own script.\"\n"
        "#\n"
        "#How to open an application:\n"
        "#tell application \"Safari\" to activate\n"
        "#\n"
        "#How to open a new Safari Window:\n"
        "#tell application \"Safari\" to make new document at end of documents\n"
        "#\n"
        "#\n"
        "#   Happy Scripting  :-)");
}

AppleScriptMenuItem::AppleScriptMenuItem(const QString &name, ItemServices &services)
    : PicturedMenuItem(kind, name, sampleScript(), services)
{
}

AppleScriptMenuItem::AppleScriptMenuItem(const QVariantMap &dictionary, ItemServices &services)
    : PicturedMenuItem(kind, dictionary, services)
{
}

void AppleScriptMenuItem::open()
{
    if (!m_services.toolkit.isRecipientReachable())
        return;
    VXRemoteAction action(QStringLiteral("executeApplescript"));
    action.setValueForParameter(script(), QStringLiteral("script"));
    m_services.toolkit.sendAction(action);
}

void AppleScriptMenuItem::edit(ItemEditors &editors, const EditorText &text, const ItemEditors::Handlers &handlers)
{
    editors.editScript(text, QStringLiteral("Apple Script - %1").arg(name()), image(), handlers);
}

} // namespace Orbita
