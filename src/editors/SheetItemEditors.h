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
/// Closing the sheet in any way other than Save, and the end of the program, discard: an entry may be run at any click,
/// so half a script must not take the place of a whole one that nobody could bring back.
class SheetItemEditors final : public ItemEditors {
public:
    /// All outlive the editors.
    SheetItemEditors(Stage &stage, BlurBehind &blur, Dialogs &dialogs, Scheduler &scheduler)
        : m_stage(stage), m_blur(blur), m_dialogs(dialogs), m_scheduler(scheduler)
    {
    }

    void editScript(const QString &script, const QString &title, const Image &image, FinishHandler handler) override;
    void editLink(const QString &urlString, const Image &image, FinishHandler handler) override;

private:
    struct Look {
        QString title; ///< read by screen readers and shown by task switchers
        QSizeF size;   ///< points
    };
    void runSession(std::unique_ptr<ItemEditorViewController> editor, const Look &look, const FinishHandler &handler);

    Stage &m_stage;
    BlurBehind &m_blur;
    Dialogs &m_dialogs;
    Scheduler &m_scheduler;
};

} // namespace Orbita
