#include "model/RunningAppMenuItem.h"

#include "model/ImageCache.h"
#include "model/ItemServices.h"

namespace Orbita {

RunningAppMenuItem::RunningAppMenuItem(RunningApplication application, ItemServices &services)
    : ApplicationMenuItem(services), m_app(std::move(application))
{
    createImage();
}

QString RunningAppMenuItem::bundle() const
{
    return m_app.bundlePath.isEmpty() ? m_app.executablePath : m_app.bundlePath;
}

QString RunningAppMenuItem::identity() const
{
    // Two programs that run without a bundle, one interpreter's scripts for instance, are told apart by their names.
    const QString distinguishing
        = m_app.bundlePath.isEmpty() ? m_app.executablePath + m_app.localizedName : m_app.bundlePath;
    return QStringLiteral("RunningAppMenuItem") + distinguishing;
}

void RunningAppMenuItem::setRenderColored(bool renderColored)
{
    m_renderColored = renderColored;
    m_services.imageCache.removeImageForKey(identity());
    createImage();
}

bool RunningAppMenuItem::update(const RunningApplication &application)
{
    const bool looksTheSame = application.localizedName == m_app.localizedName && application.icon == m_app.icon
        && application.bundlePath == m_app.bundlePath;
    if (!looksTheSame)
        m_services.imageCache.removeImageForKey(identity());
    m_app = application;
    if (!looksTheSame)
        setRenderColored(m_renderColored);
    return !looksTheSame;
}

void RunningAppMenuItem::openPath(const QString &path)
{
    if (canOpenPath(path))
        openFile(path, m_app.bundlePath);
}

bool RunningAppMenuItem::representsRunningApplication(const RunningApplication &application) const
{
    return application == m_app;
}

void RunningAppMenuItem::createImage()
{
    m_image = m_services.imageCache.imageForKey(identity());
    if (!m_image.isNull())
        return;
    m_image = m_app.icon.isNull() ? Image::named(QStringLiteral("Default")) : m_app.icon;
    m_image.setSize(Image::itemSize);
    if (!m_renderColored)
        m_image = colorControlled(m_image, 0.0F, 1.1F, 0.0F);
    m_services.imageCache.storeImage(m_image, identity());
}

} // namespace Orbita
