#include "desktop/OrbitaSession.h"

#include "platform/PropertyList.h"

#include <QDir>
#include <QFileInfo>

namespace Orbita {

namespace {

const QString ringRole = QStringLiteral("popup menu");

} // namespace

OrbitaSession::OrbitaSession(SessionOptions options, const QVariantMap &defaults)
    : m_desktop([&options] {
          options.accessibility = options.sessionBus;
          return options;
      }())
{
    QVariantMap initial = defaults;
    initial.insert(QStringLiteral("launchedBefore"), true);
    QDir().mkpath(m_desktop.folders().configuration() + QStringLiteral("/orbita"));
    EXPECT_TRUE(PropertyList::write(defaultsFile(), initial, PropertyList::Format::Xml));
}

int OrbitaSession::orbita(const QStringList &arguments, const QProcessEnvironment &extraEnvironment)
{
    return run(arguments, extraEnvironment).status;
}

CommandResult OrbitaSession::run(const QStringList &arguments, const QProcessEnvironment &extraEnvironment)
{
    Program &command = m_desktop.start(QStringLiteral("orbita"), arguments, extraEnvironment);
    const int status = command.waitForExit();
    return {status, command.lines()};
}

std::optional<WindowInfo> OrbitaSession::ring()
{
    // The settings and the title bubbles have the same class; the ring is the square, managed one.
    return windows().find([](const WindowInfo &window) {
        return withClass(QStringLiteral("orbita"))(window) && window.managed
            && window.title == QStringLiteral("Orbita");
    });
}

WindowInfo OrbitaSession::show(QPoint pointer)
{
    input().moveTo(pointer);
    if (orbita({QStringLiteral("show")}) != 0)
        throw DesktopFailure(QStringLiteral("orbita show failed"));
    const WindowInfo window = waitForRing();
    waitUntilStill();
    return window;
}

WindowInfo OrbitaSession::waitForRing()
{
    std::optional<WindowInfo> shown;
    const auto isShown = [&] { return (shown = ring()).has_value(); };
    waitUntil(isShown, [this] {
        QStringList seen;
        for (const WindowInfo &window : windows().all())
            seen.append(QStringLiteral("%1 \"%2\" managed %3 viewable %4")
                            .arg(window.className, window.title)
                            .arg(window.managed)
                            .arg(window.viewable));
        return QStringLiteral("the ring is shown; there are: ") + seen.join(u", ");
    });
    return *shown;
}

void OrbitaSession::waitUntilHidden()
{
    waitUntil([this] { return !ring(); }, QStringLiteral("the ring is hidden"));
}

void OrbitaSession::activate(const WindowInfo &window)
{
    windows().activate(window.id);
    waitUntilActive(window);
}

void OrbitaSession::waitUntilActive(const WindowInfo &window)
{
    waitUntil([&] { return windows().activeWindow() == window.id; },
              QStringLiteral("the window \"%1\" is active").arg(window.title));
}

void OrbitaSession::dismiss()
{
    const WindowInfo window = waitForRing();
    waitUntil([&] { return windows().inputFocus() == window.id; }, QStringLiteral("the ring has the keyboard"));
    input().tap(QStringLiteral("Escape"));
    waitUntilHidden();
}

WindowInfo OrbitaSession::waitForSettings()
{
    return windows().waitFor(
        [](const WindowInfo &window) { return window.title.startsWith(QStringLiteral("Orbita Settings")); },
        QStringLiteral("the settings"));
}

void OrbitaSession::waitUntilStill()
{
    // A fade or a movement changes every frame, and the pictures of this many looks span several frames.
    constexpr int looks = 20;
    QImage before;
    int equal = 0;
    waitUntil(
        [&] {
            const auto window = ring();
            const QImage now = m_desktop.screen().shot(window ? window->geometry : QRect());
            equal = std::exchange(before, now) == now ? equal + 1 : 0;
            return equal == looks;
        },
        QStringLiteral("the ring stands still"));
}

QList<ShownItem> OrbitaSession::items()
{
    QList<ShownItem> shown;
    const auto tree = m_desktop.accessibility().tree(QStringLiteral("orbita"));
    if (!tree)
        return shown;
    for (const AccessibleItem &ringItem : tree->withRole(ringRole)) {
        for (const AccessibleItem &item : ringItem.children)
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
    waitUntil(
        [&] { return names() == expected; },
        [&] {
            return QStringLiteral("the ring holds %1; it holds %2").arg(expected.join(u", "), names().join(u", "));
        });
}

ShownItem OrbitaSession::item(const QString &name)
{
    std::optional<ShownItem> found;
    waitUntil(
        [&] {
            for (const ShownItem &item : items()) {
                if (item.name == name)
                    found = item;
            }
            return found.has_value();
        },
        [&] { return QStringLiteral("the ring holds %1; it holds %2").arg(name, names().join(u", ")); });
    return *found;
}

QString OrbitaSession::focusedItem()
{
    for (const ShownItem &item : items()) {
        if (item.isFocused)
            return item.name;
    }
    return {};
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
        QStringLiteral("pressing %1 has its effect").arg(key));
}

QString OrbitaSession::defaultsFile() const
{
    return m_desktop.folders().configuration() + QStringLiteral("/orbita/defaults.plist");
}

QString OrbitaSession::itemFile() const
{
    return m_desktop.folders().data() + QStringLiteral("/orbita/menuItems.plist");
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
        names.append(entry.toMap().value(QStringLiteral("name")).toString());
    return names;
}

QList<QByteArray> OrbitaSession::setAside(const QString &file)
{
    QList<QByteArray> contents;
    const QFileInfo info(file);
    for (const QFileInfo &found : info.dir().entryInfoList({info.fileName() + QStringLiteral(".damaged-*")})) {
        QFile damaged(found.filePath());
        if (damaged.open(QIODevice::ReadOnly))
            contents.append(damaged.readAll());
    }
    return contents;
}

qint64 OrbitaSession::pid()
{
    return m_desktop.bus().pidOf(QStringLiteral("org.orbita.Orbita"));
}

QString OrbitaSession::install(const QString &id, const QString &name, const QString &exec, const QString &windowClass,
                               const QString &others)
{
    const QString entry = QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nStartupWMClass=%3\n%4\n")
                              .arg(name, exec, windowClass, others);
    return m_desktop.folders().installApplication(id, entry.toUtf8());
}

WindowInfo OrbitaSession::startTerminal()
{
    m_desktop.start(QStringLiteral("xterm"), {QStringLiteral("-geometry"), QStringLiteral("40x10+20+20")});
    return windows().waitForWindow(QStringLiteral("XTerm"));
}

void OrbitaSession::installBrowser()
{
    install(QStringLiteral("test-browser"), QStringLiteral("Test Browser"),
            QStringLiteral("plain-window --title browser"), QStringLiteral("browser"),
            QStringLiteral("MimeType=x-scheme-handler/https;x-scheme-handler/http;"));
    m_desktop.folders().write(QStringLiteral(".config/mimeapps.list"),
                              "[Default Applications]\nx-scheme-handler/https=test-browser.desktop\n");
}

} // namespace Orbita
