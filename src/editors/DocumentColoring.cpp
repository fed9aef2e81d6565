#include "editors/DocumentColoring.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

namespace Orbita {

namespace {

using Formats = QList<QTextLayout::FormatRange>;

const QTextCharFormat &formatFor(ColorRole role)
{
    static const auto colored = [](const QColor &color) {
        QTextCharFormat format;
        format.setForeground(color);
        return format;
    };
    static const QTextCharFormat keyword = colored(QColor::fromRgbF(0.5F, 0.0F, 0.5F));
    static const QTextCharFormat string = colored(QColor::fromRgbF(0.0F, 0.0F, 1.0F));
    static const QTextCharFormat comment = colored(QColor::fromRgbF(0.0F, 0.75F, 0.0F));
    switch (role) {
    case ColorRole::Keyword:
        return keyword;
    case ColorRole::String:
        return string;
    case ColorRole::Comment:
        break;
    }
    return comment;
}

/// The formats of the block from \a start to \a end. \a ranges lose those that end within it.
Formats takeFormats(std::span<const ColorRange> &ranges, qsizetype start, qsizetype end)
{
    Formats formats;
    while (!ranges.empty() && ranges.front().start < end) {
        const ColorRange &range = ranges.front();
        const qsizetype rangeEnd = range.start + range.length;
        const qsizetype from = std::max(range.start, start);
        if (const qsizetype length = std::min(rangeEnd, end) - from; length > 0)
            formats.append({int(from - start), int(length), formatFor(range.role)});
        if (rangeEnd > end)
            break; // goes on in the next block
        ranges = ranges.subspan(1);
    }
    return formats;
}

/// Makes room in \a formats for the text that an input method shows in \a layout, and keeps how it shows it.
Formats withComposition(const Formats &formats, const QTextLayout &layout)
{
    const int start = layout.preeditAreaPosition();
    const int length = int(layout.preeditAreaText().size());
    if (length == 0)
        return formats;
    Formats result;
    for (const QTextLayout::FormatRange &range : formats) {
        const int before = std::clamp(start - range.start, 0, range.length);
        if (before > 0)
            result.append({range.start, before, range.format});
        if (before < range.length)
            result.append({range.start + before + length, range.length - before, range.format});
    }
    for (const QTextLayout::FormatRange &range : layout.formats()) {
        if (range.start >= start && range.start + range.length <= start + length)
            result.append(range);
    }
    return result;
}

} // namespace

QString plainText(const QTextDocument &document)
{
    // Not the document's own plain text, which also makes plain spaces of non-breaking ones.
    QString text = document.toRawText();
    std::ranges::replace(text, QChar(QChar::ParagraphSeparator), QChar(u'\n'));
    return text;
}

int applyColoring(QTextDocument &document, std::span<const ColorRange> ranges)
{
    int changed = 0;
    qsizetype dirtyStart = 0;
    qsizetype dirtyEnd = 0;
    // Neighbours together: the toolkit puts off laying out several blocks until they are seen, but not single ones.
    const auto flush = [&] {
        if (dirtyEnd > dirtyStart)
            document.markContentsDirty(int(dirtyStart), int(dirtyEnd - dirtyStart));
    };
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const qsizetype start = block.position();
        const qsizetype end = start + block.length();
        QTextLayout &layout = *block.layout();
        const Formats formats = withComposition(takeFormats(ranges, start, end), layout);
        if (layout.formats() == formats)
            continue;
        layout.setFormats(formats);
        ++changed;
        if (dirtyEnd < start) {
            flush();
            dirtyStart = start;
        }
        dirtyEnd = end;
    }
    flush();
    return changed;
}

} // namespace Orbita
