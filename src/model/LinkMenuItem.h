#pragma once

#include "model/PicturedMenuItem.h"

namespace Orbita {

/// A web address, or any other one that the desktop has an application for.
class LinkMenuItem final : public PicturedMenuItem {
public:
    /// Never null.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    /// A new link, named by linkName().
    LinkMenuItem(const QString &urlString, ItemServices &services);
    LinkMenuItem(const QVariantMap &dictionary, ItemServices &services);

    [[nodiscard]] const QString &urlString() const { return text(); }
    /// An address that leads nowhere is logged.
    void open() override;

private:
    static constexpr Kind kind{"LinkMenuItem", "url", "Bookmark"};

    void edit(ItemEditors &editors, const EditorText &text, const ItemEditors::Handlers &handlers) override;
};

} // namespace Orbita
