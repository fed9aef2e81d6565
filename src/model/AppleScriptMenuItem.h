#pragma once

#include "model/PicturedMenuItem.h"

namespace Orbita {

/// A script of the user's own. The companion runs it.
class AppleScriptMenuItem final : public PicturedMenuItem {
public:
    /// Never null.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);
    /// What a new item holds: examples, one of which shows what to do next.
    [[nodiscard]] static QString sampleScript();

    /// A new item with the sample script.
    AppleScriptMenuItem(const QString &name, ItemServices &services);
    AppleScriptMenuItem(const QVariantMap &dictionary, ItemServices &services);

    [[nodiscard]] const QString &script() const { return text(); }
    /// Sends the script to the companion; does nothing where there is none.
    void open() override;

private:
    static constexpr Kind kind{"AppleScriptMenuItem", "script", "Script"};

    void edit(ItemEditors &editors, const EditorText &text, const ItemEditors::Handlers &handlers) override;
};

} // namespace Orbita
