#pragma once

#include "base/Result.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace Orbita {

/// Why something that a script asked for was not done: a number that scripts know, and one sentence.
struct ScriptFailure {
    static constexpr int userCancelled = -128;
    static constexpr int general = -2700;
    static constexpr int notFound = -43; ///< a file that is not there
    static constexpr int noSuchApplication = -600;
    static constexpr int notUnderstood = -1708; ///< an application does not know the command
    static constexpr int cannotConvert = -1700;
    static constexpr int unknownName = -2753;
    static constexpr int divisionByZero = -2701;
    static constexpr int outOfRange = -1719; ///< there is no such item

    int number = general;
    QString message; ///< ends with a full stop

    friend bool operator==(const ScriptFailure &, const ScriptFailure &) = default;
};

template <typename T>
using ScriptResult = Result<T, ScriptFailure>;

/// A question with buttons, and perhaps a field to fill in.
struct DialogRequest {
    QString text;
    QString message; ///< a second, quieter paragraph; alerts only
    QString title;
    QStringList buttons;   ///< from left to right, one to three
    QString defaultButton; ///< pressed by Return; empty for none
    QString cancelButton;  ///< pressed by Escape, and ends the script's command as cancelled; empty for none
    std::optional<QString> defaultAnswer; ///< what stands in the field; nothing: no field
    bool isAnswerHidden = false;          ///< shows dots for what is typed
    double givingUpAfter = 0.0;           ///< seconds; 0: waits for ever
    bool isAlert = false;
    enum class Icon { None, Note, Caution, Stop } icon = Icon::None;
};

struct DialogReply {
    QString buttonReturned; ///< empty when it gave up
    QString textReturned;
    bool gaveUp = false;
};

/// A list to choose from.
struct ListRequest {
    QStringList items;
    QString title;
    QString prompt;
    QStringList defaultItems;
    QString okButtonName;     ///< empty: "OK"
    QString cancelButtonName; ///< empty: "Cancel"
    bool allowsMultiple = false;
    bool allowsEmpty = false;
};

/// A panel to choose files or a folder in.
struct FileRequest {
    QString prompt;
    QStringList namePatterns; ///< "*.txt", ...; none: all files
    QString startFolder;      ///< empty: the user's home
    bool choosesFolders = false;
    bool allowsMultiple = false;
};

enum class StandardFolder { Home, Desktop, Documents, Downloads, Music, Pictures, Movies, Temporary };

/// What scripts can do to the world. Every call returns when it is done; paths are absolute.
class ScriptHost {
public:
    virtual ~ScriptHost() = default;

    /// A pressed cancel button is the failure userCancelled.
    virtual ScriptResult<DialogReply> displayDialog(const DialogRequest &request) = 0;
    virtual ScriptResult<void> displayNotification(const QString &text, const QString &title, const QString &subtitle)
        = 0;
    /// Nothing when the user cancelled.
    virtual ScriptResult<std::optional<QStringList>> chooseFromList(const ListRequest &request) = 0;
    /// Paths, at least one. A cancelled panel is the failure userCancelled.
    virtual ScriptResult<QStringList> chooseFiles(const FileRequest &request) = 0;

    /// An application is named by its display name, a core entry's name ("Safari", "Finder", ...), or its path.
    /// Brings it to the front, starting it where needed.
    virtual ScriptResult<void> activate(const QString &application) = 0;
    /// Starts it where it does not run yet, without bringing it to the front.
    virtual ScriptResult<void> launch(const QString &application) = 0;
    /// Asks it to quit as its window's close button would. Done at once where it does not run.
    virtual ScriptResult<void> quit(const QString &application) = 0;
    virtual ScriptResult<bool> isRunning(const QString &application) = 0;
    /// Opens a new, empty document or window of it.
    virtual ScriptResult<void> makeNewDocument(const QString &application) = 0;
    /// Opens files with \a application; with the default one where it is empty.
    virtual ScriptResult<void> open(const QString &application, const QStringList &paths) = 0;
    /// Opens an address, which has a scheme, with \a application or with the default one.
    virtual ScriptResult<void> openLocation(const QString &application, const QString &url) = 0;
    /// Shows a file selected in the file manager.
    virtual ScriptResult<void> reveal(const QString &path) = 0;

    /// What `sh -c` writes to its standard output, its last line break left out and the others as "\r"; a status other
    /// than 0 is a failure with that number and what it wrote to its standard error.
    virtual ScriptResult<QString> doShellScript(const QString &command) = 0;
    virtual void delay(double seconds) = 0;
    virtual void beep(int count) = 0;
    virtual ScriptResult<void> say(const QString &text) = 0;
    virtual ScriptResult<QString> clipboard() = 0;
    virtual ScriptResult<void> setClipboard(const QString &text) = 0;
    virtual ScriptResult<QString> pathTo(StandardFolder folder) = 0;
    virtual QDateTime currentDate() = 0;
    /// From 0 to just below 1, evenly.
    virtual double randomNumber() = 0;
    virtual void log(const QString &text) = 0;
};

} // namespace Orbita
