#include "companion/host/ScriptDialogs.h"

#include "companion/host/DialogLook.h"
#include "companion/host/ListDialog.h"
#include "companion/host/ProblemDialog.h"
#include "companion/host/QuestionDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>
#include <QWindow>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

Failure<ScriptFailure> cancelled()
{
    return Failure(ScriptFailure{ScriptFailure::userCancelled, u"User cancelled."_s});
}

/// The folders that files usually lie in.
QList<QUrl> places()
{
    QStringList paths;
    for (const auto place :
         {QStandardPaths::HomeLocation, QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation,
          QStandardPaths::DownloadLocation, QStandardPaths::PicturesLocation, QStandardPaths::MusicLocation})
        paths << QStandardPaths::writableLocation(place);
    paths << QDir::rootPath();
    paths.removeDuplicates();
    QList<QUrl> urls;
    for (const QString &path : paths) {
        if (QFileInfo(path).isDir())
            urls << QUrl::fromLocalFile(path);
    }
    return urls;
}

/// For where the desktop has no panel of its own, whose parts would not be found.
void arrangeToolkitsPanel(QFileDialog &panel)
{
    panel.setViewMode(QFileDialog::Detail);
    panel.setSidebarUrls(places());
    panel.resize(800, 500);
    if (auto *splitter = panel.findChild<QSplitter *>())
        splitter->setSizes({150, 650});
    if (auto *files = panel.findChild<QTreeView *>())
        files->header()->resizeSection(0, 300);
}

/// While a path is typed, the toolkit's panel selects the folders on the way to it, and keeps them selected.
QStringList chosenPaths(const QFileDialog &panel, const FileRequest &request)
{
    QStringList paths = panel.selectedFiles();
    paths.removeIf([&](const QString &path) { return QFileInfo(path).isDir() != request.choosesFolders; });
    return request.allowsMultiple && !request.choosesFolders ? paths : paths.mid(paths.size() - 1);
}

void setUp(QFileDialog &panel, const FileRequest &request)
{
    const QString preset = request.choosesFolders ? u"Choose a folder"_s : u"Choose a file"_s;
    panel.setWindowTitle(request.prompt.isEmpty() ? preset : request.prompt.left(200).simplified());
    panel.setDirectory(request.startFolder.isEmpty() ? QDir::homePath() : request.startFolder);
    if (request.choosesFolders) {
        panel.setFileMode(QFileDialog::Directory);
        panel.setOption(QFileDialog::ShowDirsOnly);
    } else {
        panel.setFileMode(request.allowsMultiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    }
    if (!request.namePatterns.isEmpty())
        panel.setNameFilter(u"Files (%1)"_s.arg(request.namePatterns.join(u' ')));
    panel.setLabelText(QFileDialog::Accept, u"Choose"_s);
}

} // namespace

int ScriptDialogs::run(QDialog &dialog)
{
    dialog.setModal(true);
    dialog.show();
    // A panel of the desktop's own has no window of ours.
    if (QWindow *window = dialog.windowHandle(); window && window->isVisible())
        m_present(*window);
    return dialog.exec();
}

ScriptResult<DialogReply> ScriptDialogs::displayDialog(const DialogRequest &request)
{
    QuestionDialog dialog(request);
    const int pressed = run(dialog);
    DialogReply reply;
    reply.textReturned = dialog.answer();
    reply.gaveUp = pressed == DialogWindow::gaveUp;
    if (!reply.gaveUp)
        reply.buttonReturned = request.buttons.at(pressed);
    if (!reply.gaveUp && !request.cancelButton.isEmpty() && reply.buttonReturned == request.cancelButton)
        return cancelled();
    return reply;
}

ScriptResult<std::optional<QStringList>> ScriptDialogs::chooseFromList(const ListRequest &request)
{
    ListDialog dialog(request);
    if (run(dialog) != ListDialog::chosen)
        return std::optional<QStringList>();
    return std::optional(dialog.selectedItems());
}

ScriptResult<QStringList> ScriptDialogs::chooseFiles(const FileRequest &request)
{
    useDialogPalette();
    QFileDialog panel;
    setUp(panel, request);
    arrangeToolkitsPanel(panel);
    const bool isChosen = run(panel) == QDialog::Accepted;
    const QStringList paths = isChosen ? chosenPaths(panel, request) : QStringList();
    if (paths.isEmpty())
        return cancelled();
    return paths;
}

void ScriptDialogs::showProblem(const ProblemReport &report)
{
    ProblemDialog dialog(report);
    run(dialog);
}

} // namespace Orbita
