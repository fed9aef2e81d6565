#pragma once

#include "model/ItemEditors.h"
#include "platform/Image.h"

#include <QWidget>

#include <optional>
#include <utility>

class QHBoxLayout;

namespace Orbita {

class Dialogs;
class ImageWell;
class Scheduler;

/// What the editors of items have in common: a text, a well with the item's picture, and buttons to save and discard.
///
/// Return, Control+Return and Control+S save, Escape discards, unless a field has a use of its own for the key. An
/// editor saves nothing itself: it hands the result to its handler, each time it is saved or discarded.
class ItemEditorViewController : public QWidget {
    Q_OBJECT
public:
    using FinishHandler = ItemEditors::FinishHandler;

    /// The field that gets the keyboard first.
    [[nodiscard]] virtual QWidget &firstField() = 0;
    [[nodiscard]] ImageWell &imageView() const { return *m_imageView; }
    [[nodiscard]] const Image &baseImage() const { return m_baseImage; }
    /// Whether the user has given another picture.
    [[nodiscard]] bool imageChanged() const { return m_imageChanged; }
    void setFinishHandler(FinishHandler handler) { m_finishHandler = std::move(handler); }

public Q_SLOTS:
    /// Calls the handler with the text as it stands, and with the picture in the well where it is another one. While a
    /// given picture is still being read, as soon as it is there; not at all when it turns out to be unusable. A
    /// picture that does not come in some seconds is told of with an alert, and the rest is saved without it.
    void saveClicked();
    /// Calls the handler with the text as it was when editing began, and without a picture.
    void discardClicked();

protected:
    /// \a image is the item's when editing begins; \a dialogs and \a scheduler outlive the editor.
    ItemEditorViewController(QString baseText, const Image &image, Dialogs &dialogs, Scheduler &scheduler);

    [[nodiscard]] virtual QString editedText() const = 0;
    [[nodiscard]] const QString &baseText() const { return m_baseText; }
    /// Discard and Save, at the right. The tab order goes from \a lastField over the well to them.
    [[nodiscard]] QHBoxLayout *makeButtons(QWidget &lastField);
    void keyPressEvent(QKeyEvent *event) override;

private:
    void imageDropped();
    void imageRefused() { m_isSaveDue = false; }
    void waitForPicture();
    void saveWithoutPicture();
    void finish(const QString &text, const std::optional<Image> &image);

    const QString m_baseText;
    const Image m_baseImage;
    ImageWell *const m_imageView;
    Dialogs &m_dialogs;
    Scheduler &m_scheduler;
    bool m_imageChanged = false;
    bool m_isSaveDue = false; ///< waits for the picture
    int m_waits = 0;          ///< how often a save has waited for a picture
    FinishHandler m_finishHandler;
};

} // namespace Orbita
