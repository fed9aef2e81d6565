#include "companion/service/ShebangInterpreter.h"

#include <QFileInfo>

namespace Orbita {

namespace {

/// A name that is no longer than a message should be.
QString shortened(const QString &text)
{
    constexpr qsizetype maximum = 100;
    return text.size() <= maximum ? text : text.left(maximum - 1) + u'\u2026';
}

} // namespace

std::optional<ShebangInterpreter> interpreterOf(const QString &script)
{
    if (!script.startsWith(QLatin1String("#!")))
        return std::nullopt;
    const QString line = script.section(u'\n', 0, 0).mid(2).trimmed();
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    const auto end = std::find_if(line.begin(), line.end(), isBlank) - line.begin();
    return ShebangInterpreter{line.left(end), line.mid(end).trimmed()};
}

std::optional<QString> obstacleOf(const ShebangInterpreter &interpreter)
{
    const QString name = shortened(interpreter.program);
    if (!interpreter.program.startsWith(u'/'))
        return QStringLiteral("The script cannot be run: its first line has to name a program by its whole path, "
                              "which \"%1\" is not.")
            .arg(name);
    const QFileInfo file(interpreter.program);
    if (!file.isFile() || !file.isExecutable())
        return QStringLiteral("The script cannot be run: there is no program \"%1\".").arg(name);
    return std::nullopt;
}

} // namespace Orbita
