#pragma once

#include "model/Draft.h"
#include "platform/Image.h"

#include <functional>
#include <optional>
#include <utility>

namespace Orbita {

/// The text of an item as an editor is given it.
struct EditorText {
    EditorText(QString storedText, std::optional<Draft> keptDraft = {})
        : stored(std::move(storedText)), draft(std::move(keptDraft))
    {
    }

    QString stored;             ///< what the item holds, and what discarding gives back
    std::optional<Draft> draft; ///< what is shown in place of it
};

/// The windows in which items are edited. Each call runs an event loop of its own until the user is done.
class ItemEditors {
public:
    /// Given the text, and the picture where the user chose another one. Called once when the user saves or discards:
    /// what is discarded comes back as it was stored, without a picture. Not called when the editor is closed
    /// otherwise.
    using FinishHandler = std::function<void(const QString &text, const std::optional<Image> &image)>;
    /// Given what is written and not saved, or nothing where that is what the item holds. Called now and then while the
    /// user writes, and at last when the editor is closed without saving or discarding; never after that or the
    /// FinishHandler.
    using DraftHandler = std::function<void(const std::optional<Draft> &draft)>;
    struct Handlers {
        FinishHandler finish;
        DraftHandler keepDraft;
    };

    virtual ~ItemEditors() = default;

    virtual void editScript(const EditorText &script, const QString &title, const Image &image,
                            const Handlers &handlers)
        = 0;
    virtual void editLink(const EditorText &urlString, const Image &image, const Handlers &handlers) = 0;
};

} // namespace Orbita
