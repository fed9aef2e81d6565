#include "model/CoreMenuItem.h"

#include "model/ItemServices.h"
#include "model/Log.h"
#include "model/StoredText.h"
#include "model/WorkspaceFailure.h"
#include "platform/Workspace.h"

namespace Orbita {

MenuItem::Pointer CoreMenuItem::fromDictionary(const QVariantMap &dictionary, ItemServices &services)
{
    return std::make_shared<CoreMenuItem>(storedText(dictionary, "name"), services);
}

CoreMenuItem::CoreMenuItem(QString name, ItemServices &services)
    : ApplicationMenuItem(services), m_name(std::move(name))
{
}

Image CoreMenuItem::image() const
{
    const Image own = Image::named(m_name);
    return own.isNull() ? Image::named(QStringLiteral("Default")) : own;
}

std::optional<QString> CoreMenuItem::applicationPath() const
{
    auto path = m_services.workspace.coreApplication(m_name);
    if (!path)
        qCWarning(lcModel, "\"%s\" cannot be opened: no application for it is installed.", qUtf8Printable(m_name));
    return path;
}

void CoreMenuItem::open()
{
    // What stands for the entry may run though no application for its role is installed.
    if (activateRunning())
        return;
    if (const auto path = applicationPath())
        launchApplication(*path, m_services.workspace);
}

bool CoreMenuItem::canOpenPath(const QString &) const
{
    return m_name != QLatin1String("Launchpad") && m_name != QLatin1String("App Store");
}

void CoreMenuItem::openPath(const QString &path)
{
    if (const auto application = applicationPath())
        openFile(path, *application);
}

bool CoreMenuItem::representsRunningApplication(const RunningApplication &application) const
{
    if (application.localizedName == m_name)
        return true;
    const auto path = m_services.workspace.coreApplication(m_name);
    return path && *path == application.bundlePath;
}

std::optional<QVariantMap> CoreMenuItem::dictionaryRepresentation() const
{
    return QVariantMap{{QStringLiteral("class"), QStringLiteral("CoreMenuItem")}, {QStringLiteral("name"), m_name}};
}

} // namespace Orbita
