#pragma once

#include "model/ItemEditors.h"

namespace Orbita {

/// Edits items in sheets that float above the ring.
class SheetItemEditors final : public ItemEditors {
public:
    void editScript(const QString &script, const QString &title, const Image &image, FinishHandler handler) override;
    void editLink(const QString &urlString, const Image &image, FinishHandler handler) override;
};

} // namespace Orbita
