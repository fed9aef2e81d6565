#include "editors/ItemEditorViewController.h"

#include "editors/ImageWell.h"
#include "platform/Dialogs.h"
#include "platform/Scheduler.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
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

/// When it was \a time: a time of today, or the day.
QString spoken(const QDateTime &time)
{
    const QLocale locale;
    const QDateTime local = time.toLocalTime();
    if (local.date() != QDate::currentDate())
        return locale.toString(local.date(), QLocale::ShortFormat);
    // Some locales have no form without seconds.
    return locale.toString(local.time(), locale.timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss")));
}

} // namespace

ItemEditorViewController::ItemEditorViewController(EditorText text, const Image &image, Dialogs &dialogs,
                                                   Scheduler &scheduler)
    : m_text(std::move(text)),
      m_baseImage(image),
      m_imageView(new ImageWell(dialogs, this)),
      m_dialogs(dialogs),
      m_scheduler(scheduler),
      m_imageChanged(m_text.draft && m_text.draft->picture)
{
    m_imageView->setImage(m_imageChanged ? *m_text.draft->picture : m_baseImage);
    connect(m_imageView, &ImageWell::imageDropped, this, &ItemEditorViewController::imageDropped);
    connect(m_imageView, &ImageWell::imageRefused, this, &ItemEditorViewController::imageRefused);
}

void ItemEditorViewController::showText()
{
    setEditedText(m_text.stored);
    m_baseTextAsShown = editedText();
    if (m_text.draft)
        setEditedText(m_text.draft->text);
}

std::optional<Draft> ItemEditorViewController::draft() const
{
    const QString text = editedText();
    if (text == m_baseTextAsShown && !m_imageChanged)
        return std::nullopt;
    return Draft{text, m_imageChanged ? std::optional(m_imageView->image()) : std::nullopt,
                 QDateTime::currentDateTimeUtc()};
}

QLabel *ItemEditorViewController::makeDraftNote()
{
    if (!m_text.draft)
        return nullptr;
    const QString words = QStringLiteral("Draft from %1, not saved yet").arg(spoken(m_text.draft->changed));
    auto *note = new QLabel(words, this);
    note->setObjectName(QStringLiteral("draftNote"));
    note->setProperty("isQuiet", true);
    note->setMinimumWidth(1); // rather cut than wider than the sheet
    firstField().setAccessibleDescription(words);
    return note;
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
    Q_EMIT edited();
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
    // Before saving, which is the end of the editor and lets the ring go.
    m_dialogs.runAlert(
        {QStringLiteral("The picture could not be read in time, so the old one stays."), {}, {QStringLiteral("OK")}});
    saveClicked();
}

void ItemEditorViewController::stopReading()
{
    m_isSaveDue = false;
    m_imageView->stopReading();
}

void ItemEditorViewController::discardClicked()
{
    stopReading();
    finish(m_text.stored, std::nullopt);
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
        window()->close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace Orbita
