#pragma once

#include "editors/ItemEditorViewController.h"

class QLineEdit;

namespace Orbita {

/// Edits the address of a link.
class LinkEditorViewController final : public ItemEditorViewController {
    Q_OBJECT
public:
    /// \a dialogs and \a scheduler outlive the editor.
    LinkEditorViewController(EditorText urlString, const Image &image, Dialogs &dialogs, Scheduler &scheduler);

    [[nodiscard]] QWidget &firstField() override;
    [[nodiscard]] QLineEdit &urlField() const { return *m_urlField; }
    [[nodiscard]] const QString &baseUrlString() const { return baseText(); }
    void setLinkEditorFinishHandler(FinishHandler handler) { setFinishHandler(std::move(handler)); }

protected:
    /// As typed; whether it is an address is for others to say.
    [[nodiscard]] QString editedText() const override;
    void setEditedText(const QString &text) override;

private:
    void layOut();

    QLineEdit *const m_urlField;
};

} // namespace Orbita
