#include "editors/SheetItemEditors.h"

#include "editors/LinkEditorViewController.h"
#include "editors/ScriptEditorViewController.h"
#include "editors/VXSheetWindowController.h"

#include <QEventLoop>

#include <utility>

namespace Orbita {

namespace {

constexpr QSizeF scriptSize{700, 450}; // points
constexpr QSizeF linkSize{480, 136};

} // namespace

void SheetItemEditors::editScript(const QString &script, const QString &title, const Image &image,
                                  FinishHandler handler)
{
    runSession(std::make_unique<ScriptEditorViewController>(script, title, image, m_dialogs, m_scheduler),
               {title, scriptSize}, handler);
}

void SheetItemEditors::editLink(const QString &urlString, const Image &image, FinishHandler handler)
{
    runSession(std::make_unique<LinkEditorViewController>(urlString, image, m_dialogs, m_scheduler),
               {QStringLiteral("Link"), linkSize}, handler);
}

void SheetItemEditors::runSession(std::unique_ptr<ItemEditorViewController> editor, const Look &look,
                                  const FinishHandler &handler)
{
    ItemEditorViewController &content = *editor;
    const auto controller = VXSheetWindowController::withContentViewController(m_stage, m_blur, std::move(editor));
    VXSheetWindow &window = controller->window();
    QEventLoop session;
    bool isAnswered = false;
    content.setFinishHandler([&](const QString &text, const std::optional<Image> &image) {
        if (std::exchange(isAnswered, true))
            return;
        handler(text, image);
        window.close();
        session.quit();
    });
    QObject::connect(&window, &VXSheetWindow::willClose, &session, [&content] { content.discardClicked(); });
    content.firstField().setFocus();
    window.setWindowTitle(look.title);
    window.present(look.size);
    if (!isAnswered)
        session.exec();
    content.discardClicked(); // where the program ends meanwhile
}

} // namespace Orbita
