#pragma once

#include "platform/Image.h"

#include <QCache>
#include <QStringList>

namespace Orbita {

/// The icons of the desktop's theme as pictures that are opened only when they are drawn, on any thread.
///
/// Pictures of one name share one source. The theme is read when the first icon is asked for.
/// To be used on the main thread.
class ThemeIcons {
public:
    ThemeIcons();

    /// The icon of the first of \a names that has one, be it in the theme, in "hicolor" or in a pixmaps folder. A name
    /// may also be an absolute path. The bundled "Default" stands for what is missing or does not decode.
    [[nodiscard]] Image icon(const QStringList &names);

    /// Forgets what was found: applications came or went.
    void clear() { m_found.clear(); }

private:
    QCache<QString, Image> m_found;
    bool m_isThemeInUse = false;
};

} // namespace Orbita
