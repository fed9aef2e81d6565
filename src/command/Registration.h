#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Orbita {

/// Where a user keeps what the desktop is to know.
struct UserFolders {
    std::filesystem::path data;          ///< XDG_DATA_HOME
    std::filesystem::path configuration; ///< XDG_CONFIG_HOME

    /// Those of the environment. Nothing when it names no home.
    [[nodiscard]] static std::optional<UserFolders> standard();
};

/// Makes the programs in the folder \a programs known to the user's desktop and session bus, and the default ones for
/// the addresses of their schemes. Files of the same names that something else wrote are left alone, and nothing is
/// done then. Returns what went wrong, as a sentence.
[[nodiscard]] std::optional<std::string> registerPrograms(const UserFolders &folders,
                                                          const std::filesystem::path &programs);

/// Takes back what registerPrograms() did. Returns what went wrong, as a sentence.
[[nodiscard]] std::optional<std::string> unregisterPrograms(const UserFolders &folders);

} // namespace Orbita
