#include "companion/host/ScriptSource.h"

#include "companion/script/LineBreaks.h"
#include "platform/BoundedRead.h"

#include <QStringDecoder>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

/// The line \a number, counted from 1, of \a source; empty when there is no such line.
QString lineOf(const QString &source, qint64 number)
{
    return withLineFeeds(source).section(u'\n', number - 1, number - 1);
}

} // namespace

Result<QString, QString> readSource(QIODevice &input)
{
    constexpr qint64 maximumSize = 4 * 1024 * 1024; // bytes
    const QByteArray bytes = readAtMost(input, maximumSize + 1);
    if (bytes.size() > maximumSize)
        return Failure(u"The script is longer than 4 MiB."_s);
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString source = decode(bytes);
    if (decode.hasError() || source.contains(QChar::Null))
        return Failure(u"The script is no text in UTF-8."_s);
    return source;
}

ProblemReport reportOf(const ScriptProblem &problem, const QString &source)
{
    const bool isRead = problem.number != ScriptProblem::syntax;
    return {isRead ? u"The script was stopped by a problem."_s : u"The script is not understood."_s, problem.line,
            lineOf(source, problem.line), problem.message};
}

} // namespace Orbita
