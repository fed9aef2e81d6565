#pragma once

#include "editors/ItemEditorViewController.h"

#include <QTimer>

class QLabel;

namespace Orbita {

class ScriptTextView;

/// Edits a script, which is coloured while it is typed.
class ScriptEditorViewController final : public ItemEditorViewController {
    Q_OBJECT
public:
    /// \a title is shown above the script; \a dialogs and \a scheduler outlive the editor.
    ScriptEditorViewController(EditorText script, const QString &title, const Image &image, Dialogs &dialogs,
                               Scheduler &scheduler);

    [[nodiscard]] QWidget &firstField() override;
    [[nodiscard]] ScriptTextView &textView() const { return *m_textView; }
    [[nodiscard]] const QString &baseScript() const { return baseText(); }
    void setScriptEditorFinishHandler(FinishHandler handler) { setFinishHandler(std::move(handler)); }

protected:
    [[nodiscard]] QString editedText() const override;
    void setEditedText(const QString &text) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOut();
    void refreshColoring();
    void textDidChange() { refreshColoring(); }
    void tick() { refreshColoring(); }

    const QString m_title;
    QLabel *const m_titleField;
    ScriptTextView *const m_textView;
    /// Input methods take a line's colours away while they compose, and tell nothing as a change of the text. Coloured
    /// again when the event that did so is over, once for all that come together.
    QTimer m_updateTimer;
};

} // namespace Orbita
