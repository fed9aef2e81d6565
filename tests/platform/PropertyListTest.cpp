#include "platform/PropertyList.h"

#include "support/TemporaryContainer.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QSize>

#include <plist/plist.h>

#include <cstdlib>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace Orbita {
namespace {

using PropertyList::Format;
using PropertyList::ReadError;
using PropertyList::Uid;
using PropertyList::WriteError;

const QDateTime someDate(QDate(2024, 2, 29), QTime(23, 59, 58), Qt::UTC);

TEST(PropertyListFormats, keepEveryValue)
{
    using Limits = std::numeric_limits<qint64>;
    const QVariantList values{QStringLiteral("Gr\u00f6\u00dfe \U0001F600 <&>\"' ]]>"), // beyond the basic plane
                              QStringLiteral("  a\r\nb\rc\td\n "),
                              QString(),
                              QByteArray("\0\1\xff\0", 4),
                              QByteArray(""),
                              true,
                              Limits::min(),
                              Limits::max(),
                              quint64(1) << 63,
                              ~quint64(0),
                              0.1,
                              4.9e-324,
                              std::numeric_limits<double>::infinity(),
                              someDate,
                              someDate.addYears(-60),
                              QVariant::fromValue(Uid{77}),
                              QVariant(QVariantList()),
                              QVariant(QVariantList{QVariantList{QVariantList{qint64(1)}}, QVariantMap()})};
    for (const QVariant &value : values) {
        const QVariant root = QVariantMap{{QStringLiteral("k\u00e9y"), QVariantList{value, true}}};
        for (const Format format : {Format::Xml, Format::Binary}) {
            const auto bytes = PropertyList::encode(root, format);
            ASSERT_TRUE(bytes);
            const auto decoded = PropertyList::decode(*bytes);
            ASSERT_TRUE(decoded) << bytes->constData();
            EXPECT_EQ(*decoded, root) << bytes->constData();
            EXPECT_EQ(decoded->toMap().first().toList().first().metaType(), value.metaType()) << bytes->constData();
        }
    }
}

TEST(PropertyListFormats, areThoseOfOtherPrograms)
{
    const QVariant root = QVariantMap{
        {QStringLiteral("list"), QVariantList(20, QStringLiteral("shared"))},
        {QStringLiteral("numbers"),
         QVariantList{qint64(-1), qint64(255), qint64(65536), qint64(1) << 40, ~quint64(0), 0.1, -2.5e-7}},
        {QStringLiteral("text \u00e9"), QStringLiteral("a longer text with \U0001F600 in it")},
        {QStringLiteral("data"), QByteArray(300, '\x80')},
        {QStringLiteral("other"), QVariantList{true, false, someDate, QVariant::fromValue(Uid{70000}), QVariantMap()}}};
    for (const Format format : {Format::Xml, Format::Binary}) {
        const QByteArray ours = PropertyList::encode(root, format).value();
        plist_t node = nullptr;
        plist_from_memory(ours.constData(), uint32_t(ours.size()), &node);
        ASSERT_TRUE(node);
        char *text = nullptr;
        char *bytes = nullptr;
        uint32_t textSize = 0;
        uint32_t bytesSize = 0;
        plist_to_xml(node, &text, &textSize);
        plist_to_bin(node, &bytes, &bytesSize);
        EXPECT_EQ(PropertyList::decode(QByteArray(text, textSize)).value(), root) << text;
        if (format == Format::Binary) { // from XML a UID stays a dictionary
            EXPECT_EQ(PropertyList::decode(QByteArray(bytes, bytesSize)).value(), root) << text;
        }
        plist_free(node);
        std::free(text);
        std::free(bytes);
    }
}

QVariant nested(int depth, QVariant value = true)
{
    for (int i = 1; i < depth; ++i)
        value = i % 2 ? QVariant(QVariantList{value}) : QVariant(QVariantMap{{QStringLiteral("k"), value}});
    return value;
}

TEST(PropertyListEncode, refusesWhatCouldNotBeReadBack)
{
    for (const Format format : {Format::Xml, Format::Binary}) {
        const QString aMegabyte(1024 * 1024, u'x');
        for (const QVariant &most :
             {nested(PropertyList::maximumDepth), nested(PropertyList::maximumDepth - 1, QVariant::fromValue(Uid{1})),
              QVariant(QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59), Qt::UTC)),
              QVariant(QVariantList(15, aMegabyte))}) {
            const auto bytes = PropertyList::encode(most, format);
            ASSERT_TRUE(bytes);
            const auto decoded = PropertyList::decode(*bytes);
            EXPECT_TRUE(decoded && *decoded == most) << most.typeName();
        }
        for (const QVariant &value :
             {QVariant(), QVariant(QVariantList{QVariant()}), QVariant(QSize(1, 2)), QVariant(QDateTime()),
              nested(PropertyList::maximumDepth + 1), nested(PropertyList::maximumDepth, QVariant::fromValue(Uid{1})),
              QVariant(QVariantList(PropertyList::maximumValues, QVariant(true))),
              QVariant(QStringList(PropertyList::maximumValues, QString())),
              QVariant(QVariantList(17, aMegabyte))}) { // written once in the binary format
            const auto refused = PropertyList::encode(value, format);
            ASSERT_FALSE(refused);
            EXPECT_EQ(refused.error(), WriteError::NotRepresentable);
        }
        QVariantList most(PropertyList::maximumValues - 1, QVariant(true));
        most.last() = QStringLiteral("last");
        const auto bytes = PropertyList::encode(most, format);
        ASSERT_TRUE(bytes);
        EXPECT_TRUE(PropertyList::decode(*bytes).value().toList() == most);
    }
}

/// A binary property list made by hand: objects, and a trailer that says which is the root.
QByteArray binary(const QList<QByteArray> &objects, char referenceSize = 1, qsizetype root = 0)
{
    QByteArray bytes = "bplist00";
    QByteArray table;
    const auto appendNumber = [](QByteArray &to, quint64 number, int size) {
        for (int i = size - 1; i >= 0; --i)
            to.append(char(number >> (8 * i)));
    };
    for (const QByteArray &object : objects) {
        appendNumber(table, quint64(bytes.size()), 4);
        bytes += object;
    }
    const qsizetype tableAt = bytes.size();
    bytes += table + QByteArray(6, '\0') + char(4) + referenceSize;
    appendNumber(bytes, quint64(objects.size()), 8);
    appendNumber(bytes, quint64(root), 8);
    appendNumber(bytes, quint64(tableAt), 8);
    return bytes;
}

/// Arrays each of which holds the next one \a width times, the last one \a leaf.
QByteArray laughs(int levels, int width, const QByteArray &leaf)
{
    QList<QByteArray> objects;
    for (int level = 1; level <= levels; ++level)
        objects.append(char(0xa0 | width) + QByteArray(width, char(level)));
    objects.append(leaf);
    return binary(objects);
}

QByteArray chain(int length)
{
    QList<QByteArray> objects;
    for (int i = 1; i <= length; ++i)
        objects.append(QByteArray("\xa1") + char(i >> 16) + char(i >> 8) + char(i));
    objects.append("\x09");
    return binary(objects, 3);
}

QByteArray xml(const QByteArray &content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + content + "</plist>\n";
}

TEST(PropertyListDecode, refusesWhatIsMalformedTooDeepOrTooLarge)
{
    const QByteArray megabyte = QByteArray("\x4f\x12\x00\x10\x00\x00", 6) + QByteArray(1 << 20, 'x');
    const QByteArray sizeBeyondTheFile("\x4f\x13\x7f\xff\xff\xff\xff\xff\xff\xff", 10);
    const QByteArray ownEntity = "<!DOCTYPE plist [<!ENTITY x \"hi\">]><plist><string>&x;</string></plist>";
    using enum ReadError;
    const std::vector<std::tuple<const char *, QByteArray, ReadError>> rows{
        {"nothing", {}, Malformed},
        {"another document", "<html><array/></html>", Malformed},
        {"two roots", xml("<true/><true/>"), Malformed},
        {"cut off", xml("<array><string>abc"), Malformed},
        {"an unknown element", xml("<set/>"), Malformed},
        {"a key without a value", xml("<dict><key>a</key></dict>"), Malformed},
        {"an element in a text", xml("<string>a<b/></string>"), Malformed},
        {"a number beyond 64 bits", xml("<integer>18446744073709551616</integer>"), Malformed},
        {"no Base64", xml("<data>QU!D</data>"), Malformed},
        {"an unknown entity", xml("<string>&nope;</string>"), Malformed},
        {"an external entity", QByteArray(ownEntity).replace("\"hi\"", "SYSTEM \"file:///etc/passwd\""), Malformed},
        {"an entity of its own", ownEntity, Malformed},
        {"a million attributes", "<plist " + QByteArray("a='>' ").repeated(1'000'000) + "><true/></plist>", Malformed},
        {"200,000 open arrays", QByteArray("<plist>") + QByteArray("<array>").repeated(200'000), TooDeep},
        {"100,000 nested dictionaries",
         xml(QByteArray("<dict><key>k</key>").repeated(100'000) + "<true/>" + QByteArray("</dict>").repeated(100'000)),
         TooDeep},
        {"too many values", xml("<array>" + QByteArray("<true/>").repeated(1'000'001) + "</array>"), TooLarge},
        {"cut off", binary({"\x09"}).chopped(1), Malformed},
        {"a null", binary({QByteArray(1, '\0')}), Malformed},
        {"a root that is not there", binary({"\x09"}, 1, 5), Malformed},
        {"an element that is not there", binary({"\xa1\x05"}), Malformed},
        {"a key that is no text", binary({"\xd1\x01\x01", "\x09"}), Malformed},
        {"a size beyond the file", binary({sizeBeyondTheFile}), Malformed},
        {"references of nine bytes", binary({"\x09"}, 9), Malformed},
        {"an array that holds itself", binary({QByteArray("\xa1\x00", 2)}), TooDeep},
        {"200,000 arrays in each other", chain(200'000), TooDeep},
        {"a chain one too deep", chain(512), TooDeep},
        {"shared arrays that expand to billions", laughs(10, 14, "\x09"), TooLarge},
        {"a shared megabyte a hundred times", laughs(2, 10, megabyte), TooLarge},
    };
    for (const auto &[name, bytes, error] : rows) {
        const auto decoded = PropertyList::decode(bytes);
        ASSERT_FALSE(decoded) << name;
        EXPECT_EQ(decoded.error(), error) << name;
    }
}

TEST(PropertyListDecode, takesAnythingWithoutFault)
{
    const QVariant root = QVariantMap{{QStringLiteral("a"), QVariantList{qint64(-1), 0.5, QStringLiteral("\u00e9")}},
                                      {QStringLiteral("b"), QVariantMap{{QStringLiteral("c"), QByteArray(40, 'x')}}},
                                      {QStringLiteral("d"), someDate}};
    for (const Format format : {Format::Xml, Format::Binary}) {
        const QByteArray whole = PropertyList::encode(root, format).value();
        quint32 random = 1;
        int refused = 0;
        for (int round = 0; round < 20'000; ++round) {
            QByteArray bytes = whole;
            for (int change = 0; change < 3; ++change) {
                random = random * 1664525 + 1013904223;
                bytes[qsizetype(random >> 8) % bytes.size()] = char(random);
            }
            refused += PropertyList::decode(bytes) ? 0 : 1;
        }
        EXPECT_GT(refused, 0);
        for (qsizetype size = 0; size + 2 < whole.size(); ++size) // without the last line's end it is whole
            EXPECT_FALSE(PropertyList::decode(whole.first(size))) << size;
    }
}

TEST(PropertyListDecode, acceptsWhatOthersWrite)
{
    const QByteArray bytes = "\xef\xbb\xbf<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                             "<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"http://example.org/p.dtd\">"
                             "<!-- note ==================== --><plist "
                             "version=\"1.0\"><array>\n\t<string>a&#x1F600;<![CDATA[<b>]]></string>"
                             "<data>\n\tQUJD\n\tREVG\n\t</data><integer> 5 </integer><!-- x --><string>\xff</string>"
                             "</array></plist>";
    const auto decoded = PropertyList::decode(bytes);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(
        decoded->toList(),
        (QVariantList{QStringLiteral("a\U0001F600<b>"), QByteArray("ABCDEF"), qint64(5), QStringLiteral("\ufffd")}));
}

TEST(PropertyListRead, tellsWhyThereIsNone)
{
    const TemporaryContainer container;
    const QString sparse = container.write(QStringLiteral("sparse"), {});
    ASSERT_EQ(::truncate(sparse.toLocal8Bit().constData(), 200'000'000), 0);
    const QString pipe = container.path(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);

    EXPECT_EQ(PropertyList::read(container.path(QStringLiteral("none"))).error(), ReadError::Missing);
    EXPECT_EQ(PropertyList::read(container.path(QStringLiteral("sparse/none"))).error(), ReadError::Missing);
    EXPECT_EQ(PropertyList::read(sparse).error(), ReadError::TooLarge);
    EXPECT_EQ(PropertyList::read(pipe).error(), ReadError::Unreadable);
    EXPECT_EQ(PropertyList::read(container.directories().container).error(), ReadError::Unreadable);
    EXPECT_EQ(PropertyList::read(container.write(QStringLiteral("e"), {})).error(), ReadError::Malformed);
}

} // namespace
} // namespace Orbita
