#include "command/Registration.h"

#include "command/DefaultApplication.h"
#include "command/Entries.h"
#include "command/Instance.h"
#include "command/TextFile.h"

#include <array>
#include <cstdlib>
#include <utility>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Orbita {

namespace {

using Path = std::filesystem::path;
using Failure = std::optional<std::string>;

constexpr std::array<std::pair<const char *, const char *>, 2> handlers{{
    {"x-scheme-handler/orbita-com", "org.orbita.Orbita.desktop"},
    {"x-scheme-handler/orbita-toolkit-com", "org.orbita.Toolkit.desktop"},
}};

/// The folder in the variable \a name, or \a otherwise below the home. Relative ones do not count.
Path folderOf(const char *name, const Path &home, const char *otherwise)
{
    const char *value = std::getenv(name);
    return value && *value == '/' ? Path(value) : home / otherwise;
}

/// Whether there is nothing at \a path but what we may replace or remove.
bool isOurs(const Path &path)
{
    std::error_code error;
    const auto text = readTextFile(path);
    return text && (isFilledEntry(*text) || !std::filesystem::exists(path, error));
}

/// Rewrites the list of default applications by \a change, if that changes anything.
template <typename Change>
Failure editDefaults(const UserFolders &folders, Change change)
{
    const Path path = folders.configuration / "mimeapps.list";
    const auto before = readTextFile(path);
    if (!before)
        return path.native() + " cannot be read.";
    std::string text = *before;
    for (const auto &[type, desktopId] : handlers)
        text = change(text, type, desktopId);
    if (text != *before && !writeTextFile(path, text))
        return path.native() + " cannot be written.";
    return std::nullopt;
}

/// Has the desktop and the bus take note. A desktop without the program finds the entries all the same.
void announce(const UserFolders &folders)
{
    std::string program = "update-desktop-database";
    std::string quiet = "-q";
    std::string folder = folders.data / "applications";
    std::array<char *, 4> arguments{program.data(), quiet.data(), folder.data(), nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) == 0)
        TEMP_FAILURE_RETRY(waitpid(child, nullptr, 0));
    reloadBusConfiguration();
}

} // namespace

std::optional<UserFolders> UserFolders::standard()
{
    const char *home = std::getenv("HOME");
    if (!home || *home != '/')
        return std::nullopt;
    return UserFolders{folderOf("XDG_DATA_HOME", home, ".local/share"), folderOf("XDG_CONFIG_HOME", home, ".config")};
}

std::optional<std::string> registerPrograms(const UserFolders &folders, const Path &programs)
{
    for (const EntryTemplate &entry : entryTemplates()) {
        const Path path = folders.data / entry.path;
        if (!isOurs(path))
            return path.native() + " was written by something else; move it away first.";
        if (filledEntry(entry, programs).empty())
            return "The name of the folder " + programs.native() + " cannot stand in a desktop entry.";
    }
    for (const EntryTemplate &entry : entryTemplates()) {
        const Path path = folders.data / entry.path;
        if (!writeTextFile(path, filledEntry(entry, programs)))
            return path.native() + " cannot be written.";
    }
    const Failure failure = editDefaults(folders, withDefault);
    announce(folders);
    return failure;
}

std::optional<std::string> unregisterPrograms(const UserFolders &folders)
{
    Failure failure = editDefaults(folders, withoutDefault);
    for (const EntryTemplate &entry : entryTemplates()) {
        const Path path = folders.data / entry.path;
        std::error_code error;
        if (isOurs(path))
            std::filesystem::remove(path, error);
        if (error)
            failure = path.native() + " cannot be removed.";
    }
    announce(folders);
    return failure;
}

} // namespace Orbita
