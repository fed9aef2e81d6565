#pragma once

#include "model/ItemEditors.h"
#include "platform/Image.h"

#include <QWidget>

#include <optional>
#include <utility>

class QHBoxLayout;
class QLabel;

namespace Orbita {

class Dialogs;
class ImageWell;
class Scheduler;

/// What the editors of items have in common: a text, a well with the item's picture, and buttons to save and discard.
///
/// Return, Control+Return and Control+S save, Escape closes the window, unless a field has a use of its own for the
/// key. An editor saves nothing itself: it hands the result to its handler, each time it is saved or discarded.
///
/// Where there is a draft, that is shown in place of what the item holds, and a quiet line says so.
class ItemEditorViewController : public QWidget {
    Q_OBJECT
public:
    using FinishHandler = ItemEditors::FinishHandler;

    /// The field that gets the keyboard first.
    [[nodiscard]] virtual QWidget &firstField() = 0;
    [[nodiscard]] ImageWell &imageView() const { return *m_imageView; }
    [[nodiscard]] const Image &baseImage() const { return m_baseImage; }
    /// Whether the user has given another picture, now or in the draft.
    [[nodiscard]] bool imageChanged() const { return m_imageChanged; }
    /// What is written and not saved; nothing where text and picture are as they were when editing began without a
    /// draft.
    [[nodiscard]] std::optional<Draft> draft() const;
    /// Forgets the picture that is being read, and a save that waits for it.
    void stopReading();
    void setFinishHandler(FinishHandler handler) { m_finishHandler = std::move(handler); }

public Q_SLOTS:
    /// Calls the handler with the text as it stands, and with the picture in the well where it is another one. While a
    /// given picture is still being read, as soon as it is there; not at all when it turns out to be unusable. A
    /// picture that does not come in some seconds is told of with an alert, and the rest is saved without it.
    void saveClicked();
    /// Calls the handler with the text that the item held when editing began, and without a picture.
    void discardClicked();

Q_SIGNALS:
    /// The text or the picture may be another one.
    void edited();

protected:
    /// \a image is the item's when editing begins; \a dialogs and \a scheduler outlive the editor.
    ItemEditorViewController(EditorText text, const Image &image, Dialogs &dialogs, Scheduler &scheduler);

    [[nodiscard]] virtual QString editedText() const = 0;
    virtual void setEditedText(const QString &text) = 0;
    /// Sets the text that is to be edited. To be called once, when there is a field for it.
    void showText();
    [[nodiscard]] const QString &baseText() const { return m_text.stored; }
    [[nodiscard]] bool showsDraft() const { return m_text.draft.has_value(); }
    /// The line that says that a draft is shown; null where none is.
    [[nodiscard]] QLabel *makeDraftNote();
    /// Discard and Save, at the right. The tab order goes from \a lastField over the well to them.
    [[nodiscard]] QHBoxLayout *makeButtons(QWidget &lastField);
    void keyPressEvent(QKeyEvent *event) override;

private:
    void imageDropped();
    void imageRefused() { m_isSaveDue = false; }
    void waitForPicture();
    void saveWithoutPicture();
    void finish(const QString &text, const std::optional<Image> &image);

    const EditorText m_text;
    QString m_baseTextAsShown; ///< line breaks may be others than in what is stored
    const Image m_baseImage;
    ImageWell *const m_imageView;
    Dialogs &m_dialogs;
    Scheduler &m_scheduler;
    bool m_imageChanged;
    bool m_isSaveDue = false; ///< waits for the picture
    int m_waits = 0;          ///< how often a save has waited for a picture
    FinishHandler m_finishHandler;
};

} // namespace Orbita
