#pragma once

#include <QDialog>

class QBoxLayout;
class QPushButton;

namespace Orbita {

/// The frame of every dialog of a script: an icon, a column of contents and a row of buttons.
///
/// Return presses the default button wherever the focus is, Escape and the title bar's button the cancel button;
/// without one, neither closes it. Space presses the button with the focus. exec() gives the index of the pressed
/// button, from left to right, or gaveUp. Texts are shown as they are, markup too, and are bounded.
class DialogWindow : public QDialog {
    Q_OBJECT
public:
    static constexpr int gaveUp = -1;
    static constexpr int contentWidth = 380; ///< points

    /// An empty \a title is "Orbita".
    explicit DialogWindow(const QString &title);

    void setIcon(const QIcon &icon);
    enum class TextStyle { Plain, Strong, Quiet };
    /// Adds a paragraph. A long one scrolls within the dialog.
    void addText(const QString &text, TextStyle style = TextStyle::Plain);
    /// Adds \a widget below what is there already.
    void addContent(QWidget *widget);

    /// Adds a button to the right of the others.
    QPushButton &addButton(const QString &text);
    void setDefaultButton(QPushButton &button);
    void setCancelButton(QPushButton &button);
    [[nodiscard]] QPushButton *defaultButton() const { return m_default; }
    /// Closes the dialog with the result gaveUp after \a seconds on the screen; 0 for never.
    void giveUpAfter(double seconds) { m_givingUpAfter = seconds; }

    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QBoxLayout *m_head;
    QBoxLayout *m_content;
    QBoxLayout *m_buttons;
    QPushButton *m_default = nullptr;
    QPushButton *m_cancel = nullptr;
    int m_buttonCount = 0;
    double m_givingUpAfter = 0.0;
};

} // namespace Orbita
