#include "platform/Glib.h"

#include "platform/SvgContent.h"

#include "platform/XmlMarkup.h"
#include "platform/svg/EmbeddedBitmap.h"
#include "platform/svg/SvgGraph.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

namespace Orbita {

namespace {

constexpr qsizetype maximumSize = 8 * 1024 * 1024; // bytes, unpacked
constexpr XmlMarkupLimits markupLimits{100, 100};
constexpr qsizetype maximumReferences = 1000; // to entities, where a document declares some
constexpr qint64 maximumPixels = 32 * 1024 * 1024;
constexpr qint64 maximumMatches = 1'000'000; // of selectors with elements
constexpr qsizetype unitsPerCost = 64;       // of a path, for instance

/// What draws a line as dashes. The renderer makes each dash, however many fit, so that some kilobytes take all memory.
const QLatin1String dashes("dasharray");

/// Whether \a style, some CSS, may ask for dashes; its escapes could spell any name.
bool mayDash(QStringView style)
{
    return style.contains(dashes, Qt::CaseInsensitive) || style.contains(u'\\');
}

QByteArray withoutDashes(QByteArray document)
{
    return document.replace("stroke-dasharray", "stroke-undashed_"); // a property that nobody knows
}

bool isCompressed(const QByteArray &content)
{
    return content.startsWith("\x1f\x8b");
}

/// At most maximumSize bytes, since some kilobytes can unpack to gigabytes; empty when there are more or it is damaged.
QByteArray unpacked(const QByteArray &content)
{
    const GObjectPointer<GInputStream> packed(
        g_memory_input_stream_new_from_data(content.constData(), content.size(), nullptr));
    const GObjectPointer<GZlibDecompressor> decompressor(g_zlib_decompressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP));
    const GObjectPointer<GInputStream> stream(
        g_converter_input_stream_new(packed.get(), G_CONVERTER(decompressor.get())));
    QByteArray result(maximumSize + 1, Qt::Uninitialized);
    gsize count = 0;
    const bool isRead
        = g_input_stream_read_all(stream.get(), result.data(), gsize(result.size()), &count, nullptr, nullptr);
    result.truncate(qsizetype(count));
    return isRead && result.size() <= maximumSize ? result : QByteArray();
}

/// Reads a document as the renderer does, and finds out whether it may.
class SvgCheck {
public:
    explicit SvgCheck(const QByteArray &document) : m_document(document), m_xml(document)
    {
        m_xml.setNamespaceProcessing(false); // the renderer takes any prefix
    }

    bool isPassed()
    {
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (!isHarmlessToken())
                return false;
        }
        if (m_xml.hasError() || m_graph.size() == 0 || mayDash(m_styles)
            || m_selectors * m_graph.size() > maximumMatches)
            return false;
        const auto cost = m_graph.totalCost();
        return cost && *cost * m_glyphCost <= SvgGraph::maximumCost;
    }

private:
    /// What the text within an element is to the renderer.
    enum class Content { Ignored, Text, Style };

    bool isHarmlessToken()
    {
        switch (m_xml.tokenType()) {
        case QXmlStreamReader::StartDocument:
            return isPlainEncoding();
        case QXmlStreamReader::DTD:
            return declaresPlainEntities();
        case QXmlStreamReader::ProcessingInstruction: // the renderer opens the file that it names
            return m_xml.processingInstructionTarget().compare(QLatin1String("xml-stylesheet"), Qt::CaseInsensitive)
                != 0;
        case QXmlStreamReader::StartElement:
            return openElement();
        case QXmlStreamReader::EndElement:
            m_graph.close();
            m_contents.pop_back();
            return true;
        case QXmlStreamReader::Characters:
            addCharacters(m_xml.text());
            return true;
        default:
            return true;
        }
    }

    /// Whether the limits of markup have been told from the same characters that are read.
    bool isPlainEncoding() const
    {
        const QString name = m_xml.documentEncoding().toString().toLower();
        return name.isEmpty() || name == QLatin1String("utf-8") || name == QLatin1String("us-ascii")
            || name.startsWith(QLatin1String("iso-8859-")) || name.startsWith(QLatin1String("windows-125"));
    }

    /// Whether entities stand for short texts, neither elements nor other entities.
    bool declaresPlainEntities() const
    {
        const auto entities = m_xml.entityDeclarations();
        const auto isPlain = [](const QXmlStreamEntityDeclaration &entity) {
            return !entity.value().contains(u'<') && !entity.value().contains(u'&');
        };
        return std::all_of(entities.begin(), entities.end(), isPlain)
            && (entities.isEmpty() || m_document.count('&') <= maximumReferences);
    }

    bool openElement()
    {
        const auto attributes = m_xml.attributes();
        if (attributes.size() > markupLimits.attributes) // some may be defaults
            return false;
        SvgGraph::Element element;
        qsizetype units = 0;
        for (const QXmlStreamAttribute &attribute : attributes) {
            units += attribute.value().size();
            const QStringView name = attribute.qualifiedName();
            const QStringView localName = name.sliced(name.lastIndexOf(u':') + 1);
            if (localName.contains(dashes) || (localName == QLatin1String("style") && mayDash(attribute.value())))
                return false;
            if (localName == QLatin1String("id"))
                element.ids.append(attribute.value().toString());
            if (localName == QLatin1String("href") && !addReference(attribute.value(), element))
                return false;
        }
        element.cost += units / unitsPerCost;
        if (m_xml.name().endsWith(QLatin1String("glyph")))
            m_glyphCost = std::max(m_glyphCost, element.cost);
        m_contents.push_back(contentOf(m_xml.name()));
        return m_graph.open(element);
    }

    /// Whether \a address, which the current element refers to, is no other file. It is noted in \a element.
    bool addReference(QStringView address, SvgGraph::Element &element)
    {
        if (m_xml.name() == QLatin1String("a")) // a link is not followed
            return true;
        if (m_xml.name() == QLatin1String("image")) {
            const auto pixels = embeddedPixels(address, maximumPixels - m_pixels);
            m_pixels += pixels.value_or(0);
            return pixels.has_value();
        }
        if (address.startsWith(u'#'))
            element.references.append(address.sliced(1).toString());
        return address.isEmpty() || address.startsWith(u'#');
    }

    Content contentOf(QStringView name) const
    {
        if (name == QLatin1String("style"))
            return Content::Style;
        if (name == QLatin1String("text") || name == QLatin1String("textArea"))
            return Content::Text;
        return m_contents.empty() ? Content::Ignored : m_contents.back();
    }

    void addCharacters(QStringView text)
    {
        if (m_contents.empty())
            return;
        // Each of these begins a rule or a part of a selector, which is compared with every element.
        if (m_contents.back() == Content::Style) {
            m_styles += text;
            m_selectors += std::count_if(text.begin(), text.end(),
                                         [](QChar c) { return c == u'{' || c == u',' || c == u'+' || c == u'~'; });
        }
        m_graph.addCost(m_contents.back() == Content::Text ? text.size() : text.size() / unitsPerCost);
    }

    const QByteArray &m_document;
    QXmlStreamReader m_xml;
    SvgGraph m_graph;
    std::vector<Content> m_contents; ///< of the open elements
    qint64 m_pixels = 0;             ///< of all bitmaps within
    qint64 m_selectors = 0;
    QString m_styles;       ///< all of them, since one may stand in several pieces
    qint64 m_glyphCost = 1; ///< the most that drawing a character in a font of the document's own costs
};

} // namespace

bool isSafeSvg(const QByteArray &document)
{
    // A NUL byte betrays an encoding of wider characters.
    return document.size() <= maximumSize && !isCompressed(document) && !document.contains('\0')
        && isWithinLimits(document, markupLimits) && SvgCheck(document).isPassed();
}

QByteArray safeSvg(const QByteArray &content)
{
    const QByteArray document = withoutDashes(isCompressed(content) ? unpacked(content) : content);
    return isSafeSvg(document) ? document : QByteArray();
}

} // namespace Orbita
