#include "shortcut/FunctionKeys.h"

#include <algorithm>
#include <iterator>

namespace Orbita {

std::optional<int> functionKeyNumber(quint64 keyCode)
{
    static constexpr quint64 functionKeys[]
        = {122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 105, 107, 113, 106, 64, 79, 80, 90};
    const auto key = std::find(std::begin(functionKeys), std::end(functionKeys), keyCode);
    if (key == std::end(functionKeys))
        return {};
    return int(key - std::begin(functionKeys)) + 1;
}

} // namespace Orbita
