// What is laid over paper and text to set them apart. The same on every desktop.
#pragma once

#include "editing/Spots.h"

#include <algorithm>
#include <cstdint>

namespace tessaly {

struct Tint {
    std::uint32_t colour = 0; // 0xRRGGBB
    std::uint8_t opacity = 0; // 255 hides what is below
    bool hasFrame = false;    // of the ink's colour: shapes can be told without colours
};

// On a text in this ink. Where the user wants high contrast it is the ink alone, and thin enough to read a text that is
// selected as well.
constexpr Tint TintOfCurrentLine(std::uint32_t ink, bool isHighContrast) {
    return {ink, static_cast<std::uint8_t>(isHighContrast ? 40 : 15), false};
}

constexpr Tint TintOf(Spot::Kind kind, std::uint32_t ink, bool isHighContrast) {
    const Tint tints[] = {
        {0x2F7BEA, 90, false}, {0xE02B26, 90, true}, {ink, 36, false}, {0xE02B26, 120, false}, {0xF2A900, 110, true}};
    Tint tint = tints[static_cast<std::size_t>(kind)];
    if (isHighContrast) {
        tint.colour = ink;
        tint.opacity = std::min<std::uint8_t>(tint.opacity, tint.hasFrame ? 40 : 90);
    }
    return tint;
}

} // namespace tessaly
