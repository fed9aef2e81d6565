#include "editors/ItemEditorViewController.h"

#include "editors/ImageWell.h"
#include "platform/Dialogs.h"
#include "platform/Scheduler.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

namespace Orbita {

namespace {

constexpr int buttonWidth = 88;             // points
constexpr std::chrono::seconds patience{5}; // with a picture when the user wants to save

QPushButton *makeButton(const QString &title, const QString &objectName, QWidget *parent)
{
    auto *button = new QPushButton(title, parent);
    button->setObjectName(objectName);
    button->setMinimumWidth(buttonWidth);
    button->setAutoDefault(true); // Return presses the one that has the keyboard
    return button;
}

} // namespace

ItemEditorViewController::ItemEditorViewController(QString baseText, const Image &image, Dialogs &dialogs,
                                                   Scheduler &scheduler)
    : m_baseText(std::move(baseText)),
      m_baseImage(image),
      m_imageView(new ImageWell(dialogs, this)),
      m_dialogs(dialogs),
      m_scheduler(scheduler)
{
    m_imageView->setImage(m_baseImage);
    connect(m_imageView, &ImageWell::imageDropped, this, &ItemEditorViewController::imageDropped);
    connect(m_imageView, &ImageWell::imageRefused, this, &ItemEditorViewController::imageRefused);
}

QHBoxLayout *ItemEditorViewController::makeButtons(QWidget &lastField)
{
    auto *discard = makeButton(QStringLiteral("Discard"), QStringLiteral("discardButton"), this);
    auto *save = makeButton(QStringLiteral("Save"), QStringLiteral("saveButton"), this);
    save->setDefault(true);
    save->setProperty("isPrimary", true);
    connect(discard, &QPushButton::clicked, this, &ItemEditorViewController::discardClicked);
    connect(save, &QPushButton::clicked, this, &ItemEditorViewController::saveClicked);
    setTabOrder(&lastField, m_imageView);
    setTabOrder(m_imageView, discard);
    setTabOrder(discard, save);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(discard);
    buttons->addWidget(save);
    return buttons;
}

void ItemEditorViewController::imageDropped()
{
    m_imageChanged = true;
    if (std::exchange(m_isSaveDue, false))
        saveClicked();
}

void ItemEditorViewController::saveClicked()
{
    if (m_imageView->isReading())
        return waitForPicture();
    finish(editedText(), m_imageChanged ? std::optional(m_imageView->image()) : std::nullopt);
}

void ItemEditorViewController::waitForPicture()
{
    if (std::exchange(m_isSaveDue, true))
        return;
    m_scheduler.after(patience, *this, [this, wait = ++m_waits] {
        if (m_isSaveDue && wait == m_waits)
            saveWithoutPicture();
    });
}

void ItemEditorViewController::saveWithoutPicture()
{
    m_isSaveDue = false;
    m_imageView->stopReading();
    Dialogs &dialogs = m_dialogs; // saving may be the end of the editor
    saveClicked();
    dialogs.runAlert(
        {QStringLiteral("The picture could not be read in time, so the old one stays."), {}, {QStringLiteral("OK")}});
}

void ItemEditorViewController::discardClicked()
{
    m_isSaveDue = false;
    m_imageView->stopReading();
    finish(m_baseText, std::nullopt);
}

void ItemEditorViewController::finish(const QString &text, const std::optional<Image> &image)
{
    if (m_finishHandler)
        m_finishHandler(text, image);
}

void ItemEditorViewController::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn || event->matches(QKeySequence::Save))
        saveClicked();
    else if (event->matches(QKeySequence::Cancel))
        discardClicked();
    else
        QWidget::keyPressEvent(event);
}

} // namespace Orbita
