#include "platform/PropertyList.h"

#include "support/RowName.h"
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

struct ValueRow {
    const char *name;
    QVariant value;
};

void PrintTo(const ValueRow &row, std::ostream *stream)
{
    *stream << row.name;
}

class EveryValue : public testing::TestWithParam<ValueRow> {};

TEST_P(EveryValue, survivesBothFormats)
{
    const QVariant root = QVariantMap{{QStringLiteral("k\u00e9y"), QVariantList{GetParam().value, true}}};
    for (const Format format : {Format::Xml, Format::Binary}) {
        const auto bytes = PropertyList::encode(root, format);
        ASSERT_TRUE(bytes);
        const auto decoded = PropertyList::decode(*bytes);
        ASSERT_TRUE(decoded) << bytes->constData();
        EXPECT_EQ(*decoded, root) << bytes->constData();
        const QVariant value = decoded->toMap().first().toList().first();
        EXPECT_EQ(value.metaType().name(), std::string(GetParam().value.metaType().name()));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Values, EveryValue,
    testing::Values(ValueRow{"text beyond the basic plane", QStringLiteral("Gr\u00f6\u00dfe \U0001F600 <&>\"' ]]>")},
                    ValueRow{"blanks and line ends", QStringLiteral("  a\r\nb\rc\td\n ")},
                    ValueRow{"empty text", QString()},
                    ValueRow{"a megabyte of text that needs escapes", QString(1'000'000, u'&')},
                    ValueRow{"bytes with NULs", QByteArray("\0\1\xff\0", 4)}, ValueRow{"no bytes", QByteArray("")},
                    ValueRow{"bytes that look like text", QByteArray("text")}, ValueRow{"true", true},
                    ValueRow{"false", false}, ValueRow{"zero", qint64(0)}, ValueRow{"a negative number", qint64(-1)},
                    ValueRow{"the lowest number", std::numeric_limits<qint64>::min()},
                    ValueRow{"the highest signed number", std::numeric_limits<qint64>::max()},
                    ValueRow{"the number after the highest signed one", quint64(1) << 63},
                    ValueRow{"the highest number", std::numeric_limits<quint64>::max()}, ValueRow{"a broken real", 0.1},
                    ValueRow{"a whole real", 3.0}, ValueRow{"a tiny real", 4.9e-324}, ValueRow{"a huge real", -1.7e308},
                    ValueRow{"infinity", std::numeric_limits<double>::infinity()}, ValueRow{"a date", someDate},
                    ValueRow{"a date before the epoch", someDate.addYears(-60)},
                    ValueRow{"a UID", QVariant::fromValue(Uid{77})}, ValueRow{"an empty array", QVariantList()},
                    ValueRow{"an empty dictionary", QVariantMap()},
                    ValueRow{"a nested array", QVariantList{QVariantList{QVariantList{qint64(1)}}, QVariantMap()}}),
    rowName<ValueRow>);

TEST(PropertyListText, losesOnlyWhatXmlCannotCarry)
{
    const QString hostile = QString(QChar(u'a')) + QChar::Null + u'b' + QChar(0xd800) + u'c' + QChar(0xffff);
    const auto roundTrip = [](const QString &text, Format format) {
        return PropertyList::decode(PropertyList::encode(QVariantMap{{text, text}}, format).value()).value().toMap();
    };
    EXPECT_EQ(roundTrip(hostile, Format::Binary), (QVariantMap{{hostile, hostile}}));
    const QString mended = QStringLiteral("a\ufffdb\ufffdc\ufffd");
    EXPECT_EQ(roundTrip(hostile, Format::Xml), (QVariantMap{{mended, mended}}));
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

QVariant nested(int depth)
{
    QVariant value = true;
    for (int i = 1; i < depth; ++i)
        value = i % 2 ? QVariant(QVariantList{value}) : QVariant(QVariantMap{{QStringLiteral("k"), value}});
    return value;
}

TEST(PropertyListEncode, refusesWhatCouldNotBeReadBack)
{
    for (const Format format : {Format::Xml, Format::Binary}) {
        const auto deepest = PropertyList::encode(nested(PropertyList::maximumDepth), format);
        ASSERT_TRUE(deepest);
        EXPECT_TRUE(PropertyList::decode(*deepest));
        for (const QVariant &value : {QVariant(), QVariant(QVariantList{QVariant()}), QVariant(QSize(1, 2)),
                                      QVariant(QDateTime()), nested(PropertyList::maximumDepth + 1),
                                      QVariant(QVariantList(PropertyList::maximumValues, QVariant(true)))}) {
            const auto refused = PropertyList::encode(value, format);
            ASSERT_FALSE(refused);
            EXPECT_EQ(refused.error(), WriteError::NotRepresentable);
        }
        const auto most = PropertyList::encode(QVariantList(PropertyList::maximumValues - 1, QVariant(true)), format);
        ASSERT_TRUE(most);
        EXPECT_TRUE(PropertyList::decode(*most));
    }
}

TEST(PropertyListEncode, keepsTenThousandEntries)
{
    QVariantList list;
    for (int i = 0; i < 10'000; ++i)
        list.append(QVariantMap{{QStringLiteral("class"), QStringLiteral("AppMenuItem")},
                                {QStringLiteral("name"), QString::number(i)},
                                {QStringLiteral("bookmark"), QByteArray(200, char(i))}});
    for (const Format format : {Format::Xml, Format::Binary}) {
        const auto bytes = PropertyList::encode(list, format);
        ASSERT_TRUE(bytes);
        const auto decoded = PropertyList::decode(*bytes);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->toList(), list);
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

struct BadRow {
    const char *name;
    QByteArray bytes;
    ReadError error;
};

void PrintTo(const BadRow &row, std::ostream *stream)
{
    *stream << row.name;
}

class BadPropertyList : public testing::TestWithParam<BadRow> {};

TEST_P(BadPropertyList, isRefused)
{
    const auto decoded = PropertyList::decode(GetParam().bytes);
    ASSERT_FALSE(decoded);
    EXPECT_EQ(decoded.error(), GetParam().error);
}

const QByteArray megabyte = QByteArray("\x4f\x12\x00\x10\x00\x00", 6) + QByteArray(1 << 20, 'x');
const QByteArray sizeBeyondTheFile = QByteArray("\x4f\x13\x7f\xff\xff\xff\xff\xff\xff\xff", 10);

INSTANTIATE_TEST_SUITE_P(
    Xml, BadPropertyList,
    testing::Values(
        BadRow{"nothing", {}, ReadError::Malformed}, BadRow{"blanks", "    \n  ", ReadError::Malformed},
        BadRow{"NULs", QByteArray(100, '\0'), ReadError::Malformed},
        BadRow{"another document", "<html><array/></html>", ReadError::Malformed},
        BadRow{"no root", xml({}), ReadError::Malformed},
        BadRow{"two roots", xml("<true/><true/>"), ReadError::Malformed},
        BadRow{"cut off", xml("<array><string>abc"), ReadError::Malformed},
        BadRow{"cut off before the end", xml("<array/>").chopped(10), ReadError::Malformed},
        BadRow{"an unknown element", xml("<set/>"), ReadError::Malformed},
        BadRow{"loose text", xml("<array>a</array>"), ReadError::Malformed},
        BadRow{"a value without a key", xml("<dict><true/></dict>"), ReadError::Malformed},
        BadRow{"a key without a value", xml("<dict><key>a</key></dict>"), ReadError::Malformed},
        BadRow{"an element in a text", xml("<string>a<b/></string>"), ReadError::Malformed},
        BadRow{"no number", xml("<integer>x</integer>"), ReadError::Malformed},
        BadRow{"a number beyond 64 bits", xml("<integer>18446744073709551616</integer>"), ReadError::Malformed},
        BadRow{"no real", xml("<real>1,5</real>"), ReadError::Malformed},
        BadRow{"no date", xml("<date>yesterday</date>"), ReadError::Malformed},
        BadRow{"no Base64", xml("<data>QU!D</data>"), ReadError::Malformed},
        BadRow{"an unknown entity", xml("<string>&nope;</string>"), ReadError::Malformed},
        BadRow{"an external entity",
               "<!DOCTYPE plist [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><plist><string>&x;</string></plist>",
               ReadError::Malformed},
        BadRow{"an entity of its own", "<!DOCTYPE plist [<!ENTITY x \"hi\">]><plist><string>&x;</string></plist>",
               ReadError::Malformed},
        BadRow{"an attribute of its own", "<!DOCTYPE plist [<!ATTLIST plist a CDATA 'x'>]><plist><true/></plist>",
               ReadError::Malformed},
        BadRow{"a million attributes", "<plist " + QByteArray("a='>' ").repeated(1'000'000) + "><true/></plist>",
               ReadError::Malformed},
        BadRow{"200,000 open arrays", QByteArray("<plist>") + QByteArray("<array>").repeated(200'000),
               ReadError::TooDeep},
        BadRow{"100,000 nested dictionaries",
               xml(QByteArray("<dict><key>k</key>").repeated(100'000) + "<true/>"
                   + QByteArray("</dict>").repeated(100'000)),
               ReadError::TooDeep},
        BadRow{"too many values", xml("<array>" + QByteArray("<true/>").repeated(1'000'001) + "</array>"),
               ReadError::TooLarge}),
    rowName<BadRow>);

INSTANTIATE_TEST_SUITE_P(
    Binary, BadPropertyList,
    testing::Values(BadRow{"only the magic", "bplist00", ReadError::Malformed},
                    BadRow{"cut off", binary({"\x09"}).chopped(1), ReadError::Malformed},
                    BadRow{"a null", binary({QByteArray(1, '\0')}), ReadError::Malformed},
                    BadRow{"a root that is not there", binary({"\x09"}, 1, 5), ReadError::Malformed},
                    BadRow{"an element that is not there", binary({"\xa1\x05"}), ReadError::Malformed},
                    BadRow{"a key that is no text", binary({"\xd1\x01\x01", "\x09"}), ReadError::Malformed},
                    BadRow{"a size beyond the file", binary({sizeBeyondTheFile}), ReadError::Malformed},
                    BadRow{"references of no bytes", binary({"\x09"}, 0), ReadError::Malformed},
                    BadRow{"references of nine bytes", binary({"\x09"}, 9), ReadError::Malformed},
                    BadRow{"an array that holds itself", binary({QByteArray("\xa1\x00", 2)}), ReadError::TooDeep},
                    BadRow{"a cycle of two", binary({QByteArray("\xa1\x01"), QByteArray("\xa1\x00", 2)}),
                           ReadError::TooDeep},
                    BadRow{"200,000 arrays in each other", chain(200'000), ReadError::TooDeep},
                    BadRow{"a chain one too deep", chain(512), ReadError::TooDeep},
                    BadRow{"shared arrays that expand to billions", laughs(10, 14, "\x09"), ReadError::TooLarge},
                    BadRow{"a shared megabyte a hundred times", laughs(2, 10, megabyte), ReadError::TooLarge}),
    rowName<BadRow>);

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
