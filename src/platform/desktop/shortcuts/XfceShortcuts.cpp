#include "platform/desktop/shortcuts/XfceShortcuts.h"

#include <QMap>
#include <QXmlStreamReader>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype maximumNameLength = 128; // characters; no combination has a longer name

/// The values of the properties on the third level, where shortcuts are, by their paths, like
/// "/commands/default/<Alt>F2". Those that are neither text nor truth are empty.
using Properties = QMap<QString, QString>;

QString valueIn(const QXmlStreamAttributes &attributes)
{
    const auto type = attributes.value("type"_L1);
    return type == "string"_L1 || type == "bool"_L1 ? attributes.value("value"_L1).toString() : QString();
}

/// Nothing when \a content is not well-formed.
Properties readProperties(const QByteArray &content)
{
    Properties properties;
    QStringList path;
    QXmlStreamReader reader(content);
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (reader.name() != "property"_L1)
            continue;
        if (token == QXmlStreamReader::StartElement) {
            path.append(reader.attributes().value("name"_L1).left(maximumNameLength).toString());
            if (path.size() == 3)
                properties[u'/' + path.join(u'/')] = valueIn(reader.attributes());
        } else if (token == QXmlStreamReader::EndElement) {
            path.removeLast();
        }
    }
    return reader.hasError() ? Properties() : properties;
}

/// The names of the properties right below \a folder that have a value.
QStringList namesBelow(const QString &folder, const Properties &properties)
{
    QStringList names;
    for (auto it = properties.lowerBound(folder); it != properties.end() && it.key().startsWith(folder); ++it) {
        const QString name = it.key().mid(folder.size());
        if (!it->isEmpty() && !name.contains(u'/'))
            names.append(name);
    }
    return names;
}

} // namespace

QList<Accelerator> xfceShortcuts(const QList<QByteArray> &files)
{
    Properties properties;
    for (const QByteArray &file : files)
        properties.insert(readProperties(file));
    QStringList names;
    for (const QString &provider : {u"/commands/"_s, u"/xfwm4/"_s}) {
        const bool isCustom = properties.value(provider + "custom/override"_L1) == "true"_L1;
        names += namesBelow(provider + (isCustom ? "custom/"_L1 : "default/"_L1), properties);
    }
    return acceleratorsFromGtk(names);
}

} // namespace Orbita
