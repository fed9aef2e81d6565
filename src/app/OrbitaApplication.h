#pragma once

#include <QApplication>

class QKeyEvent;

namespace Orbita {

/// The operation of a text field that a key event asks for: "cut", "copy", "paste" or "selectAll" for X, C, V or A with
/// the Control key, no other modifier and Caps Lock off; null otherwise.
[[nodiscard]] const char *editingOperation(const QKeyEvent &event);

/// The application. It has no menu, so it supplies the four editing shortcuts to whatever field has the keyboard.
class OrbitaApplication final : public QApplication {
    Q_OBJECT
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override;
};

} // namespace Orbita
