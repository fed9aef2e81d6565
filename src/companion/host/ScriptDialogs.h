#pragma once

#include "companion/script/ScriptHost.h"

#include <functional>

class QDialog;
class QWindow;

namespace Orbita {

class DialogWindow;

/// What stopped a script, for the user who wrote it.
struct ProblemReport {
    QString heading;
    qint64 line = 0;  ///< from 1; 0 where the problem is in no line
    QString lineText; ///< the text of that line
    QString sentence; ///< what was expected, or what went wrong
};

/// The dialogs that scripts show. Each call returns when its dialog was closed.
class ScriptDialogs {
public:
    /// Brings a window, which was just shown, to the front with the keyboard.
    using Presenter = std::function<void(QWindow &)>;
    explicit ScriptDialogs(Presenter present) : m_present(std::move(present)) {}

    ScriptResult<DialogReply> displayDialog(const DialogRequest &request);
    ScriptResult<std::optional<QStringList>> chooseFromList(const ListRequest &request);
    ScriptResult<QStringList> chooseFiles(const FileRequest &request);
    void showProblem(const ProblemReport &report);

private:
    int run(QDialog &dialog);

    Presenter m_present;
};

} // namespace Orbita
