// Files, folders, links and scripts as entries of the ring: opened for real, and edited in place.

#include "desktop/OrbitaSession.h"
#include "platform/Bookmark.h"
#include "platform/PropertyList.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <csignal>

namespace Orbita {
namespace {

using namespace Qt::StringLiterals;

QVariantMap linkEntry(const QString &name, const QString &url)
{
    return {{u"class"_s, u"LinkMenuItem"_s}, {u"name"_s, name}, {u"imageKey"_s, QString()}, {u"url"_s, url}};
}

QVariantMap scriptEntry(const QString &name, const QString &script)
{
    return {
        {u"class"_s, u"AppleScriptMenuItem"_s}, {u"name"_s, name}, {u"imageKey"_s, QString()}, {u"script"_s, script}};
}

QVariantMap fileEntry(const QString &name, const QString &path)
{
    const auto bookmark = Bookmark::create(path);
    EXPECT_TRUE(bookmark) << qPrintable(path);
    return {{u"class"_s, u"FileMenuItem"_s}, {u"name"_s, name}, {u"bookmarkData"_s, *bookmark}};
}

class EntriesSession : public OrbitaSession {
public:
    explicit EntriesSession(SessionOptions options = {}) : OrbitaSession(std::move(options), {{u"showFinder"_s, false}})
    {
    }

    void store(const QVariantList &entries)
    {
        QDir().mkpath(QFileInfo(itemFile()).path());
        EXPECT_TRUE(PropertyList::write(itemFile(), entries, PropertyList::Format::Xml));
    }
    [[nodiscard]] QVariantMap stored(qsizetype index = 0) const
    {
        const auto root = PropertyList::read(itemFile());
        return root ? root->toList().value(index).toMap() : QVariantMap();
    }
    void waitUntilStored(const QString &key, const QString &value)
    {
        waitUntil([&] { return stored().value(key) == value; },
                  [&] { return u"\"%1\" is stored; there is \"%2\""_s.arg(value, stored().value(key).toString()); });
    }

    /// Opens the editor of the only entry and waits until it has the keyboard.
    WindowInfo edit()
    {
        openMenu(names().first());
        input().tap(u"Down"_s);
        input().tap(u"Return"_s);
        WindowInfo sheet = waitForSheet();
        waitUntilActive(sheet);
        return sheet;
    }
    WindowInfo waitForSheet()
    {
        return windows().waitFor([this](const WindowInfo &window) { return isSheet(window); }, u"the editor"_s);
    }
    void waitUntilClosed(const WindowInfo &window)
    {
        waitUntil([&] { return !windows().find([&](const WindowInfo &one) { return one.id == window.id; }); },
                  u"the editor is closed"_s);
    }
    [[nodiscard]] QString draftFile() const { return QFileInfo(itemFile()).path() + u"/drafts.plist"_s; }
    void waitUntilDrafted(const QString &text) const
    {
        const auto drafted = [this] {
            const auto root = PropertyList::read(draftFile());
            return root ? root->toList().value(0).toMap().value(u"text"_s).toString() : QString();
        };
        waitUntil([&] { return drafted() == text; },
                  [&] { return u"the draft is \"%1\"; it is \"%2\""_s.arg(text, drafted()); });
    }
    /// Ends Orbita by \a deed, waits for that, and shows the ring anew.
    void restartBy(const std::function<void(qint64 pid)> &deed)
    {
        const qint64 running = pid();
        deed(running);
        waitUntil([&] { return hasEnded(running) && !desktop().bus().hasOwner(u"org.orbita.Orbita"_s); },
                  u"Orbita has ended, and the bus knows"_s);
        show();
    }

private:
    [[nodiscard]] bool isSheet(const WindowInfo &window)
    {
        const auto shown = ring();
        return withClass(u"orbita"_s)(window) && window.managed && (!shown || window.id != shown->id);
    }
};

TEST(Entries, openWhatTheyStandFor)
{
    EntriesSession session;
    // The viewer's title is what it was given to open.
    session.install(u"Viewer"_s, u"viewer"_s, u"--title %f"_s, u"MimeType=text/plain;"_s);
    session.install(u"Browser"_s, u"browser"_s, u"--title %u"_s, u"MimeType=x-scheme-handler/https;"_s);
    session.desktop().folders().write(
        u".config/mimeapps.list"_s,
        "[Default Applications]\ntext/plain=viewer.desktop\nx-scheme-handler/https=browser.desktop\n"
        "inode/directory=pcmanfm.desktop\n");
    const QString file = session.desktop().folders().write(u"Letters/größte & 1.txt"_s, "Dear Sir");
    const QString url = u"https://example.org/a?b=c%20d&e=%C3%A4#f"_s;
    session.store(
        {fileEntry(u"Letter"_s, file), fileEntry(u"Letters"_s, QFileInfo(file).path()), linkEntry(u"Page"_s, url)});
    for (const auto &[entry, title] : {std::pair(u"Letter"_s, file), {u"Letters"_s, u"Letters"_s}, {u"Page"_s, url}}) {
        session.show();
        session.clickItem(entry);
        session.windows().waitFor(withTitle(title), title);
        session.waitUntilHidden();
    }
}

TEST(Entries, stayWhileTheirDriveIsAway)
{
    EntriesSession session;
    session.install(u"Viewer"_s, u"viewer"_s, u"--title %f"_s, u"MimeType=text/plain;"_s);
    session.desktop().folders().write(u".config/mimeapps.list"_s,
                                      "[Default Applications]\ntext/plain=viewer.desktop\n");
    const QString file = session.desktop().folders().write(u"usb/letter.txt"_s, "Dear Sir");
    const QString drive = QFileInfo(file).path();
    session.store({fileEntry(u"Letter"_s, file)});
    const QVariantMap stored = session.stored();
    ASSERT_TRUE(QDir().rename(drive, drive + u".away"_s));
    session.show();
    session.waitForNames({u"Letter (offline)"_s});
    session.dismiss();
    EXPECT_EQ(session.stored(), stored);

    ASSERT_TRUE(QDir().rename(drive + u".away"_s, drive));
    session.show();
    session.waitForNames({u"Letter"_s});
    session.clickItem(u"Letter"_s);
    session.windows().waitFor(withTitle(file), file);
    EXPECT_EQ(session.stored(), stored);
}

TEST(Entries, openWithAnotherApplication)
{
    EntriesSession session;
    session.install(u"Viewer"_s, u"viewer"_s, u"--title %f"_s, u"MimeType=text/plain;"_s);
    session.install(u"Another Viewer"_s, u"another"_s, u"--title another"_s, u"MimeType=text/plain;"_s);
    session.desktop().folders().write(u".config/mimeapps.list"_s,
                                      "[Default Applications]\ntext/plain=viewer.desktop\n"
                                      "[Added Associations]\ntext/plain=another.desktop;\n");
    session.store({fileEntry(u"Letter"_s, session.desktop().folders().write(u"letter.txt"_s, "Dear Sir"))});
    session.show();
    session.openMenu(u"Letter"_s);
    // Into the menu of the applications, where the default one comes first.
    for (const QString &key : {u"Down"_s, u"Right"_s, u"Down"_s, u"Return"_s})
        session.input().tap(key);
    session.windows().waitFor(withTitle(u"another"_s), u"the other viewer"_s);
    session.waitUntilHidden();
}

TEST(Entries, scriptIsWrittenInASheetAboveTheRing)
{
    EntriesSession session;
    session.store({scriptEntry(u"Greeting"_s, u"beep"_s)});
    const WindowInfo ring = session.show();
    const WindowInfo sheet = session.edit();
    EXPECT_EQ(sheet.geometry, QRect(290, 175, 700, 450));
    waitUntil([&] { return !session.windows().find([](const WindowInfo &one) { return one.overrideRedirect; }); },
              u"no title floats above the sheet"_s);
    // Whoever has minimised it gets it back by asking for the ring.
    session.windows().waitUntilHandled(sheet.id); // or its request for the keyboard may come later and bring it back
    session.windows().iconify(sheet.id);
    waitUntil([&] { return !session.windows().info(sheet.id)->viewable; }, u"the editor is minimised"_s);
    session.orbita(u"show"_s);
    session.waitUntilActive(sheet);
    // Return makes a line; the editor's own keys undo, select, copy and paste.
    session.input().tap(u"Control+a"_s);
    session.input().type(u"log 1"_s);
    session.input().tap(u"Return"_s);
    session.input().type(u"log 2x"_s);
    session.input().tap(u"BackSpace"_s);
    session.input().tap(u"Control+a"_s);
    session.input().tap(u"Control+c"_s);
    session.input().tap(u"Control+v"_s);
    session.input().tap(u"Control+v"_s);
    session.input().tap(u"Control+z"_s);
    EXPECT_TRUE(session.windows().info(ring.id)->viewable) << "the ring stays up";
    session.input().tap(u"Control+Return"_s);
    session.waitUntilClosed(sheet);
    session.waitUntilStored(u"script"_s, u"log 1\nlog 2"_s);
    session.waitUntilActive(ring);
    session.dismiss();
}

TEST(Entries, whatIsWrittenAndNotSavedOutlivesTheEditorAndTheProgram)
{
    EntriesSession session;
    session.store({scriptEntry(u"Greeting"_s, u"beep"_s)});
    session.show();
    WindowInfo sheet = session.edit();
    session.input().type(u"escaped "_s);
    session.input().tap(u"Escape"_s);
    session.waitUntilClosed(sheet);
    sheet = session.edit();
    session.input().type(u"closed "_s);
    session.windows().waitUntilHandled(sheet.id);
    session.windows().close(sheet.id);
    session.waitUntilClosed(sheet);
    session.waitUntilDrafted(u"closed escaped beep"_s);
    session.edit();
    session.input().type(u"killed "_s);
    session.waitUntilDrafted(u"killed closed escaped beep"_s);
    session.restartBy([](qint64 pid) { ::kill(pid_t(pid), SIGKILL); });
    sheet = session.edit();
    session.input().type(u"quit "_s);
    session.windows().waitUntilHandled(sheet.id);
    session.restartBy([&](qint64) { session.orbita(u"quit"_s); });
    EXPECT_EQ(session.stored().value(u"script"_s), u"beep"_s) << "half a script takes no whole one's place";

    sheet = session.edit();
    const auto saysSo = [&] {
        const auto tree = session.desktop().accessibility().tree(u"orbita"_s);
        return tree && std::ranges::any_of(tree->withRole(u"label"_s), [&](const AccessibleItem &label) {
                   return label.name.startsWith(u"Draft from "_s) && sheet.geometry.contains(label.extents);
               });
    };
    waitUntil(saysSo, u"the sheet says that it shows a draft"_s);
    session.input().tap(u"Control+Return"_s);
    session.waitUntilClosed(sheet);
    session.waitUntilStored(u"script"_s, u"quit killed closed escaped beep"_s);
    waitUntil([&] { return !QFileInfo::exists(session.draftFile()); }, u"the draft is gone"_s);
    sheet = session.edit();
    session.input().type(u"discarded "_s);
    session.input().click(
        session.desktop().accessibility().waitFor(u"orbita"_s, u"push button"_s, u"Discard"_s).extents.center());
    session.waitUntilClosed(sheet);
    session.dismiss();
    EXPECT_EQ(session.stored().value(u"script"_s), u"quit killed closed escaped beep"_s);
    EXPECT_FALSE(QFileInfo::exists(session.draftFile()));
}

TEST(Entries, linkIsEditedWithItsPicture)
{
    EntriesSession session;
    session.store({linkEntry(u"Page"_s, u"https://example.org/"_s)});
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString file = session.desktop().folders().home() + u"/red.png"_s;
    ASSERT_TRUE(picture.save(file));
    Program &source = session.startWindow(u"source"_s, {u"--drag"_s, u"file://"_s + file});
    session.windows().moveTo(session.windows().waitForWindow(u"source"_s).id, {20, 20});
    session.show();
    const WindowInfo sheet = session.edit();
    EXPECT_EQ(sheet.geometry.size(), QSize(480, 136));
    session.input().tap(u"Control+a"_s);
    session.input().type(u"https://example.org/new"_s);
    // A picture is dragged in from another program.
    const auto well = session.desktop().accessibility().waitFor(u"orbita"_s, u"push button"_s, u"Picture"_s);
    session.input().moveTo({100, 100});
    session.input().press();
    session.input().glide({140, 140}, 10);
    source.waitForOutput(u"^drag$"_s);
    const QRect edge(well.extents.topLeft(), QSize(3, well.extents.height()));
    const QImage before = session.desktop().screen().shot(edge);
    // Moves that come before the source tracks the pointer are lost on it.
    const auto isMarked = [&] {
        session.input().glide(well.extents.center() - QPoint(2, 2), 10);
        session.input().glide(well.extents.center(), 2);
        return session.desktop().screen().shot(edge) != before;
    };
    waitUntil(isMarked, u"the well is marked as a target"_s);
    session.input().release();
    source.waitForOutput(u"^dragged [^0]"_s);
    session.activate(sheet);
    session.input().tap(u"Return"_s);
    session.waitUntilClosed(sheet);
    session.waitUntilStored(u"url"_s, u"https://example.org/new"_s);
    EXPECT_EQ(session.stored().value(u"name"_s), u"Page"_s) << "the name is left as it is";
    const QString key = session.stored().value(u"imageKey"_s).toString();
    const QImage kept(QFileInfo(session.itemFile()).path() + u"/ImageStore/%1.tif"_s.arg(key));
    EXPECT_EQ(kept.pixelColor(kept.rect().center()).name(), u"#ff0000"_s) << "the key is " << qPrintable(key);
}

} // namespace
} // namespace Orbita
