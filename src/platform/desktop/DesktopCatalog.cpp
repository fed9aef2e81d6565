#include "platform/desktop/DesktopCatalog.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <utility>

namespace Orbita {

namespace {

/// Programs that say nothing about the application that they run.
constexpr std::array interpreters{"bash", "dash",   "electron", "env", "flatpak", "gjs",  "java",   "mono", "node",
                                  "perl", "python", "ruby",     "sh",  "snap",    "wine", "wine64", "zsh",  "busybox"};

/// \a program without a version number at its end: python3.11 is python.
QString withoutVersion(QString program)
{
    while (!program.isEmpty() && (program.back().isDigit() || program.back() == u'.' || program.back() == u'-'))
        program.chop(1);
    return program;
}

bool isInterpreter(const QString &program)
{
    const auto is = [](const QString &name) {
        return std::ranges::any_of(interpreters, [&](const char *known) { return name == QLatin1String(known); });
    };
    return is(program) || is(withoutVersion(program));
}

} // namespace

DesktopCatalog::DesktopCatalog(std::vector<DesktopEntry> entries) : m_entries(std::move(entries))
{
    std::ranges::sort(m_entries, {}, [](const DesktopEntry &entry) { return std::pair(entry.isHidden, entry.id); });
    const auto add = [](Lookup &lookup, const QString &key, std::size_t index) {
        if (!key.isEmpty() && !lookup.contains(key))
            lookup.insert(key, index);
    };
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const DesktopEntry &entry = m_entries[i];
        const QString id = entry.id.toLower();
        add(m_byId, id, i);
        add(m_byWindowClass, entry.startupWmClass.toLower(), i);
        if (id.count(u'.') >= 2)
            add(m_byLastPart, id.section(u'.', -1), i);
        add(m_byPath, entry.path, i);
        if (!isInterpreter(entry.program))
            add(m_byProgram, entry.program.toLower(), i);
    }
}

const DesktopEntry *DesktopCatalog::entryFor(const WindowIdentity &window) const
{
    const QString windowClass = window.windowClass.toLower();
    const QString instance = window.windowInstance.toLower();
    const std::array questions{
        std::pair{&m_byId, window.gtkApplicationId.toLower()},
        std::pair{&m_byWindowClass, windowClass},
        std::pair{&m_byWindowClass, instance},
        std::pair{&m_byId, windowClass},
        std::pair{&m_byId, instance},
        std::pair{&m_byLastPart, windowClass},
        std::pair{&m_byLastPart, instance},
        std::pair{&m_byPath, window.launchedDesktopFile},
        std::pair{&m_byProgram, QFileInfo(window.executablePath).fileName().toLower()},
    };
    for (const auto &[lookup, key] : questions) {
        if (const DesktopEntry *entry = find(*lookup, key))
            return entry;
    }
    return nullptr;
}

const DesktopEntry *DesktopCatalog::find(const Lookup &lookup, const QString &key) const
{
    const auto found = lookup.constFind(key);
    return found != lookup.cend() ? &m_entries[*found] : nullptr;
}

} // namespace Orbita
