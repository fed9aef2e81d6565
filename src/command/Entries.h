#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace Orbita {

/// A file that makes one of the programs known to the desktop, before it names where the programs are.
struct EntryTemplate {
    std::string_view path; ///< below a folder of data, like ~/.local/share
    std::string_view text; ///< as packaging/ has it
};

/// All of them.
[[nodiscard]] const std::array<EntryTemplate, 4> &entryTemplates();

/// The text of \a entry for programs that lie in \a folder, with a first line that tells who wrote it. Empty when the
/// folder's name has control characters or a "%", with which no entry works.
[[nodiscard]] std::string filledEntry(const EntryTemplate &entry, const std::filesystem::path &folder);

/// Whether \a text was made by filledEntry().
[[nodiscard]] bool isFilledEntry(std::string_view text);

} // namespace Orbita
