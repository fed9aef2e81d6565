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

const QStringList coreEntries{QStringLiteral("Finder"), QStringLiteral("Launchpad"), QStringLiteral("App Store"),
                              QStringLiteral("iTunes"), QStringLiteral("Safari"),    QStringLiteral("Mail")};

QByteArray encoded(const QVariant &root)
{
    return *PropertyList::encode(root, PropertyList::Format::Binary);
}

QVariantMap entry(const QString &className, const QString &name)
{
    return {{QStringLiteral("class"), className}, {QStringLiteral("name"), name}};
}

QVariantMap coreEntry(const char *name)
{
    return entry(QStringLiteral("CoreMenuItem"), QLatin1String(name));
}

/// The present item file holds \a names.
void waitUntilStored(const OrbitaSession &session, const QStringList &names)
{
    waitUntil(
        [&] { return session.storedNames() == names; },
        [&] { return QStringLiteral("the file holds the entries; it holds ") + session.storedNames().join(u", "); });
}

struct DamagedFile {
    const char *name;
    QByteArray (*content)();
};

class DamagedItemFile : public testing::TestWithParam<DamagedFile> {};

TEST_P(DamagedItemFile, isSetAsideAndTheRingStartsAnew)
{
    const QByteArray content = GetParam().content();
    OrbitaSession session;
    session.desktop().folders().write(session.itemFile(), content);
    session.show();
    session.waitForNames(coreEntries);
    waitUntilStored(session, coreEntries);
    EXPECT_TRUE(OrbitaSession::setAside(session.itemFile()) == QList<QByteArray>{content});
    session.dismiss();
}

const DamagedFile damagedFiles[]{
    {"empty", [] { return QByteArray(); }},
    {"truncated",
     [] {
         return encoded(QVariantList{coreEntry("Finder"), coreEntry("Mail")}).chopped(20);
     }},
    {"a dictionary instead of an array",
     [] {
         return encoded(QVariantMap{{QStringLiteral("a"), 1}});
     }},
    {"nested 100000 deep",
     [] {
         constexpr int depth = 100'000;
         return "<plist version=\"1.0\">" + QByteArray("<array>").repeated(depth)
             + QByteArray("</array>").repeated(depth) + "</plist>";
     }},
};

INSTANTIATE_TEST_SUITE_P(BadInput, DamagedItemFile, testing::ValuesIn(damagedFiles), rowName<DamagedFile>);

TEST(BadInput, itemFileOf200MegabytesIsSetAside)
{
    constexpr qint64 size = 200LL * 1024 * 1024;
    OrbitaSession session;
    session.desktop().folders().write(session.itemFile(), QByteArray());
    ASSERT_TRUE(QFile::resize(session.itemFile(), size)); // takes no room on the disk
    session.show();
    session.waitForNames(coreEntries);
    waitUntilStored(session, coreEntries);
    const QFileInfo file(session.itemFile());
    const QFileInfoList aside = file.dir().entryInfoList({file.fileName() + QStringLiteral(".damaged-*")});
    ASSERT_EQ(aside.size(), 1);
    EXPECT_EQ(aside.first().size(), size);
    session.dismiss();
}

TEST(BadInput, entriesOfWrongKindsAreKeptAsideAndTheOthersInPlace)
{
    const QVariantMap classless{{QStringLiteral("class"), QVariantList()}};
    const QByteArray content
        = encoded(QVariantList{coreEntry("Mail"), 1, QStringLiteral("text"), QVariantList{QVariantList()}, classless,
                               entry(QStringLiteral("NoSuchMenuItem"), QStringLiteral("unknown")),
                               QDateTime::currentDateTimeUtc(), QByteArray("bytes"), coreEntry("Safari")});
    OrbitaSession session;
    session.desktop().folders().write(session.itemFile(), content);
    session.show();
    const QStringList kept{QStringLiteral("Finder"), QStringLiteral("Mail"), QStringLiteral("Safari")};
    session.waitForNames(kept);
    waitUntilStored(session, kept);
    EXPECT_EQ(OrbitaSession::setAside(session.itemFile()), QList<QByteArray>{content});
    session.dismiss();
}

TEST(BadInput, hostileNamesAreShownAndKept)
{
    QString controls;
    for (char16_t control = 1; control < 0x20; ++control)
        controls += QChar(control);
    const QString bidirectional = QStringLiteral("\u202e\u2066txt.exe\u2067\u200f\ufeff\u2028");
    const QString combining = QStringLiteral("e") + QString(10'000, QChar(0x301));
    const QString percent = QStringLiteral("%s%n%1<b>&amp;\"'\\");
    QStringList names{QStringLiteral("Finder"), QString(1'000'000, u'W'), controls, bidirectional, combining, percent};
    QVariantList entries{coreEntry("Finder")};
    for (const QString &name : names.mid(1))
        entries.append(entry(QStringLiteral("FileMenuItem"), name));
    const QByteArray content = encoded(entries);
    // With titles always shown, the names are laid out as well.
    OrbitaSession session({}, {{QStringLiteral("titleDisplay"), 1}});
    session.desktop().folders().write(session.itemFile(), content);
    session.show();
    waitUntil([&] { return session.items().size() == names.size(); }, QStringLiteral("all entries are shown"));
    EXPECT_EQ(session.storedNames(), names);
    session.dismiss();
}

TEST(BadInput, ringOfTenThousandEntriesAnswers)
{
    constexpr int count = 10'000;
    QVariantList entries{coreEntry("Finder")};
    while (entries.size() < count)
        entries.append(entry(QStringLiteral("FileMenuItem"), QString::number(entries.size())));
    OrbitaSession session;
    session.desktop().folders().write(session.itemFile(), encoded(entries));
    session.input().moveTo({640, 400});
    ASSERT_EQ(session.orbita({QStringLiteral("show")}), 0);
    session.waitForRing();
    session.dismiss();
    EXPECT_EQ(session.storedNames().size(), count);
}

TEST(BadInput, brokenDesktopFilesHideNoOthers)
{
    OrbitaSession session;
    const QString applications = session.desktop().folders().data() + QStringLiteral("/applications");
    QDir().mkpath(applications + QStringLiteral("/folder.desktop"));
    QFile::link(QStringLiteral("loop.desktop"), applications + QStringLiteral("/loop.desktop"));
    QFile::link(QStringLiteral("."), applications + QStringLiteral("/endless"));
    QFile::link(QStringLiteral("/nowhere"), applications + QStringLiteral("/dangling.desktop"));
    const SessionFolders &folders = session.desktop().folders();
    folders.installApplication(QStringLiteral("bytes"), QByteArray(100'000, '\xff'));
    folders.installApplication(QStringLiteral("groupless"), "Name=Groupless\nExec=true\n");
    folders.installApplication(QStringLiteral("long"), "[Desktop Entry]\nName=" + QByteArray(5'000'000, 'W') + '\n');
    const QString good = session.install(QStringLiteral("good"), QStringLiteral("Good One"),
                                         QStringLiteral("plain-window --class good"), QStringLiteral("good"));
    session.desktop().start(QStringLiteral("plain-window"), {QStringLiteral("--class"), QStringLiteral("good")});
    session.windows().waitForWindow(QStringLiteral("good"));
    session.show();
    session.waitForNames(coreEntries + QStringList(QStringLiteral("Good One")));

    QFile::remove(good);
    session.waitUntilStill();
    waitUntil([&] { return session.items().size() == coreEntries.size() + 1; },
              QStringLiteral("what runs stays in the ring without its file"));
    session.dismiss();
}

QByteArray png(QSize size)
{
    QImage image(size, QImage::Format_Mono);
    image.fill(0); // black
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

struct BadIcon {
    const char *name;
    const char *file;
    QByteArray (*content)();
};

class BadApplicationIcon : public testing::TestWithParam<BadIcon> {};

TEST_P(BadApplicationIcon, leavesAllEntriesWithAPicture)
{
    OrbitaSession session;
    const QString icon = session.desktop().folders().write(QLatin1String(GetParam().file), GetParam().content());
    session.install(QStringLiteral("bad-icon"), QStringLiteral("Bad Icon"), QStringLiteral("plain-window --class bad"),
                    QStringLiteral("bad"), QStringLiteral("Icon=") + icon);
    session.desktop().start(QStringLiteral("plain-window"), {QStringLiteral("--class"), QStringLiteral("bad")});
    session.windows().waitForWindow(QStringLiteral("bad"));
    session.show();
    session.waitForNames(coreEntries + QStringList(QStringLiteral("Bad Icon")));
    for (const ShownItem &item : session.items()) {
        const auto isDrawn = [&] {
            const QImage picture = session.desktop().screen().shot(item.rect);
            QImage plain = picture;
            plain.fill(picture.pixel(0, 0));
            return picture != plain;
        };
        waitUntil(isDrawn, QStringLiteral("\"%1\" has a picture").arg(item.name));
    }
    session.dismiss();
}

const BadIcon badIcons[]{
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

INSTANTIATE_TEST_SUITE_P(BadInput, BadApplicationIcon, testing::ValuesIn(badIcons), rowName<BadIcon>);

} // namespace
} // namespace Orbita
