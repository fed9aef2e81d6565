#pragma once

#include <string>
#include <string_view>

namespace Orbita {

/// \a list, the text of a mimeapps.list, with \a desktopId as the default application of \a type, in front of others
/// that it names. All else stays as it stands.
[[nodiscard]] std::string withDefault(std::string_view list, std::string_view type, std::string_view desktopId);

/// \a list without \a desktopId among the default applications of \a type, and without the
/// group of default applications when that was all in it.
[[nodiscard]] std::string withoutDefault(std::string_view list, std::string_view type, std::string_view desktopId);

} // namespace Orbita
