#pragma once

#include "model/ItemEditors.h"
#include "model/MenuItem.h"

namespace Orbita {

/// What links and scripts have in common: a text that the user edits, and a name and a picture of the user's choice.
class PicturedMenuItem : public MenuItem, public std::enable_shared_from_this<PicturedMenuItem> {
public:
    [[nodiscard]] QString identity() const override;
    [[nodiscard]] QString name() const override { return m_name; }
    [[nodiscard]] bool canRename() const override { return true; }
    /// What was edited and not saved goes along.
    void rename(const QString &name) override;
    /// The picture of the user's choice, else the bundled one of the kind.
    [[nodiscard]] Image image() const override;
    /// Replaces the stored picture and its key; the old picture goes when the entries are saved. A picture that cannot
    /// be read or stored changes nothing and is logged; false then.
    bool setImage(const Image &image);
    [[nodiscard]] const QString &imageKey() const { return m_imageKey; }
    /// Has the stored picture, and what was edited and not saved, removed once the entries are saved.
    void willBeRemoved() override;

    [[nodiscard]] bool canEdit() const override { return true; }
    /// Returns when the user is done; \a completion, which saves the entry, has been called then, also where nothing
    /// was changed. What was written and not saved changes nothing: it is kept as a draft, with which editing goes on
    /// next time.
    void startEditing(QWidget *superview, const std::function<void()> &completion) override;

    [[nodiscard]] std::optional<QVariantMap> dictionaryRepresentation() const override;

protected:
    struct Kind {
        const char *className;
        const char *textKey; ///< what the text is stored under
        const char *picture; ///< the bundled one
    };

    /// An item without a picture of its own.
    PicturedMenuItem(const Kind &kind, QString name, QString text, ItemServices &services);
    /// The stored item; what \a dictionary lacks is empty.
    PicturedMenuItem(const Kind &kind, const QVariantMap &dictionary, ItemServices &services);

    [[nodiscard]] const QString &text() const { return m_text; }
    /// Opens the editor for this kind of text.
    virtual void edit(ItemEditors &editors, const EditorText &text, const ItemEditors::Handlers &handlers) = 0;

    ItemServices &m_services;

private:
    /// What is kept for this item and differs from it.
    [[nodiscard]] std::optional<Draft> draft() const;
    /// Nothing is to be kept beside what this item, whose identity was \a before, holds by now.
    void settleDraft(const QString &before, const std::optional<Image> &newPicture) const;

    /// Keeps \a picture, which could not be stored, for the next time that this item is edited, and tells the user.
    void keepPicture(const Image &picture) const;

    const Kind &m_kind;
    QString m_name;
    mutable Image m_image; ///< as shown; null before it is asked for
    QString m_imageKey;    // empty: no picture of its own
    QString m_text;
};

} // namespace Orbita
