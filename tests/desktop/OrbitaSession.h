#pragma once

#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"

#include <QRect>
#include <QStringList>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace Orbita {

/// The names of the ring's first entries, and of the application that startTerminal() starts.
inline const QStringList coreEntries{QStringLiteral("Finder"), QStringLiteral("Launchpad"), QStringLiteral("App Store"),
                                     QStringLiteral("iTunes"), QStringLiteral("Safari"),    QStringLiteral("Mail")};
inline const QString terminal = QStringLiteral("XTerm");

/// An item of the shown ring, as assistive technology sees it.
struct ShownItem {
    QString name;
    QRect rect; ///< pixels of the screen
    bool isFocused = false;
};

/// What a run of the command `orbita` came to.
struct CommandResult {
    int status = 0;
    QStringList lines; ///< of both streams
};

/// A desktop session in which Orbita runs. What assistive technology tells of it needs the session bus.
class OrbitaSession {
public:
    /// \a defaults is what defaults.plist holds at the start, beside "launchedBefore". Accessibility is on where there
    /// is a session bus.
    explicit OrbitaSession(SessionOptions options = {}, const QVariantMap &defaults = {});

    [[nodiscard]] DesktopSession &desktop() { return m_desktop; }
    [[nodiscard]] const Input &input() { return m_desktop.input(); }
    [[nodiscard]] const Windows &windows() { return m_desktop.windows(); }

    /// Runs `orbita` with \a arguments.
    CommandResult run(const QStringList &arguments, const QProcessEnvironment &extraEnvironment = {});
    /// Runs `orbita` with the one argument \a command, if any, which has to succeed.
    void orbita(const QString &command, const QProcessEnvironment &extraEnvironment = {});
    /// Shows the ring with the pointer at \a pointer and waits until it stands still. Returns its window.
    WindowInfo show(QPoint pointer = {640, 400});
    /// The ring's window; nothing while it is hidden.
    [[nodiscard]] std::optional<WindowInfo> ring();
    WindowInfo waitForRing();
    void waitForGeometry(QRect geometry);
    void waitForKeyboard();
    void waitUntilHidden();
    /// Gives the keyboard to \a window and waits until it has it.
    void activate(const WindowInfo &window);
    void waitUntilActive(const WindowInfo &window);
    /// Presses Escape as soon as the ring has the keyboard, and waits until it is hidden.
    void dismiss();
    WindowInfo waitForSettings();
    /// Waits until the ring window's pixels have not changed for a few frames.
    void waitUntilStill();

    [[nodiscard]] QList<ShownItem> items();
    [[nodiscard]] QStringList names();
    void waitForNames(const QStringList &names);
    /// Waits until the ring has an item called \a name and returns it.
    ShownItem item(const QString &name);
    [[nodiscard]] QString focusedItem();
    void clickItem(const QString &name) { input().click(item(name).rect.center()); }
    /// Opens the menu of the item called \a name by a right click, and waits until it takes keys.
    void openMenu(const QString &name);
    /// Presses \a key, and again until \a condition holds, each time waiting until the ring has taken the key.
    void pressUntil(const QString &key, const std::function<bool()> &condition);

    /// Writes \a value into defaults.plist as another program would.
    void setDefault(const QString &key, const QVariant &value);
    [[nodiscard]] QVariantMap defaults() const;
    [[nodiscard]] QString defaultsFile() const;
    [[nodiscard]] QString itemFile() const;
    /// The names of the entries in the item file.
    [[nodiscard]] QStringList storedNames() const;
    void waitUntilStored(const QStringList &names) const;
    /// What Orbita, started by a command, has logged so far.
    [[nodiscard]] QByteArray log() const;
    /// The contents of the damaged files that were set aside from \a file.
    [[nodiscard]] static QList<QByteArray> setAside(const QString &file);
    /// The process that owns the name on the session bus.
    [[nodiscard]] qint64 pid();

    /// Installs an application called \a name whose window has the class \a windowClass and whose launch command is
    /// a plain window with \a options, and returns the path of its desktop file.
    QString install(const QString &name, const QString &windowClass, const QString &options = {},
                    const QString &others = {});
    /// Starts a plain window with the class and title \a name and waits until it is fit to be played with.
    Program &startWindow(const QString &name, const QStringList &options = {});
    /// Starts xterm as the application "XTerm".
    WindowInfo startTerminal();
    /// Installs the browser "Test Browser" as the one for web pages. Its window's title is "browser".
    void installBrowser();
    void waitForBrowser() { windows().waitFor(withTitle(QStringLiteral("browser")), QStringLiteral("the browser")); }

private:
    /// openbox now and then leaves a request lying until the next event comes.
    void nudgeWindowManager();

    DesktopSession m_desktop;
};

} // namespace Orbita
