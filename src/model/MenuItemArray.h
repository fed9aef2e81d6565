#pragma once

#include "model/MenuItem.h"

#include <QString>

#include <set>
#include <vector>

namespace Orbita {

class AppSettings;
class UserDefaults;

/// The user's entries in ring order, loaded from and saved to "menuItems.plist".
///
/// Changing the list saves nothing: call persist(), and willBeRemoved() on an item that is deleted for good.
class MenuItemArray {
public:
    using Items = std::vector<MenuItem::Pointer>;

    /// Keeps its file in \a folder and loads it.
    MenuItemArray(const QString &folder, UserDefaults &defaults, const AppSettings &settings, ItemServices &services);

    /// The entries as they are stored in \a folder now, and where no file lies there, those under the legacy key of
    /// \a defaults. None when they cannot be read. For looking something up: it neither writes nor logs.
    [[nodiscard]] static QVariantList storedEntries(const QString &folder, const UserDefaults &defaults);

    /// Loads the list anew. False when a stored entry could not be made; persist() then drops it from the file. An
    /// entry whose file merely cannot be reached is made.
    ///
    /// Without a readable file the entries under the legacy defaults key "menuItems" are taken over, without those the
    /// list stays as it is, an empty list becomes the six core entries, and the result is saved. A damaged file is set
    /// aside first; one that may not be read is left alone, and nothing is saved while it stands; the user is told of
    /// both. The "Finder" entry follows the setting: hidden, or first in the list when it is not among the entries.
    bool refresh();
    /// Saves the list atomically as a binary property list, running applications left out. False when
    /// that failed, which is logged: the old file stands then. Where the last refresh() met entries that could not be
    /// made, a copy of the file that holds them is set aside first, and the user is told. Pictures that no entry names
    /// any more go last.
    [[nodiscard]] bool persist();
    /// Saves the list where the last refresh() met stored entries that could not be made, so that they are dropped from
    /// the file. Where that fails, which is logged, the next one meets them again.
    void dropUnmadeEntries();
    /// Drops, in the same way, the items whose files were removed for good.
    void dropItemsThatAreGone();

    [[nodiscard]] std::size_t count() const { return m_items.size(); }
    [[nodiscard]] bool isEmpty() const { return m_items.empty(); }
    [[nodiscard]] const MenuItem::Pointer &objectAt(std::size_t index) const;
    /// The index of \a item; nothing when it is not in the list.
    [[nodiscard]] std::optional<std::size_t> indexOf(const MenuItem &item) const;
    void addObject(MenuItem::Pointer item) { m_items.push_back(std::move(item)); }
    void insertObject(MenuItem::Pointer item, std::size_t index);
    void removeObjectAt(std::size_t index);
    /// Removes \a item if it is in the list.
    void removeObject(const MenuItem &item);
    void removeObjectsAt(const std::set<std::size_t> &indexes);
    [[nodiscard]] const Items &menuItems() const { return m_items; }
    [[nodiscard]] Items::const_iterator begin() const { return m_items.begin(); }
    [[nodiscard]] Items::const_iterator end() const { return m_items.end(); }
    [[nodiscard]] const QString &filePath() const { return m_filePath; }

private:
    [[nodiscard]] std::optional<QVariantList> readFile();
    /// Replaces the list by what \a entries describe. False when one of them could not be made.
    bool load(const QVariantList &entries);
    void addDefaultEntries();
    /// Tells the user that the entries that could not be made are dropped, and kept in the file \a aside.
    void tellOfDroppedEntries(const QString &aside);

    QString m_filePath;
    UserDefaults &m_defaults;
    const AppSettings &m_settings;
    ItemServices &m_services;
    Items m_items;
    QStringList m_droppedNames; ///< what to call the entries that are in the file and no more in the list
    bool m_fileHoldsUnmadeEntries = false;
    bool m_mayReplaceFile = true; // not while a file stands that could neither be read nor set aside
};

} // namespace Orbita
