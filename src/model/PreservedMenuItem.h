#pragma once

#include "model/MenuItem.h"

namespace Orbita {

/// An entry of a kind that this version of the program knows of but cannot open: shown by its name, and written back
/// exactly as it was read.
class PreservedMenuItem final : public MenuItem {
public:
    /// Never null.
    [[nodiscard]] static Pointer fromDictionary(const QVariantMap &dictionary, ItemServices &services);

    PreservedMenuItem(QVariantMap dictionary, ItemServices &services)
        : m_dictionary(std::move(dictionary)), m_services(services)
    {
    }

    [[nodiscard]] QString identity() const override;
    [[nodiscard]] QString name() const override;
    [[nodiscard]] Image image() const override;
    /// Logs that this kind cannot be opened.
    void open() override;
    /// The members of a collection that can be made, made anew at each call.
    [[nodiscard]] std::vector<Pointer> subitems() const override;
    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override { return m_dictionary; }

private:
    [[nodiscard]] QString text(const char *key) const;

    QVariantMap m_dictionary;
    ItemServices &m_services;
};

} // namespace Orbita
