#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Orbita {

/// The folder that this program lies in.
[[nodiscard]] std::filesystem::path programFolder();

/// Replaces this process by the desktop program. Returns only when it could not be started.
void becomeDesktopProgram(const std::vector<std::string> &arguments);

/// Starts the desktop program apart from this terminal and waits until it is ready. False when it ended before; it has
/// then said why.
[[nodiscard]] bool startDesktopProgram(const std::vector<std::string> &arguments);

} // namespace Orbita
