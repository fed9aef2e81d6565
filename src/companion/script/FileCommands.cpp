#include "companion/script/Coercions.h"
#include "companion/script/Commands.h"
#include "companion/script/LineBreaks.h"
#include "companion/script/ThrownFailures.h"

namespace Orbita {
namespace {

/// Patterns of names for a file type: an extension, or one of the well-known names of types.
QStringList patternsOf(const QString &type)
{
    struct Row {
        const char *type;
        const char *patterns;
    };
    constexpr Row rows[] = {
        {"public.text", "*.txt *.text *.md *.csv *.log *.html *.xml"},
        {"public.plain-text", "*.txt *.text"},
        {"public.image", "*.png *.jpg *.jpeg *.gif *.webp *.svg *.bmp *.tif *.tiff"},
        {"public.jpeg", "*.jpg *.jpeg"},
        {"public.png", "*.png"},
        {"public.movie", "*.mp4 *.mkv *.mov *.avi *.webm *.mpg *.mpeg"},
        {"public.audio", "*.mp3 *.flac *.ogg *.opus *.wav *.m4a *.aac"},
        {"public.html", "*.html *.htm"},
        {"com.adobe.pdf", "*.pdf"},
    };
    for (const Row &row : rows) {
        if (type.compare(QLatin1String(row.type), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(row.patterns).split(QLatin1Char(' '));
    }
    const QString extension = type.startsWith(QLatin1Char('.')) ? type.mid(1) : type;
    const bool isPlain = std::all_of(extension.begin(), extension.end(),
                                     [](QChar c) { return c.isLetterOrNumber() || c == u'-' || c == u'_'; });
    if (extension.isEmpty() || !isPlain)
        failScript(ScriptFailure::general, QStringLiteral("No type of files is called %1.").arg(describe(type)));
    return {QStringLiteral("*.") + extension};
}

Value choose(CommandContext &context, Arguments arguments, FileRequest request)
{
    request.prompt = withLineFeeds(arguments.text("with prompt"));
    request.allowsMultiple = arguments.flag("multiple selections allowed");
    if (const Value *folder = arguments.find("default location"))
        request.startFolder = absolutePath(context, *folder);
    const QStringList paths = valueOrThrow(context.host.chooseFiles(request));
    std::vector<Value> files;
    for (const QString &path : paths) {
        const bool needsSlash = request.choosesFolders && !path.endsWith(QLatin1Char('/'));
        files.push_back(FilePath{needsSlash ? path + QLatin1Char('/') : path});
    }
    if (files.empty())
        failScript(ScriptFailure::userCancelled, QStringLiteral("Nothing was chosen."));
    return request.allowsMultiple ? Value(ValueList(std::move(files))) : files.front();
}

} // namespace

QString absolutePath(CommandContext &context, const Value &value)
{
    QString path = toText(value, context.rules);
    if (path == QLatin1String("~") || path.startsWith(QLatin1String("~/")))
        path = valueOrThrow(context.host.pathTo(StandardFolder::Home)) + path.mid(1);
    if (!path.startsWith(QLatin1Char('/')) || path.contains(QChar(QChar::Null)))
        failScript(ScriptFailure::notFound,
                   describe(value) + QStringLiteral(" is no path from the root or the home folder, \"/\" or \"~/\"."));
    return path;
}

Value chooseFile(CommandContext &context, Arguments arguments)
{
    FileRequest request;
    for (const QString &type : arguments.texts("of type"))
        request.namePatterns += patternsOf(type);
    return choose(context, arguments, request);
}

Value chooseFolder(CommandContext &context, Arguments arguments)
{
    FileRequest request;
    request.choosesFolders = true;
    return choose(context, arguments, request);
}

Value openFiles(CommandContext &context, Arguments arguments)
{
    const auto *application = context.target.as<ApplicationName>();
    QStringList paths;
    const ValueList files = toList(*arguments.subject());
    for (const Value &file : files.items())
        paths.append(absolutePath(context, file));
    if (!paths.isEmpty())
        orThrow(context.host.open(application ? application->name : QString(), paths));
    return MissingValue();
}

Value reveal(CommandContext &context, Arguments arguments)
{
    const ValueList files = toList(*arguments.subject());
    for (const Value &file : files.items())
        orThrow(context.host.reveal(absolutePath(context, file)));
    return MissingValue();
}

Value pathTo(CommandContext &context, Arguments arguments)
{
    struct Row {
        const char *name;
        StandardFolder folder;
    };
    constexpr Row rows[] = {
        {"home", StandardFolder::Home},           {"desktop", StandardFolder::Desktop},
        {"documents", StandardFolder::Documents}, {"downloads", StandardFolder::Downloads},
        {"music", StandardFolder::Music},         {"pictures", StandardFolder::Pictures},
        {"movies", StandardFolder::Movies},       {"temporary", StandardFolder::Temporary},
    };
    const QString name = arguments.subjectText().toLower();
    const QString folder = name.section(QLatin1Char(' '), 0, 0);
    for (const Row &row : rows) {
        if (folder != QLatin1String(row.name))
            continue;
        const QString path = valueOrThrow(context.host.pathTo(row.folder));
        return FilePath{path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/')};
    }
    failScript(ScriptFailure::notFound, QStringLiteral("No path to \"%1\" is known.").arg(name.left(40)));
}

} // namespace Orbita
