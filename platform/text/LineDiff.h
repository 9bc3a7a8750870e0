// Which lines two texts have in common.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace tessaly {

// Lines that stand in both texts, one behind the other. Counted from 0.
struct CommonLines {
    std::size_t oldLine = 0;
    std::size_t newLine = 0;
    std::size_t count = 0; // never 0
};

// The common lines of two texts in their order. No other choice has more of them, unless the texts differ in thousands
// of lines that they share.
std::vector<CommonLines> FindCommonLines(std::span<const std::string_view> oldLines,
                                         std::span<const std::string_view> newLines);

} // namespace tessaly
