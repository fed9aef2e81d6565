#pragma once

#include <QWidget>

namespace Orbita {

/// Whether a window that is shown gets the keyboard.
enum class TakesKeyboard { No, Yes };

/// A plain window that stands where the settings window will be: it says what Orbita is and how it is used.
class SettingsStandInWindow final : public QWidget {
    Q_OBJECT
public:
    explicit SettingsStandInWindow(QWidget *parent = nullptr);

    /// Shows the window in the middle of its screen and in front.
    void present(TakesKeyboard keyboard);
};

} // namespace Orbita
