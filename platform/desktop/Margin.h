// The margin of the pane: what stands where in it, in pixels, and in which colours. The same on every desktop.
#pragma once

#include "platform/desktop/LineMarks.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaly {

// From the left: the picture of a mark, and the number, which ends where the gap in front of the text begins.
struct Margin {
    int picture = 0; // where it begins, in a line's height in the middle
    int side = 0;    // of the picture
    int numberEnd = 0;
    int width = 0;
};

// For this many lines. There is always room for three digits, so that short texts do not move at their tenth line.
Margin LayOutMargin(std::size_t lines, int digitWidth, int lineHeight);

// All colours are 0xRRGGBB.
struct MarginColours {
    std::uint32_t paper = 0;
    std::uint32_t number = 0;
};

// On a text's paper and in its ink; where the user wants high contrast just in these.
MarginColours ColoursOfMargin(std::uint32_t paper, std::uint32_t ink, bool isHighContrast);

// Of a mark's picture and its underline, on this paper. High contrast leaves only the shape, in the text's ink.
std::uint32_t MarkColour(Mark mark, std::uint32_t paper, std::uint32_t ink, bool isHighContrast);

// The picture: an error is a disc with a cross, a warning a triangle with an exclamation mark, both of the colour of
// the paper, so that they can be told on a selection, too. Rows of `side` pixels from the top, 0xAARRGGBB, not
// multiplied by their opacity.
std::vector<std::uint32_t> MarkPicture(Mark mark, int side, std::uint32_t colour, std::uint32_t paper);

} // namespace tessaly
