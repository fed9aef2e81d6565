#include "platform/desktop/DesktopSystemShortcuts.h"

#include "platform/BoundedRead.h"
#include "platform/HotKeyService.h"
#include "platform/desktop/DesktopSettings.h"
#include "platform/desktop/shortcuts/GSettingsShortcuts.h"
#include "platform/desktop/shortcuts/KdeShortcuts.h"
#include "platform/desktop/shortcuts/XfceShortcuts.h"

#include <QStandardPaths>

#include <utility>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

/// The contents of the files called \a name in the folders of the configuration, the user's first. Files that are no
/// regular ones or too large are left out.
QList<QByteArray> configurationFiles(const QString &name)
{
    constexpr qint64 maximumSize = 1024 * 1024; // bytes; such files have some kilobytes
    QList<QByteArray> contents;
    for (const QString &path : QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, name)) {
        if (const auto content = readRegularFile(path, maximumSize))
            contents.append(*content);
    }
    return contents;
}

std::optional<QList<Accelerator>> kdeShortcutsNow()
{
    const auto files = configurationFiles(u"kglobalshortcutsrc"_s);
    return files.isEmpty() ? std::nullopt : std::optional(kdeShortcuts(files.first()));
}

std::optional<QList<Accelerator>> xfceShortcutsNow()
{
    auto files = configurationFiles(u"xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"_s);
    if (files.isEmpty())
        return std::nullopt;
    std::ranges::reverse(files);
    return xfceShortcuts(files);
}

/// Those of the first desktop in XDG_CURRENT_DESKTOP that is a known one.
std::optional<QList<Accelerator>> shortcutsNow()
{
    for (const QString &desktop : currentDesktops()) {
        if (desktop == "KDE"_L1)
            return kdeShortcutsNow();
        if (desktop == "XFCE"_L1)
            return xfceShortcutsNow();
        if (auto shortcuts = gsettingsShortcuts(desktop))
            return shortcuts;
    }
    return std::nullopt;
}

} // namespace

DesktopSystemShortcuts::DesktopSystemShortcuts(HotKeyService &hotKeys, KeyFinder findKey)
    : m_hotKeys(hotKeys), m_findKey(std::move(findKey))
{
}

std::optional<QList<SystemShortcuts::SymbolicHotKey>> DesktopSystemShortcuts::symbolicHotKeys() const
{
    const auto shortcuts = shortcutsNow();
    if (!shortcuts)
        return std::nullopt;
    QList<SymbolicHotKey> hotKeys;
    for (const Accelerator &shortcut : *shortcuts) {
        auto key = namedKey(shortcut.keysym);
        if (!key)
            key = m_findKey(shortcut.keysym);
        if (key)
            hotKeys.append({{*key, shortcut.modifiers}, true});
    }
    return hotKeys;
}

bool DesktopSystemShortcuts::isGrabbed(KeyCombination combination) const
{
    return m_hotKeys.isTakenByOther(combination);
}

} // namespace Orbita
