// The colours of C, the same on every desktop.
#pragma once

#include "syntax/CSyntax.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tessaly {

// Whether light colours are to be taken on this background, which is given as 0xRRGGBB.
constexpr bool IsDark(std::uint32_t background) {
    return (background >> 16 & 0xFF) * 3 + (background >> 8 & 0xFF) * 6 + (background & 0xFF) < 1280;
}

// The colour of a token, as 0xRRGGBB. All can be read well on white, and on the usual dark backgrounds.
constexpr std::uint32_t TokenColour(CTokenKind kind, bool isOnDark) {
    constexpr std::array<std::array<std::uint32_t, 2>, 6> colours = {{
        {0x0000B0, 0x6EAAFF}, // Keyword
        {0x006080, 0x50C8C8}, // Type
        {0xA01818, 0xF09682}, // String
        {0x007020, 0x82C878}, // Comment
        {0x904000, 0xE6BE6E}, // Number
        {0x703080, 0xC896E6}, // Preprocessor
    }};
    return colours[static_cast<std::size_t>(kind)][isOnDark ? 1 : 0];
}

} // namespace tessaly
