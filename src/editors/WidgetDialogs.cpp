#include "editors/WidgetDialogs.h"

#include "platform/Stage.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QWindow>

namespace Orbita {

namespace {

constexpr qsizetype longestText = 4000; // characters; what programs send may be of any length

QString readable(const QString &text)
{
    return text.size() <= longestText ? text : text.left(longestText) + u'…';
}

/// Runs \a dialog until it is answered.
void run(QDialog &dialog, Stage &stage)
{
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
    stage.present(*dialog.windowHandle());
    dialog.exec();
}

QMessageBox::ButtonRole roleOf(qsizetype index, qsizetype count)
{
    if (index == 0)
        return QMessageBox::AcceptRole;
    return index == count - 1 ? QMessageBox::RejectRole : QMessageBox::ActionRole;
}

} // namespace

int WidgetDialogs::runAlert(const Alert &alert)
{
    QMessageBox box;
    box.setWindowTitle(QStringLiteral("Orbita"));
    box.setTextFormat(Qt::PlainText); // names and messages of others are no markup
    box.setText(readable(alert.message));
    box.setInformativeText(readable(alert.informativeText));
    QList<QAbstractButton *> buttons;
    for (const QString &title : alert.buttons)
        buttons.append(box.addButton(title, roleOf(buttons.size(), alert.buttons.size())));
    if (!buttons.isEmpty()) {
        box.setDefaultButton(static_cast<QPushButton *>(buttons.first()));
        box.setEscapeButton(buttons.last());
    }
    run(box, m_stage);
    const qsizetype pressed = buttons.indexOf(box.clickedButton());
    return int(pressed >= 0 ? pressed : std::max<qsizetype>(buttons.size() - 1, 0));
}

std::optional<QString> WidgetDialogs::chooseFile(const FileRequest &request)
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    QFileDialog dialog(nullptr, request.title, QFileInfo(pictures).isDir() ? pictures : QDir::homePath());
    // The desktop's own dialog would be a window of another library, which nothing puts above the ring.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({QStringLiteral("%1 (%2)").arg(request.filterName, request.namePatterns.join(u' ')),
                           QStringLiteral("All Files (*)")});
    run(dialog, m_stage);
    const QStringList chosen = dialog.selectedFiles();
    return dialog.result() == QDialog::Accepted && !chosen.isEmpty() ? std::optional(chosen.first()) : std::nullopt;
}

} // namespace Orbita
