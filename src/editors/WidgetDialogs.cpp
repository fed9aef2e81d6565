#include "editors/WidgetDialogs.h"

#include "editors/SheetStyle.h"
#include "platform/Stage.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>
#include <QWindow>

#include <algorithm>

namespace Orbita {

namespace {

constexpr qsizetype longestText = 4000; // characters; file names and other programs' messages are of any length
constexpr int buttonWidth = 88;         // points
constexpr int leastAlertWidth = 320;    // points, of the text

QString readable(const QString &text)
{
    return text.size() <= longestText ? text : text.left(longestText) + u'…';
}

/// White as the sheets, beside which \a dialog stands.
void applySheetLook(QDialog &dialog)
{
    dialog.setPalette(sheetPalette());
    // Not for the dialog as a whole: a style sheet would take the palette away from lists and menus.
    const QString styleSheet = sheetStyleSheet();
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        button->setStyleSheet(styleSheet);
        button->setMinimumWidth(buttonWidth);
    }
    for (QLineEdit *field : dialog.findChildren<QLineEdit *>())
        field->setStyleSheet(styleSheet);
}

void makePrimary(QAbstractButton &button)
{
    button.setProperty("isPrimary", true);
}

/// The message in bold above the informative text, with margins as those of a sheet.
void arrange(QMessageBox &box)
{
    box.layout()->setContentsMargins(0, 20, 20, 16); // at the left the toolkit indents the text itself
    for (QLabel *label : box.findChildren<QLabel *>()) {
        label->setContentsMargins(0, 0, 0, 0);
        label->setIndent(0);
    }
    if (auto *informative = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel")))
        informative->setContentsMargins(0, 0, 0, 10); // from the buttons
    if (auto *message = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label"))) {
        QFont font = message->font();
        font.setBold(true);
        message->setFont(font);
        message->setMinimumWidth(leastAlertWidth);
    }
}

/// The folders that pictures usually lie in.
QList<QUrl> picturePlaces()
{
    QList<QUrl> places;
    for (const auto place : {QStandardPaths::HomeLocation, QStandardPaths::DesktopLocation,
                             QStandardPaths::PicturesLocation, QStandardPaths::DownloadLocation}) {
        const QString path = QStandardPaths::writableLocation(place);
        if (const QUrl url = QUrl::fromLocalFile(path); QFileInfo(path).isDir() && !places.contains(url))
            places.append(url);
    }
    return places;
}

/// Wide enough for names, sizes, types and dates.
void arrange(QFileDialog &dialog)
{
    dialog.setViewMode(QFileDialog::Detail);
    dialog.setSidebarUrls(picturePlaces());
    dialog.resize(800, 480);
    dialog.setLabelText(QFileDialog::Accept, QStringLiteral("Choose"));
    if (const auto *buttons = dialog.findChild<QDialogButtonBox *>())
        makePrimary(*buttons->button(QDialogButtonBox::Open));
    if (auto *splitter = dialog.findChild<QSplitter *>())
        splitter->setSizes({140, 660});
    if (const auto *files = dialog.findChild<QTreeView *>()) {
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
}

/// Runs \a dialog until it is answered.
void run(QDialog &dialog, Stage &stage)
{
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    applySheetLook(dialog);
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
        makePrimary(*buttons.first());
        box.setEscapeButton(buttons.last());
    }
    arrange(box);
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
    arrange(dialog);
    run(dialog, m_stage);
    const QStringList chosen = dialog.selectedFiles();
    return dialog.result() == QDialog::Accepted && !chosen.isEmpty() ? std::optional(chosen.first()) : std::nullopt;
}

} // namespace Orbita
