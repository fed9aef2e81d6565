#include "model/LinkAddress.h"

namespace Orbita {

QString linkName(const QString &urlString)
{
    constexpr qsizetype maximumLength = 10;
    const QString host = QUrl(urlString.trimmed()).host();
    if (!host.isEmpty())
        return host;
    return urlString.size() > maximumLength ? urlString.left(maximumLength) + QStringLiteral("...") : urlString;
}

Result<QUrl, const char *> linkAddress(const QString &urlString)
{
    constexpr qsizetype maximumLength = 64 * 1024;
    const QString address = urlString.trimmed();
    if (address.isEmpty())
        return Failure("its address is empty");
    if (address.size() > maximumLength)
        return Failure("its address is too long");
    QUrl url(address);
    if (!url.isValid())
        return Failure("its address is malformed");
    if (url.isRelative())
        return Failure("its address has no scheme, such as \"https:\"");
    const QString scheme = url.scheme();
    if (scheme == QLatin1String("javascript") || scheme == QLatin1String("data"))
        return Failure("its address is no place to go to but something to be run or shown");
    return url;
}

} // namespace Orbita
