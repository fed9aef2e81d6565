#pragma once

#include "model/MenuItem.h"

namespace Orbita {

/// An entry of a kind that this version of the program knows of but cannot open: shown by its name, and written back
/// exactly as it was read.
class PreservedMenuItem final : public MenuItem {
public:
    /// Never null.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    explicit PreservedMenuItem(QVariantMap dictionary) : m_dictionary(std::move(dictionary)) {}

    [[nodiscard]] QString identity() const override;
    [[nodiscard]] QString name() const override;
    [[nodiscard]] Image image() const override;
    /// Logs that this kind cannot be opened.
    void open() override;
    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override { return m_dictionary; }

private:
    [[nodiscard]] QString text(const char *key) const;

    QVariantMap m_dictionary;
};

} // namespace Orbita
