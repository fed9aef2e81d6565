#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Orbita {

/// The content of the file at \a path, empty when there is none. Nothing when it cannot be read, is no regular file or
/// is larger than 1 MiB, which no file of a desktop's settings is.
[[nodiscard]] std::optional<std::string> readTextFile(const std::filesystem::path &path);

/// Puts a file with \a text in the place of \a path, whole or not at all, and makes its folder where needed. A link
/// stays one: what it leads to is replaced. The mode stays as it is; a new file can be read by all. False when that
/// could not be done.
[[nodiscard]] bool writeTextFile(const std::filesystem::path &path, std::string_view text);

} // namespace Orbita
