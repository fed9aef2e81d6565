#pragma once

#include "model/ItemEditors.h"

#include <QSizeF>

#include <memory>

namespace Orbita {

class BlurBehind;
class Dialogs;
class ItemEditorViewController;
class Scheduler;
class Stage;

/// Edits items in sheets that float above the ring and block it while they are open.
///
/// Closing the sheet in any way other than Save and Discard, and the end of the program, keep what was written as a
/// draft: an entry may be run at any click, so half a script must not take the place of a whole one. While the user
/// writes, the draft is kept every now and then, so that little is lost where the program ends otherwise.
class SheetItemEditors final : public ItemEditors {
public:
    /// All outlive the editors.
    SheetItemEditors(Stage &stage, BlurBehind &blur, Dialogs &dialogs, Scheduler &scheduler)
        : m_stage(stage), m_blur(blur), m_dialogs(dialogs), m_scheduler(scheduler)
    {
    }

    void editScript(const EditorText &script, const QString &title, const Image &image,
                    const Handlers &handlers) override;
    void editLink(const EditorText &urlString, const Image &image, const Handlers &handlers) override;

private:
    struct Look {
        QString title; ///< read by screen readers and shown by task switchers
        QSizeF size;   ///< points
    };
    void runSession(std::unique_ptr<ItemEditorViewController> editor, const Look &look, const Handlers &handlers);

    Stage &m_stage;
    BlurBehind &m_blur;
    Dialogs &m_dialogs;
    Scheduler &m_scheduler;
};

} // namespace Orbita
