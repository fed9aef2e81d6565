#include "platform/KeyedArchive.h"

#include "platform/PropertyList.h"

#include <gtest/gtest.h>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

const QByteArray keyArchive = QByteArray::fromBase64(
    "YnBsaXN0MDDUAQIDBAUGBwpZJGFyY2hpdmVyWCR2ZXJzaW9uVCR0b3BYJG9iamVjdHNfEA9OU0tleWVkQXJjaGl2ZXISAAGGoNEICVRyb290gAGj"
    "CwwTVSRudWxs0w0ODxAREldLZXlDb2RlXU1vZGlmaWVyRmxhZ3NWJGNsYXNzEDESAAgAAIAC0hQVFhdaJGNsYXNzbmFtZVgkY2xhc3Nlc1tNQVNT"
    "aG9ydGN1dKIWGFhOU09iamVjdAgRGyQpMkRJTFFTV11kbHqBg4iKj5qjr7IAAAAAAAABAQAAAAAAAAAZAAAAAAAAAAAAAAAAAAAAuw==");
const QByteArray nothingArchive = QByteArray::fromBase64(
    "YnBsaXN0MDDUAQIDBAUGBwpZJGFyY2hpdmVyWCR2ZXJzaW9uVCR0b3BYJG9iamVjdHNfEA9OU0tleWVkQXJjaGl2ZXISAAGGoNEICVRyb290gACh"
    "C1UkbnVsbAgRGyQpMkRJTFFTVQAAAAAAAAEBAAAAAAAAAAwAAAAAAAAAAAAAAAAAAABb");
const auto uid = [](quint64 number) { return QVariant::fromValue(PropertyList::Uid{number}); };
const QVariantMap keyFields{{u"KeyCode"_s, 49LL}, {u"ModifierFlags"_s, 0x80000LL}};

/// The parts of the archive above.
QVariantMap parts(const QByteArray &archive = keyArchive)
{
    return PropertyList::decode(archive).value().toMap();
}

TEST(KeyedArchive, isThatOfTheOtherPlatform)
{
    EXPECT_EQ(parts(KeyedArchive::encode(u"MASShortcut"_s, keyFields)), parts());
    EXPECT_EQ(parts(KeyedArchive::encodeNothing()), parts(nothingArchive));
    EXPECT_FALSE(KeyedArchive::decode(nothingArchive));
    const QByteArray xml = PropertyList::encode(parts(), PropertyList::Format::Xml).value();
    for (const QByteArray &archive : {keyArchive, xml}) {
        const auto object = KeyedArchive::decode(archive);
        ASSERT_TRUE(object);
        EXPECT_EQ(object->classes, QStringList({u"MASShortcut"_s, u"NSObject"_s}));
        EXPECT_EQ(object->fields, keyFields);
    }
}

/// The archive above with its \a part replaced.
std::optional<KeyedArchive::Object> decodedWith(const QString &part, const QVariant &value)
{
    QVariantMap changed = parts();
    changed[part] = value;
    return KeyedArchive::decode(PropertyList::encode(changed, PropertyList::Format::Binary).value());
}

TEST(KeyedArchive, resolvesReferencesToScalarsOnly)
{
    QVariantList objects = parts()[u"$objects"_s].toList();
    objects[1] = QVariantMap{
        {u"$class"_s, uid(2)}, {u"self"_s, uid(1)}, {u"outside"_s, uid(99)}, {u"none"_s, uid(0)}, {u"name"_s, uid(3)}};
    objects.append(u"text"_s);
    const auto object = decodedWith(u"$objects"_s, objects);
    ASSERT_TRUE(object);
    EXPECT_EQ(object->fields, QVariantMap({{u"self"_s, uid(1)}, {u"outside"_s, uid(99)}, {u"name"_s, u"text"_s}}));
}

TEST(KeyedArchive, refusesOtherBytes)
{
    EXPECT_FALSE(decodedWith(u"$archiver"_s, u"Other"_s));
    EXPECT_FALSE(decodedWith(u"$version"_s, 99999));
    for (const QVariant &root : {uid(3), uid(~0ULL), uid(2), QVariant(1)})
        EXPECT_FALSE(decodedWith(u"$top"_s, QVariantMap{{u"root"_s, root}}));
    const QVariant name = u"Key"_s;
    for (const QVariant &names : {name, QVariant(QVariantList()), QVariant(QVariantList{name, 1})}) {
        const QVariantMap description{{u"$classname"_s, name}, {u"$classes"_s, names}};
        EXPECT_FALSE(decodedWith(u"$objects"_s, QVariantList{0, QVariantMap{{u"$class"_s, uid(2)}}, description}));
    }
    for (const QVariant &type : {uid(0), uid(1), uid(3), QVariant(2)})
        EXPECT_FALSE(decodedWith(u"$objects"_s, QVariantList{0, QVariantMap{{u"$class"_s, type}}}));
    for (qsizetype size = 0; size < keyArchive.size(); ++size)
        EXPECT_FALSE(KeyedArchive::decode(keyArchive.first(size))) << size;
}

} // namespace
} // namespace Orbita
