#include "platform/KeyedArchive.h"

#include "platform/PropertyList.h"

#include <algorithm>

namespace Orbita::KeyedArchive {

using namespace Qt::StringLiterals;
using PropertyList::Uid;

namespace {

constexpr int version = 100000;

QByteArray archive(quint64 root, const QVariantList &objects)
{
    const QVariantMap top{{u"root"_s, QVariant::fromValue(Uid{root})}};
    const QVariantMap archive{
        {u"$archiver"_s, u"NSKeyedArchiver"_s}, {u"$version"_s, version}, {u"$top"_s, top}, {u"$objects"_s, objects}};
    return PropertyList::encode(archive, PropertyList::Format::Binary).value();
}

bool isUid(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<Uid>();
}

bool isString(const QVariant &value)
{
    return value.typeId() == QMetaType::QString;
}

/// Whether \a object is complete without reference to others.
bool isScalar(const QVariant &object)
{
    return object.isValid() && object.typeId() != QMetaType::QVariantMap && object.typeId() != QMetaType::QVariantList
        && !isUid(object);
}

/// The objects of an archive, under their numbers.
class Objects {
public:
    explicit Objects(QVariantList objects) : m_objects(std::move(objects)) {}

    /// What \a reference refers to; invalid when it refers to nothing or is no reference into the archive.
    [[nodiscard]] QVariant at(const QVariant &reference) const
    {
        const quint64 number = isUid(reference) ? reference.value<Uid>().value : 0;
        return number > 0 && number < quint64(m_objects.size()) ? m_objects.at(qsizetype(number)) : QVariant();
    }

    /// The classes that the object of class \a reference is of; none when that is no class.
    [[nodiscard]] QStringList classes(const QVariant &reference) const
    {
        const QVariantMap description = at(reference).toMap();
        const QVariantList names = description.value(u"$classes"_s).toList();
        if (names.isEmpty() || names.first() != description.value(u"$classname"_s)
            || !std::all_of(names.begin(), names.end(), isString))
            return {};
        return QVariant(names).toStringList();
    }

    /// \a fields with each reference to a scalar replaced by that.
    [[nodiscard]] QVariantMap resolved(const QVariantMap &fields) const
    {
        QVariantMap resolved;
        for (auto field = fields.cbegin(); field != fields.cend(); ++field) {
            const QVariant referred = at(*field);
            if (isScalar(referred))
                resolved.insert(field.key(), referred);
            else if (!isUid(*field) || field->value<Uid>().value > 0)
                resolved.insert(field.key(), *field);
        }
        return resolved;
    }

private:
    QVariantList m_objects;
};

} // namespace

QByteArray encode(const QString &className, const QVariantMap &fields)
{
    QVariantMap object = fields;
    object.insert(u"$class"_s, QVariant::fromValue(Uid{2}));
    const QVariantMap description{{u"$classname"_s, className}, {u"$classes"_s, QStringList{className, u"NSObject"_s}}};
    return archive(1, {u"$null"_s, object, description});
}

QByteArray encodeNothing()
{
    return archive(0, {u"$null"_s});
}

std::optional<Object> decode(const QByteArray &archive)
{
    const auto root = PropertyList::decode(archive);
    const QVariantMap parts = root ? root->toMap() : QVariantMap();
    if (parts.value(u"$archiver"_s) != u"NSKeyedArchiver"_s || parts.value(u"$version"_s) != version)
        return {};
    const Objects objects(parts.value(u"$objects"_s).toList());
    QVariantMap fields = objects.at(parts.value(u"$top"_s).toMap().value(u"root"_s)).toMap();
    const QStringList classes = objects.classes(fields.take(u"$class"_s));
    if (classes.isEmpty())
        return {};
    return Object{classes, objects.resolved(fields)};
}

} // namespace Orbita::KeyedArchive
