#pragma once

#include <QString>

namespace Orbita {

/// Hands addresses of private schemes to the program that is registered for them.
class UrlHandler {
public:
    virtual ~UrlHandler() = default;

    /// Whether a program can be found that opens addresses of \a scheme. Up to date, and cheap.
    [[nodiscard]] virtual bool isSchemeHandled(const QString &scheme) const = 0;
    /// Has the program that opens addresses of the scheme of \a url do so, starting that program where needed.
    ///
    /// \a url is passed on as it stands, up to some MiB. Does not wait, and delivery is not confirmed; a failure is
    /// logged.
    virtual void openUrl(const QString &url) = 0;
    /// Sees to it that what was opened gets to its programs although this one ends now. May wait some seconds for a
    /// program that is just starting.
    virtual void flush() = 0;
};

} // namespace Orbita
