#include "model/MenuItemArray.h"

#include "model/CoreMenuItem.h"
#include "model/DraftStore.h"
#include "model/ImageStore.h"
#include "model/ItemServices.h"
#include "model/Log.h"
#include "model/Notices.h"
#include "model/StoredText.h"
#include "platform/AtomicFile.h"
#include "platform/PropertyList.h"
#include "platform/UserDefaults.h"
#include "settings/AppSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <ranges>
#include <utility>

namespace Orbita {

namespace {

const QString finderName = QStringLiteral("Finder");

QString filePathIn(const QString &folder)
{
    return folder + QStringLiteral("/menuItems.plist");
}

std::optional<QVariantList> readLegacyDefaults(const UserDefaults &defaults)
{
    const QVariant stored = defaults.value(QStringLiteral("menuItems"));
    return stored.typeId() == QMetaType::QVariantList ? std::optional(stored.toList()) : std::nullopt;
}

QString tr(const char *text)
{
    return QCoreApplication::translate("MenuItemArray", text);
}

/// What to call an entry that was dropped and is called \a name.
QString quotedName(const QString &name)
{
    return name.isEmpty() ? tr("An entry without a name") : QStringLiteral("“%1”").arg(forLog(name));
}

bool isFinder(const MenuItem &item)
{
    return dynamic_cast<const CoreMenuItem *>(&item) && item.name() == finderName;
}

} // namespace

MenuItemArray::MenuItemArray(const QString &folder, UserDefaults &defaults, const AppSettings &settings,
                             ItemServices &services)
    : m_filePath(filePathIn(folder)), m_defaults(defaults), m_settings(settings), m_services(services)
{
    refresh();
}

const MenuItem::Pointer &MenuItemArray::objectAt(std::size_t index) const
{
    Q_ASSERT(index < m_items.size());
    return m_items[index];
}

std::optional<std::size_t> MenuItemArray::indexOf(const MenuItem &item) const
{
    const auto found = std::ranges::find(m_items, &item, &MenuItem::Pointer::get);
    return found != m_items.end() ? std::optional(std::size_t(found - m_items.begin())) : std::nullopt;
}

void MenuItemArray::insertObject(MenuItem::Pointer item, std::size_t index)
{
    Q_ASSERT(index <= m_items.size());
    m_items.insert(m_items.begin() + std::ptrdiff_t(index), std::move(item));
}

void MenuItemArray::removeObjectAt(std::size_t index)
{
    Q_ASSERT(index < m_items.size());
    m_items.erase(m_items.begin() + std::ptrdiff_t(index));
}

void MenuItemArray::removeObject(const MenuItem &item)
{
    std::erase_if(m_items, [&item](const MenuItem::Pointer &entry) { return entry.get() == &item; });
}

void MenuItemArray::removeObjectsAt(const std::set<std::size_t> &indexes)
{
    for (auto index = indexes.rbegin(); index != indexes.rend(); ++index)
        removeObjectAt(*index);
}

QVariantList MenuItemArray::storedEntries(const QString &folder, const UserDefaults &defaults)
{
    const auto root = PropertyList::read(filePathIn(folder));
    if (root)
        return root->typeId() == QMetaType::QVariantList ? root->toList() : QVariantList();
    const bool isMissing = root.error() == PropertyList::ReadError::Missing;
    return isMissing ? readLegacyDefaults(defaults).value_or(QVariantList()) : QVariantList();
}

bool MenuItemArray::refresh()
{
    auto entries = readFile();
    const bool isFileMissing = !entries;
    if (isFileMissing)
        entries = readLegacyDefaults(m_defaults);
    const bool allMade = !entries || load(*entries);
    m_fileHoldsUnmadeEntries = !isFileMissing && !allMade;
    if (m_items.empty())
        addDefaultEntries();
    if (isFileMissing && !persist())
        qCWarning(lcModel, "The ring starts from the same entries again next time.");
    return allMade;
}

std::optional<QVariantList> MenuItemArray::readFile()
{
    const bool mightReplaceFile = std::exchange(m_mayReplaceFile, true);
    const auto root = PropertyList::read(m_filePath);
    if (root && root->typeId() == QMetaType::QVariantList)
        return root->toList();
    if (!root && root.error() == PropertyList::ReadError::Missing)
        return std::nullopt;
    const bool mayBeIntact = !root && root.error() == PropertyList::ReadError::Unreadable;
    const QString aside = mayBeIntact ? QString() : setAsideDamagedFile(m_filePath);
    m_mayReplaceFile = !aside.isEmpty();
    if (m_mayReplaceFile) {
        qCWarning(lcModel, "The item file is damaged; it was set aside as %s.", qUtf8Printable(aside));
        m_services.notices.tell(tr("The ring's entries could not be read"),
                                tr("Their file is damaged. It was kept as %1.").arg(aside));
    } else if (mightReplaceFile) {
        qCWarning(lcModel, "The item file %s cannot be read; nothing will be saved.", qUtf8Printable(m_filePath));
        const QString why = mayBeIntact ? tr("%1 may not be opened.") : tr("%1 is damaged, and cannot be renamed.");
        m_services.notices.tellOnce(tr("The ring's entries could not be read"),
                                    why.arg(m_filePath)
                                        + tr(" Until that is mended, changes of the ring are not saved."));
    }
    return std::nullopt;
}

bool MenuItemArray::load(const QVariantList &entries)
{
    m_items.clear();
    m_droppedNames.clear();
    const bool showFinder = m_settings.showFinder();
    bool allMade = true;
    bool sawFinder = false;
    for (const QVariant &entry : entries) {
        auto item = MenuItem::fromDictionary(entry.toMap(), m_services);
        if (!item) {
            allMade = false;
            m_droppedNames << quotedName(storedText(entry.toMap(), "name"));
            continue;
        }
        const bool finder = isFinder(*item);
        sawFinder = sawFinder || finder;
        if (!finder || showFinder)
            m_items.push_back(std::move(item));
    }
    if (!sawFinder && showFinder)
        m_items.insert(m_items.begin(), std::make_shared<CoreMenuItem>(finderName, m_services));
    return allMade;
}

void MenuItemArray::addDefaultEntries()
{
    for (const char *name : {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"})
        m_items.push_back(std::make_shared<CoreMenuItem>(QString::fromLatin1(name), m_services));
    if (!m_settings.showFinder())
        m_items.erase(m_items.begin());
}

bool MenuItemArray::persist()
{
    if (!m_mayReplaceFile)
        return false;
    QVariantList entries;
    for (const auto &item : m_items) {
        if (auto dictionary = item->dictionaryRepresentation())
            entries.append(*std::move(dictionary));
    }
    const QString aside = m_fileHoldsUnmadeEntries ? copyAsideDamagedFile(m_filePath) : QString();
    if (m_fileHoldsUnmadeEntries && aside.isEmpty()) {
        qCWarning(lcModel, "Entries that could not be read would be lost; the item file was not saved.");
        return false;
    }
    QDir().mkpath(QFileInfo(m_filePath).path());
    // Entries kept as they were read may hold characters that XML cannot: controls and halves of surrogate pairs.
    if (!PropertyList::write(m_filePath, entries, PropertyList::Format::Binary)) {
        qCWarning(lcModel, "The item file %s could not be saved.", qUtf8Printable(m_filePath));
        return false;
    }
    if (std::exchange(m_fileHoldsUnmadeEntries, false))
        tellOfDroppedEntries(aside);
    m_services.imageStore.removeDiscarded(entries);
    m_services.drafts.entriesWereSaved(m_items);
    return true;
}

void MenuItemArray::tellOfDroppedEntries(const QString &aside)
{
    qCWarning(lcModel, "Entries that could not be read were dropped; a copy was kept as %s.", qUtf8Printable(aside));
    constexpr qsizetype mostNamed = 3;
    QString names = m_droppedNames.first(qMin(m_droppedNames.size(), mostNamed)).join(QStringLiteral(", "));
    if (m_droppedNames.size() > mostNamed)
        names += QStringLiteral(", …");
    m_services.notices.tell(
        tr("Entries were removed from the ring"),
        tr("%1: no longer there, or damaged. The entries as they were are kept in %2.").arg(names, aside));
}

void MenuItemArray::dropItemsThatAreGone()
{
    const auto isGone = [](const MenuItem::Pointer &item) { return item->isGone(); };
    for (const MenuItem::Pointer &item : m_items | std::views::filter(isGone)) {
        qCWarning(lcModel, "What \"%s\" stood for is gone.", qUtf8Printable(forLog(item->name())));
        m_droppedNames << quotedName(item->name());
    }
    if (std::erase_if(m_items, isGone) == 0)
        return;
    m_fileHoldsUnmadeEntries = true;
    dropUnmadeEntries();
}

void MenuItemArray::dropUnmadeEntries()
{
    if (m_fileHoldsUnmadeEntries && !persist())
        qCWarning(lcModel, "Entries that could not be read stay in the item file.");
}

} // namespace Orbita
