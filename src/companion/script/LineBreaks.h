#pragma once

#include <QString>

namespace Orbita {

// Scripts break lines with "\r", every other program with "\n". Both take "\r\n" for one break.

[[nodiscard]] inline QString withLineFeeds(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

[[nodiscard]] inline QString withCarriageReturns(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\r"));
    text.replace(QLatin1Char('\n'), QLatin1Char('\r'));
    return text;
}

} // namespace Orbita
