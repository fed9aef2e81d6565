#include "platform/Glib.h"

#include "companion/host/ApplicationNames.h"

#include "platform/desktop/DesktopFile.h"

#include <algorithm>
#include <array>
#include <functional>

namespace Orbita {

namespace {

/// \a name without \a suffix, should it end with that.
QString without(QLatin1String suffix, const QString &name)
{
    return name.endsWith(suffix, Qt::CaseInsensitive) ? name.chopped(suffix.size()) : name;
}

} // namespace

QString untranslatedName(const QString &path)
{
    const auto file = DesktopFile::read(path);
    if (!file)
        return {};
    const GlibPointer<char> name(
        g_key_file_get_string(file->keyFile(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_NAME, nullptr));
    return QString::fromUtf8(name.get()).simplified();
}

std::optional<QString> applicationNamed(const QString &name, const std::vector<DesktopEntry> &installed)
{
    const QString asked = without(QLatin1String(".app"), name.simplified());
    const QString id = without(QLatin1String(".desktop"), asked);
    const auto is
        = [](const QString &a, const QString &b) { return !a.isEmpty() && a.compare(b, Qt::CaseInsensitive) == 0; };
    const std::array<std::function<bool(const DesktopEntry &)>, 3> questions{
        [&](const DesktopEntry &entry) { return is(entry.name, asked); },
        [&](const DesktopEntry &entry) { return is(untranslatedName(entry.path), asked); },
        [&](const DesktopEntry &entry) { return is(entry.id, id); },
    };
    for (const auto &fits : questions) {
        const auto found = std::ranges::find_if(installed, fits);
        if (found != installed.end())
            return found->path;
    }
    return std::nullopt;
}

} // namespace Orbita
