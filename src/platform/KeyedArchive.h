#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// Property lists that hold one object by its class and named fields.
///
/// The root dictionary names its `$archiver` and `$version`. `$objects` lists all objects, the first of which is
/// "$null" and stands for nothing; `$top` refers to one of them as its "root". An object is a dictionary of its fields
/// with a reference to its `$class`, a dictionary as well: `$classname` and, from that class up to the one without a
/// parent, `$classes`.
namespace Orbita::KeyedArchive {

/// An object in an archive.
struct Object {
    QStringList classes; ///< its class, followed by those that it descends from
    QVariantMap fields;  ///< values as PropertyList decodes them
};

/// The binary archive of an object of \a className, a direct child of the class that has no parent. The values of
/// \a fields are integers, reals and booleans, and no name begins with "$".
[[nodiscard]] QByteArray encode(const QString &className, const QVariantMap &fields);
/// The binary archive of no object.
[[nodiscard]] QByteArray encodeNothing();

/// The object in \a archive, which is binary or XML; nothing for an archive of none, and for what is no archive.
///
/// A field that refers to a number, a string, data or a date holds that; one that refers to nothing is left out; any
/// other reference stays a PropertyList::Uid. Untrusted input is fine.
[[nodiscard]] std::optional<Object> decode(const QByteArray &archive);

} // namespace Orbita::KeyedArchive
