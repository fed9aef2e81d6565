#include "platform/Glib.h"

#include "platform/SvgContent.h"

#include "platform/BoundedRead.h"

#include <QFile>
#include <QHash>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>
#include <vector>

namespace Orbita {

namespace {

constexpr qsizetype maximumSize = 8 * 1024 * 1024; // bytes, unpacked
constexpr int maximumDepth = 200;
constexpr qint64 maximumElements = 200'000;

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

/// The elements of a document as a graph: what drawing one draws in turn.
class SvgGraph {
public:
    /// False when \a document is malformed, too large, too deep or refers to other files.
    bool read(const QByteArray &document)
    {
        QXmlStreamReader xml(document);
        std::vector<std::size_t> open;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement()) {
                if (open.size() >= maximumDepth || qint64(m_elements.size()) >= maximumElements || !add(xml))
                    return false;
                if (!open.empty())
                    m_elements[open.back()].children.push_back(m_elements.size() - 1);
                open.push_back(m_elements.size() - 1);
            } else if (xml.isEndElement()) {
                open.pop_back();
            }
        }
        return !xml.hasError() && !m_elements.empty();
    }

    /// How many elements drawing the document draws; nothing when that is too many, too deep or without end.
    std::optional<qint64> cost() { return cost(0, 0); }

private:
    struct Element {
        std::vector<std::size_t> children;
        QString reference;
        qint64 cost = 0; ///< 0 is not known yet
        int height = 0;  ///< levels below, once the cost is known
        bool isOpen = false;
    };

    bool add(const QXmlStreamReader &xml)
    {
        Element element;
        const QXmlStreamAttributes attributes = xml.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            if (attribute.name() == QLatin1String("id"))
                m_ids.insert(attribute.value().toString(), m_elements.size());
            if (attribute.name() == QLatin1String("href"))
                element.reference = attribute.value().trimmed().toString();
        }
        const bool isPicture = xml.name() == QLatin1String("image");
        if (isPicture && !element.reference.startsWith(QLatin1String("data:")))
            return false;
        // Only these draw what they refer to; a link or a gradient does not.
        if (xml.name() != QLatin1String("use"))
            element.reference.clear();
        m_elements.push_back(std::move(element));
        return true;
    }

    std::optional<qint64> cost(std::size_t index, int depth)
    {
        Element &element = m_elements[index];
        if (element.isOpen || depth + element.height > maximumDepth)
            return std::nullopt;
        if (element.cost > 0)
            return element.cost;
        std::vector<std::size_t> drawn = element.children;
        const auto target = m_ids.find(element.reference.mid(1));
        if (element.reference.startsWith(u'#') && target != m_ids.end())
            drawn.push_back(target.value());

        element.isOpen = true;
        qint64 sum = 1;
        for (const std::size_t child : drawn) {
            const auto part = cost(child, depth + 1);
            if (!part || (sum += *part) > maximumElements)
                return std::nullopt;
            element.height = std::max(element.height, m_elements[child].height + 1);
        }
        element.isOpen = false;
        element.cost = sum;
        return sum;
    }

    std::vector<Element> m_elements;
    QHash<QString, std::size_t> m_ids;
};

} // namespace

bool isSafeSvg(const QByteArray &document)
{
    SvgGraph graph;
    return document.size() <= maximumSize && !isCompressed(document) && graph.read(document) && graph.cost();
}

QByteArray readSvg(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray content = readAtMost(file, maximumSize + 1);
    if (isCompressed(content))
        content = unpacked(content);
    return isSafeSvg(content) ? content : QByteArray();
}

} // namespace Orbita
