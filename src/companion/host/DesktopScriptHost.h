#pragma once

#include "companion/host/ScriptDialogs.h"
#include "companion/script/ScriptHost.h"
#include "platform/desktop/FreedesktopNotifications.h"

#include <memory>

namespace Orbita {

class ScriptApplications;

/// What scripts can do, on a freedesktop session with an X11 display.
///
/// Needs a QApplication. Services of the desktop are sought when a script first asks for them.
class DesktopScriptHost final : public ScriptHost {
public:
    enum class DisplayState { Reachable, Missing };
    struct Options {
        DisplayState display = DisplayState::Reachable; ///< without one, whatever would show a window fails
        /// Asks a process to quit; the failure is one sentence.
        std::function<Result<void, QString>(qint64 processIdentifier)> quitApplication;
        QString clipboardKeeper; ///< see setClipboardText()
    };
    explicit DesktopScriptHost(Options options);
    ~DesktopScriptHost() override;

    /// Only with a display.
    void showProblem(const ProblemReport &report);

    ScriptResult<DialogReply> displayDialog(const DialogRequest &request) override;
    ScriptResult<void> displayNotification(const QString &text, const QString &title, const QString &subtitle) override;
    ScriptResult<std::optional<QStringList>> chooseFromList(const ListRequest &request) override;
    ScriptResult<QStringList> chooseFiles(const FileRequest &request) override;
    ScriptResult<void> activate(const QString &application) override;
    ScriptResult<void> launch(const QString &application) override;
    ScriptResult<void> quit(const QString &application) override;
    ScriptResult<bool> isRunning(const QString &application) override;
    ScriptResult<void> makeNewDocument(const QString &application) override;
    ScriptResult<void> open(const QString &application, const QStringList &paths) override;
    ScriptResult<void> openLocation(const QString &application, const QString &url) override;
    ScriptResult<void> reveal(const QString &path) override;
    ScriptResult<QString> doShellScript(const QString &command) override;
    void delay(double seconds) override;
    void beep(int count) override;
    ScriptResult<void> say(const QString &text) override;
    ScriptResult<QString> clipboard() override;
    ScriptResult<void> setClipboard(const QString &text) override;
    ScriptResult<QString> pathTo(StandardFolder folder) override;
    QDateTime currentDate() override;
    double randomNumber() override;
    void log(const QString &text) override;

private:
    class Screen;       ///< the display, and windows in front of others
    class Applications; ///< what is installed and what runs

    [[nodiscard]] bool hasDisplay() const { return m_options.display == DisplayState::Reachable; }
    Screen &screen();
    ScriptApplications &applications();

    Options m_options;
    FreedesktopNotifications m_notifications;
    std::unique_ptr<Screen> m_screen;
    std::unique_ptr<Applications> m_applications;
    ScriptDialogs m_dialogs;
};

} // namespace Orbita
