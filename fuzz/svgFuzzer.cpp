// SVG documents: what passes the check is drawn, and no file is opened meanwhile.

#include "platform/SvgContent.h"

#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>

#include <dlfcn.h>

#include <cstdlib>
#include <string_view>

using namespace Orbita;

namespace {

bool isDrawing = false;

/// Texts in any language may need another font.
bool isFont(std::string_view path)
{
    return path.starts_with("/usr/share/fonts/") || path.find("fontconfig") != std::string_view::npos;
}

void draw(const QByteArray &document)
{
    QSvgRenderer renderer;
    if (!renderer.load(document))
        return;
    QImage canvas(32, 32, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    renderer.render(&painter, QRectF(QPointF(), canvas.size()));
}

} // namespace

/// Stands in for the function by which the toolkit opens files.
extern "C" int open64(const char *path, int flags, ...)
{
    if (isDrawing && !isFont(path)) {
        fprintf(stderr, "opened %s\n", path);
        std::abort();
    }
    static const auto real = reinterpret_cast<int (*)(const char *, int, mode_t)>(dlsym(RTLD_NEXT, "open64"));
    return real(path, flags, 0600);
}

extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig"; // keeps the fonts that it has found
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*=false");
    new QGuiApplication(*argc, *argv); // lives as long as the program
    // Fonts and plug-ins are loaded when they are needed first.
    const QByteArray bitmap
        = "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGNgAAAAAgABSK+kcQAAAABJRU5ErkJggg==";
    const QByteArray document
        = "<svg><text y='9'>a</text><image width='9' height='9' xlink:href='data:image/png;base64," + bitmap
        + "'/></svg>";
    if (!isSafeSvg(document))
        std::abort();
    draw(document);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const QByteArray document = safeSvg(bytes);
    isDrawing = true;
    if (!document.isEmpty())
        draw(document);
    isDrawing = false;
    return 0;
}
