#include "editors/SheetItemEditors.h"

#include "editors/AutosaveTimer.h"
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

void SheetItemEditors::editScript(const EditorText &script, const QString &title, const Image &image,
                                  const Handlers &handlers)
{
    runSession(std::make_unique<ScriptEditorViewController>(script, title, image, m_dialogs, m_scheduler),
               {title, scriptSize}, handlers);
}

void SheetItemEditors::editLink(const EditorText &urlString, const Image &image, const Handlers &handlers)
{
    runSession(std::make_unique<LinkEditorViewController>(urlString, image, m_dialogs, m_scheduler),
               {QStringLiteral("Link"), linkSize}, handlers);
}

void SheetItemEditors::runSession(std::unique_ptr<ItemEditorViewController> editor, const Look &look,
                                  const Handlers &handlers)
{
    ItemEditorViewController &content = *editor;
    const auto controller = VXSheetWindowController::withContentViewController(m_stage, m_blur, std::move(editor));
    VXSheetWindow &window = controller->window();
    QEventLoop session;
    bool isOver = false;
    const auto end = [&] {
        window.close();
        session.quit();
    };
    const auto close = [&] {
        if (std::exchange(isOver, true))
            return;
        content.stopReading();
        handlers.keepDraft(content.draft());
        end();
    };
    content.setFinishHandler([&](const QString &text, const std::optional<Image> &image) {
        if (std::exchange(isOver, true))
            return;
        handlers.finish(text, image);
        end();
    });
    AutosaveTimer autosave(m_scheduler, [&] {
        if (!isOver)
            handlers.keepDraft(content.draft());
    });
    QObject::connect(&content, &ItemEditorViewController::edited, &autosave, &AutosaveTimer::noteChange);
    QObject::connect(&window, &VXSheetWindow::willClose, &session, close);
    content.firstField().setFocus();
    window.setWindowTitle(look.title);
    window.present(look.size);
    if (!isOver)
        session.exec();
    close(); // where the program ends meanwhile
}

} // namespace Orbita
