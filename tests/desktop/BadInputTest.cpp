// Files and pictures that nobody would write on purpose, or only somebody who means harm: the ring is shown all the
// same, and nothing of the user's is lost.

#include "desktop/OrbitaSession.h"
#include "platform/PropertyList.h"
#include "support/RowName.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

QByteArray encoded(const QVariant &root)
{
    return *PropertyList::encode(root, PropertyList::Format::Binary);
}

QVariantMap entry(const QString &className, const QString &name)
{
    return {{u"class"_s, className}, {u"name"_s, name}};
}

QVariantMap coreEntry(const char *name)
{
    return entry(u"CoreMenuItem"_s, QLatin1String(name));
}

/// A file that a test plants. Made when it is needed: some are huge.
struct PlantedFile {
    const char *name;
    const char *file;
    QByteArray (*content)();
};

class DamagedItemFile : public testing::TestWithParam<PlantedFile> {};

TEST_P(DamagedItemFile, isSetAsideAndTheRingStartsAnew)
{
    const QByteArray content = GetParam().content();
    OrbitaSession session;
    session.desktop().folders().write(session.itemFile(), content);
    session.show();
    session.waitForNames(coreEntries);
    session.waitUntilStored(coreEntries);
    EXPECT_TRUE(OrbitaSession::setAside(session.itemFile()) == QList<QByteArray>{content});
    session.dismiss();
}

const PlantedFile damagedFiles[]{
    {"empty", "", [] { return QByteArray(); }},
    {"200 megabytes", "", [] { return QByteArray(200 * 1024 * 1024, '\0'); }},
    {"truncated", "",
     [] {
         return encoded(QVariantList{coreEntry("Finder"), coreEntry("Mail")}).chopped(20);
     }},
    {"a dictionary instead of an array", "",
     [] {
         return encoded(QVariantMap{{u"a"_s, 1}});
     }},
    {"nested 100000 deep", "",
     [] {
         constexpr int depth = 100'000;
         return "<plist version=\"1.0\">" + QByteArray("<array>").repeated(depth)
             + QByteArray("</array>").repeated(depth) + "</plist>";
     }},
};

INSTANTIATE_TEST_SUITE_P(BadInput, DamagedItemFile, testing::ValuesIn(damagedFiles), rowName<PlantedFile>);

TEST(BadInput, entriesOfWrongKindsAreKeptAsideAndTheOthersInPlace)
{
    const QByteArray content
        = encoded(QVariantList{coreEntry("Mail"), 1, u"text"_s, QVariantList{QVariantList()},
                               QVariantMap{{u"class"_s, QVariantList()}}, entry(u"NoSuchMenuItem"_s, u"unknown"_s),
                               QDateTime::currentDateTimeUtc(), QByteArray("bytes"), coreEntry("Safari")});
    OrbitaSession session;
    session.desktop().folders().write(session.itemFile(), content);
    session.show();
    const QStringList kept{u"Finder"_s, u"Mail"_s, u"Safari"_s};
    session.waitForNames(kept);
    session.waitUntilStored(kept);
    EXPECT_EQ(OrbitaSession::setAside(session.itemFile()), QList<QByteArray>{content});
    session.dismiss();
}

TEST(BadInput, hostileNamesAreShownAndKept)
{
    QString controls;
    for (char16_t control = 1; control < 0x20; ++control)
        controls += QChar(control);
    const QStringList names{QString(1'000'000, u'W'), controls, u"\u202e\u2066txt.exe\u2067\u200f\ufeff\u2028"_s,
                            u"e"_s + QString(10'000, QChar(0x301)), u"%s%n%1<b>&amp;\"'\\"_s};
    QVariantList entries;
    for (const QString &name : names)
        entries.append(entry(u"FileMenuItem"_s, name));
    // With titles always shown, the names are laid out as well.
    OrbitaSession session({}, {{u"titleDisplay"_s, 1}, {u"showFinder"_s, false}});
    session.desktop().folders().write(session.itemFile(), encoded(entries));
    session.show();
    waitUntil([&] { return session.items().size() == names.size(); }, u"all entries are shown"_s);
    EXPECT_EQ(session.storedNames(), names);
    session.dismiss();
}

TEST(BadInput, ringOfTenThousandEntriesAnswers)
{
    constexpr int count = 10'000;
    QVariantList entries{coreEntry("Finder")};
    while (entries.size() < count)
        entries.append(entry(u"FileMenuItem"_s, QString::number(entries.size())));
    OrbitaSession session;
    session.desktop().folders().write(session.itemFile(), encoded(entries));
    session.input().moveTo({640, 400});
    session.orbita(u"show"_s);
    session.dismiss();
    EXPECT_EQ(session.storedNames().size(), count);
}

TEST(BadInput, brokenDesktopFilesHideNoOthers)
{
    OrbitaSession session;
    const SessionFolders &folders = session.desktop().folders();
    const QString applications = folders.data() + u"/applications/"_s;
    QDir().mkpath(applications + u"folder.desktop"_s);
    QFile::link(u"loop.desktop"_s, applications + u"loop.desktop"_s);
    QFile::link(u"."_s, applications + u"endless"_s);
    QFile::link(u"/nowhere"_s, applications + u"dangling.desktop"_s);
    folders.installApplication(u"bytes"_s, QByteArray(100'000, '\xff'));
    folders.installApplication(u"groupless"_s, "Name=Groupless\nExec=true\n");
    folders.installApplication(u"long"_s, "[Desktop Entry]\nName=" + QByteArray(5'000'000, 'W') + '\n');
    const QString good = session.install(u"Good One"_s, u"good"_s);
    session.startWindow(u"good"_s);
    session.show();
    session.waitForNames(coreEntries + QStringList(u"Good One"_s));

    QFile::remove(good);
    session.waitUntilStill();
    waitUntil([&] { return session.items().size() == coreEntries.size() + 1; },
              u"what runs stays in the ring without its file"_s);
    session.dismiss();
}

QByteArray png(QSize size)
{
    QImage image(size, QImage::Format_Mono);
    image.fill(0); // black
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

class BadApplicationIcon : public testing::TestWithParam<PlantedFile> {};

TEST_P(BadApplicationIcon, leavesAllEntriesWithAPicture)
{
    OrbitaSession session;
    const QString icon = session.desktop().folders().write(QLatin1String(GetParam().file), GetParam().content());
    session.install(u"Bad Icon"_s, u"bad"_s, {}, u"Icon="_s + icon);
    session.startWindow(u"bad"_s);
    session.show();
    session.waitForNames(coreEntries + QStringList(u"Bad Icon"_s));
    for (const ShownItem &item : session.items()) {
        const auto isDrawn = [&] {
            const QImage picture = session.desktop().screen().shot(item.rect);
            QImage plain = picture;
            plain.fill(picture.pixel(0, 0));
            return picture != plain;
        };
        waitUntil(isDrawn, u"\"%1\" has a picture"_s.arg(item.name));
    }
    session.dismiss();
}

const PlantedFile badIcons[]{
    {"corrupt PNG", "icon.png",
     [] {
         return png({64, 64}).first(60) + QByteArray(500, '\x7f');
     }},
    {"PNG of 20000 by 20000 pixels", "icon.png",
     [] {
         return png({20'000, 20'000});
     }},
    {"PNG of 20000 by 1 pixels", "icon.png",
     [] {
         return png({20'000, 1});
     }},
    {"SVG that includes itself", "icon.svg",
     [] {
         return QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:x=\"http://www.w3.org/1999/xlink\" "
                           "viewBox=\"0 0 9 9\"><g id=\"a\"><use x:href=\"#a\"/></g></svg>");
     }},
};

INSTANTIATE_TEST_SUITE_P(BadInput, BadApplicationIcon, testing::ValuesIn(badIcons), rowName<PlantedFile>);

} // namespace
} // namespace Orbita
