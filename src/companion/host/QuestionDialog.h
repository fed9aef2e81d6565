#pragma once

#include "companion/host/DialogWindow.h"
#include "companion/script/ScriptHost.h"

class QLineEdit;
class QPlainTextEdit;

namespace Orbita {

/// The picture that the desktop's icon theme has for \a icon; null for None.
[[nodiscard]] QIcon dialogIcon(DialogRequest::Icon icon);

/// A question with up to three buttons, and perhaps a field to fill in, which is as high as its preset answer.
class QuestionDialog final : public DialogWindow {
    Q_OBJECT
public:
    explicit QuestionDialog(const DialogRequest &request);

    /// What stands in the field, its line breaks as "\r"; empty without one.
    [[nodiscard]] QString answer() const;

private:
    void addField(const DialogRequest &request);

    QLineEdit *m_field = nullptr;
    QPlainTextEdit *m_lines = nullptr; ///< in place of m_field for an answer of several lines
};

} // namespace Orbita
