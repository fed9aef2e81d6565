#include "desktop/OrbitaSession.h"

#include "platform/PropertyList.h"

#include <QDir>
#include <QFileInfo>

namespace Orbita {

using namespace Qt::StringLiterals;

OrbitaSession::OrbitaSession(SessionOptions options, const QVariantMap &defaults)
    : m_desktop([&options] {
          options.accessibility = options.sessionBus;
          return options;
      }())
{
    QVariantMap initial = defaults;
    initial.insert(u"launchedBefore"_s, true);
    QDir().mkpath(QFileInfo(defaultsFile()).path());
    EXPECT_TRUE(PropertyList::write(defaultsFile(), initial, PropertyList::Format::Xml));
}

CommandResult OrbitaSession::run(const QStringList &arguments, const QProcessEnvironment &extraEnvironment)
{
    Program &command = m_desktop.start(u"orbita"_s, arguments, extraEnvironment);
    const int status = command.waitForExit();
    return {status, command.lines()};
}

void OrbitaSession::orbita(const QString &command, const QProcessEnvironment &extraEnvironment)
{
    if (run(command.split(u' ', Qt::SkipEmptyParts), extraEnvironment).status != 0)
        throw DesktopFailure(u"orbita %1 failed"_s.arg(command));
}

std::optional<WindowInfo> OrbitaSession::ring()
{
    // The settings and the title bubbles have the same class; the ring is the square, managed one.
    return windows().find([](const WindowInfo &window) {
        return withClass(u"orbita"_s)(window) && window.managed && window.title == u"Orbita"_s;
    });
}

WindowInfo OrbitaSession::show(QPoint pointer)
{
    input().moveTo(pointer);
    orbita(u"show"_s);
    waitForRing();
    waitUntilStill();
    // Some window managers place a window only after they have taken it over.
    return waitForRing();
}

WindowInfo OrbitaSession::waitForRing()
{
    std::optional<WindowInfo> shown;
    const auto isShown = [&] { return (shown = ring()).has_value(); };
    waitUntil(isShown, [this] {
        QStringList seen;
        for (const WindowInfo &window : windows().all())
            seen.append(u"%1 \"%2\" managed %3"_s.arg(window.className, window.title).arg(window.managed));
        return u"the ring is shown; there are: "_s + seen.join(u", ");
    });
    return *shown;
}

void OrbitaSession::waitForGeometry(QRect geometry)
{
    waitUntil([&] { return ring() && ring()->geometry == geometry; }, u"the ring has its place and size"_s);
}

void OrbitaSession::waitForKeyboard()
{
    const WindowInfo window = waitForRing();
    const auto hasKeyboard = [&] {
        nudgeWindowManager();
        return windows().inputFocus() == window.id;
    };
    waitUntil(hasKeyboard, u"the ring has the keyboard"_s);
}

void OrbitaSession::waitUntilHidden()
{
    waitUntil([this] { return !ring(); }, u"the ring is hidden"_s);
}

void OrbitaSession::activate(const WindowInfo &window)
{
    windows().activate(window.id);
    waitUntilActive(window);
}

void OrbitaSession::waitUntilActive(const WindowInfo &window)
{
    const auto isActive = [&] {
        nudgeWindowManager();
        return windows().activeWindow() == window.id;
    };
    waitUntil(isActive, [&] {
        return u"the window \"%1\" %2 is active, not %3"_s.arg(window.title)
            .arg(window.id)
            .arg(windows().activeWindow());
    });
}

void OrbitaSession::nudgeWindowManager()
{
    m_desktop.connection().setText(m_desktop.connection().root(), "_ORBITA_TEST", "nudge");
}

void OrbitaSession::dismiss()
{
    waitForKeyboard();
    input().tap(u"Escape"_s);
    waitUntilHidden();
}

WindowInfo OrbitaSession::waitForSettings()
{
    return windows().waitFor([](const WindowInfo &window) { return window.title.startsWith(u"Orbita Settings"_s); },
                             u"the settings"_s);
}

void OrbitaSession::waitUntilStill()
{
    // A movement changes every frame, and the pictures of this many looks span several frames, at each of which Orbita
    // has had its turn. A fade is to be seen only where a compositor runs, but its end is told to all.
    constexpr int looks = 12;
    const QList<quint32> opaque{0xFFFFFFFF};
    QImage before;
    int equal = 0;
    waitUntil(
        [&] {
            const auto window = ring();
            if (window)
                windows().waitUntilHandled(window->id);
            const QImage now = m_desktop.screen().shot(window ? window->geometry : QRect());
            const bool fades = window && m_desktop.connection().values(window->id, "_NET_WM_WINDOW_OPACITY") != opaque;
            equal = std::exchange(before, now) == now && !fades ? equal + 1 : 0;
            return equal == looks;
        },
        u"the ring stands still"_s);
}

QList<ShownItem> OrbitaSession::items()
{
    QList<ShownItem> shown;
    const auto tree = m_desktop.accessibility().tree(u"orbita"_s);
    for (const AccessibleItem &ring : tree ? tree->withRole(u"popup menu"_s) : QList<AccessibleItem>()) {
        for (const AccessibleItem &item : ring.children)
            shown.append({item.name, item.extents, item.has(AccessibleState::Focused)});
    }
    return shown;
}

QStringList OrbitaSession::names()
{
    QStringList names;
    for (const ShownItem &item : items())
        names.append(item.name);
    return names;
}

void OrbitaSession::waitForNames(const QStringList &expected)
{
    waitUntil([&] { return names() == expected; },
              [&] { return u"the ring holds %1; it holds %2"_s.arg(expected.join(u", "), names().join(u", ")); });
}

ShownItem OrbitaSession::item(const QString &name)
{
    ShownItem found;
    waitUntil(
        [&] {
            for (const ShownItem &item : items()) {
                if (item.name == name)
                    found = item;
            }
            return found.name == name;
        },
        [&] { return u"the ring holds %1; it holds %2"_s.arg(name, names().join(u", ")); });
    return found;
}

QString OrbitaSession::focusedItem()
{
    for (const ShownItem &item : items()) {
        if (item.isFocused)
            return item.name;
    }
    return {};
}

void OrbitaSession::openMenu(const QString &name)
{
    const auto isShown = [&] {
        return windows()
            .find([&](const WindowInfo &window) { return window.overrideRedirect && window.title.startsWith(name); })
            .has_value();
    };
    // For half a second after a menu was closed, the next one stays away.
    waitUntil(
        [&] {
            input().click(item(name).rect.center(), Button::Right);
            windows().waitUntilHandled(waitForRing().id);
            return isShown();
        },
        u"the menu of "_s + name);
}

void OrbitaSession::pressUntil(const QString &key, const std::function<bool()> &condition)
{
    waitUntil(
        [&] {
            if (condition())
                return true;
            if (const auto window = ring()) {
                input().tap(key);
                windows().waitUntilHandled(window->id);
            }
            return condition();
        },
        u"pressing %1 has its effect"_s.arg(key));
}

QString OrbitaSession::defaultsFile() const
{
    return m_desktop.folders().configuration() + u"/orbita/defaults.plist"_s;
}

QString OrbitaSession::itemFile() const
{
    return m_desktop.folders().data() + u"/orbita/menuItems.plist"_s;
}

QVariantMap OrbitaSession::defaults() const
{
    const auto root = PropertyList::read(defaultsFile());
    return root ? root->toMap() : QVariantMap();
}

void OrbitaSession::setDefault(const QString &key, const QVariant &value)
{
    QVariantMap changed = defaults();
    changed.insert(key, value);
    EXPECT_TRUE(PropertyList::write(defaultsFile(), changed, PropertyList::Format::Binary));
}

QStringList OrbitaSession::storedNames() const
{
    QStringList names;
    const auto root = PropertyList::read(itemFile());
    for (const QVariant &entry : root ? root->toList() : QVariantList())
        names.append(entry.toMap().value(u"name"_s).toString());
    return names;
}

void OrbitaSession::waitUntilStored(const QStringList &names) const
{
    waitUntil([&] { return storedNames() == names; },
              [&] { return u"the file holds the entries; it holds "_s + storedNames().join(u", "); });
}

QByteArray OrbitaSession::log() const
{
    QFile file(m_desktop.folders().state() + u"/orbita/orbita.log"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<QByteArray> OrbitaSession::setAside(const QString &file)
{
    QList<QByteArray> contents;
    const QFileInfo info(file);
    for (const QFileInfo &found : info.dir().entryInfoList({info.fileName() + u".damaged-*"_s})) {
        QFile damaged(found.filePath());
        if (damaged.open(QIODevice::ReadOnly))
            contents.append(damaged.readAll());
    }
    return contents;
}

qint64 OrbitaSession::pid()
{
    return m_desktop.bus().pidOf(u"org.orbita.Orbita"_s);
}

QString OrbitaSession::install(const QString &name, const QString &windowClass, const QString &options,
                               const QString &others)
{
    const QString entry
        = u"[Desktop Entry]\nType=Application\nName=%1\nExec=plain-window %2\nStartupWMClass=%3\n%4\n"_s.arg(
            name, options, windowClass, others);
    return m_desktop.folders().installApplication(windowClass, entry.toUtf8());
}

Program &OrbitaSession::startWindow(const QString &name, const QStringList &options)
{
    Program &program
        = m_desktop.start(u"plain-window"_s, QStringList{u"--class"_s, name, u"--title"_s, name} + options);
    program.waitForOutput(u"^ready$"_s);
    return program;
}

WindowInfo OrbitaSession::startTerminal()
{
    m_desktop.start(u"xterm"_s, {u"-geometry"_s, u"40x10+20+20"_s});
    return windows().waitForWindow(terminal);
}

void OrbitaSession::installBrowser()
{
    install(u"Test Browser"_s, u"browser"_s, u"--title browser"_s,
            u"MimeType=x-scheme-handler/https;x-scheme-handler/http;"_s);
    m_desktop.folders().write(u".config/mimeapps.list"_s,
                              "[Default Applications]\nx-scheme-handler/https=browser.desktop\n");
}

} // namespace Orbita
