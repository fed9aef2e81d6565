#pragma once

#include <QPlainTextEdit>

namespace Orbita {

/// The text of a script: plain, in a fixed-width font, without wrapping.
///
/// Tab types a tab; Control+Tab and Shift+Tab go to the next and the previous field. Control+Return is left to the
/// parent.
class ScriptTextView final : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit ScriptTextView(QWidget *parent = nullptr);

    /// The text with line feeds between lines; otherwise as it was set or typed.
    [[nodiscard]] QString script() const;
    /// Line breaks of any kind become line feeds.
    void setScript(const QString &script);

Q_SIGNALS:
    /// An input method has shown, changed or ended what it composes.
    void compositionChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
};

} // namespace Orbita
