#pragma once

#include "editors/VXSheetWindow.h"

#include <memory>

namespace Orbita {

/// Shows a view in a sheet of its own.
///
/// Keeps itself alive from its making until its window closes; then it goes as soon as nobody else holds it. Its window
/// and the view go after it, from the event loop, so that either may close the window from a handler of its own.
class VXSheetWindowController final : public QObject {
    Q_OBJECT
public:
    /// \a contentViewController fills the sheet. \a stage and \a blur outlive the window.
    [[nodiscard]] static std::shared_ptr<VXSheetWindowController>
    withContentViewController(Stage &stage, BlurBehind &blur, std::unique_ptr<QWidget> contentViewController);

    [[nodiscard]] VXSheetWindow &window() const { return *m_window; }
    [[nodiscard]] QWidget &contentController() const { return *m_contentViewController; }

private:
    struct DeleteLater {
        void operator()(QObject *object) const { object->deleteLater(); }
    };

    VXSheetWindowController(Stage &stage, BlurBehind &blur, std::unique_ptr<QWidget> contentViewController);
    void windowWillClose();

    std::unique_ptr<VXSheetWindow, DeleteLater> m_window;
    QWidget *m_contentViewController;                ///< a child of the window's content view
    std::shared_ptr<VXSheetWindowController> m_self; ///< while the window is open
};

} // namespace Orbita
