#include "editors/VXSheetWindowController.h"

#include "editors/VXSheetWindowContentView.h"

#include <QVBoxLayout>

namespace Orbita {

std::shared_ptr<VXSheetWindowController>
VXSheetWindowController::withContentViewController(Stage &stage, BlurBehind &blur,
                                                   std::unique_ptr<QWidget> contentViewController)
{
    std::shared_ptr<VXSheetWindowController> controller(
        new VXSheetWindowController(stage, blur, std::move(contentViewController)));
    controller->m_self = controller;
    return controller;
}

VXSheetWindowController::VXSheetWindowController(Stage &stage, BlurBehind &blur,
                                                 std::unique_ptr<QWidget> contentViewController)
    : m_window(new VXSheetWindow(stage, blur)), m_contentViewController(contentViewController.release())
{
    auto *filling = new QVBoxLayout(&m_window->contentView());
    filling->setContentsMargins(0, 0, 0, 0);
    filling->addWidget(m_contentViewController);
    connect(m_window.get(), &VXSheetWindow::willClose, this, &VXSheetWindowController::windowWillClose);
}

void VXSheetWindowController::windowWillClose()
{
    m_self.reset(); // may end this controller
}

} // namespace Orbita
