#include "platform/desktop/DefaultApplications.h"

namespace Orbita {

GObjectPointer<GDesktopAppInfo> asDesktopEntry(GAppInfo *info)
{
    if (info && !G_IS_DESKTOP_APP_INFO(info)) {
        g_object_unref(info);
        return {};
    }
    return GObjectPointer<GDesktopAppInfo>(reinterpret_cast<GDesktopAppInfo *>(info));
}

GObjectPointer<GDesktopAppInfo> defaultApplicationForType(const QString &contentType)
{
    if (contentType.isEmpty())
        return {};
    return asDesktopEntry(g_app_info_get_default_for_type(contentType.toUtf8().constData(), FALSE));
}

GObjectPointer<GDesktopAppInfo> schemeHandler(const QString &scheme)
{
    if (scheme.isEmpty())
        return {};
    return asDesktopEntry(g_app_info_get_default_for_uri_scheme(scheme.toUtf8().constData()));
}

std::vector<GObjectPointer<GDesktopAppInfo>> applicationsForType(const QString &contentType)
{
    std::vector<GObjectPointer<GDesktopAppInfo>> applications;
    GList *all = contentType.isEmpty() ? nullptr : g_app_info_get_all_for_type(contentType.toUtf8().constData());
    for (const GList *node = all; node; node = node->next) {
        if (auto application = asDesktopEntry(static_cast<GAppInfo *>(node->data)))
            applications.push_back(std::move(application));
    }
    g_list_free(all); // its elements have been taken over
    return applications;
}

} // namespace Orbita
