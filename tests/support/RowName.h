#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <string>

namespace Orbita {

/// Names a case of a table after the sentence in its row's `name`: "straight up is 0" is straight_up_is_0.
template <typename Row>
std::string rowName(const testing::TestParamInfo<Row> &info)
{
    std::string name;
    for (const char c : std::string(info.param.name)) {
        if (std::isalnum(static_cast<unsigned char>(c)))
            name += c;
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    return name;
}

} // namespace Orbita
