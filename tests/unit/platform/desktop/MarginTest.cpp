// The margin of the pane: its measures, colours and pictures.
#include "platform/desktop/Margin.h"

#include "platform/desktop/Tint.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

// By the usual measure of contrast, from 1 to 21.
double Contrast(std::uint32_t one, std::uint32_t other) {
    const auto luminance = [](std::uint32_t colour) {
        double sum = 0;
        for (const auto& [shift, weight] : {std::pair{16, 0.2126}, {8, 0.7152}, {0, 0.0722}}) {
            const double part = (colour >> shift & 0xFF) / 255.0;
            sum += weight * (part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
        }
        return sum + 0.05;
    };
    return std::max(luminance(one), luminance(other)) / std::min(luminance(one), luminance(other));
}

TEST(MarginTest, ThereIsRoomForTheLargestNumber) {
    const Margin small = LayOutMargin(1, 8, 16);
    EXPECT_EQ(LayOutMargin(999, 8, 16).width, small.width);
    EXPECT_EQ(LayOutMargin(1000, 8, 16).width, small.width + 8);
    EXPECT_EQ(LayOutMargin(9999, 8, 16).width, small.width + 8);
    EXPECT_EQ(LayOutMargin(10000, 8, 16).width, small.width + 16);
    EXPECT_EQ(LayOutMargin(123456789, 8, 16).width, small.width + 48);
}

TEST(MarginTest, NothingLiesUponAnotherThing) {
    for (const int size : {1, 7, 13, 40}) {
        const Margin margin = LayOutMargin(12345, size, 2 * size);
        EXPECT_GE(margin.picture, 0);
        EXPECT_LE(margin.picture + margin.side, margin.numberEnd - 5 * size);
        EXPECT_LT(margin.numberEnd, margin.width);
    }
}

TEST(MarginTest, AllCanBeReadOnEachPaper) {
    for (const auto& [paper, ink] : {std::pair{0xFFFFFFU, 0x000000U}, {0x1B1E20U, 0xFCFCFCU}, {0x000000U, 0xFFFF00U}}) {
        const MarginColours colours = ColoursOfMargin(paper, ink, false);
        EXPECT_NE(colours.paper, paper);
        EXPECT_GE(Contrast(colours.number, colours.paper), 4.5);
        EXPECT_GE(Contrast(MarkColour(Mark::Error, paper, ink, false), colours.paper), 3);
        EXPECT_GE(Contrast(MarkColour(Mark::Warning, paper, ink, false), colours.paper), 3);
    }
}

TEST(MarginTest, HighContrastKnowsPaperAndInkAlone) {
    const MarginColours colours = ColoursOfMargin(0x000000, 0xFFFF00, true);
    EXPECT_EQ(colours.paper, 0x000000U);
    EXPECT_EQ(colours.number, 0xFFFF00U);
    EXPECT_EQ(MarkColour(Mark::Error, 0x000000, 0xFFFF00, true), 0xFFFF00U);
    EXPECT_EQ(MarkColour(Mark::Warning, 0x000000, 0xFFFF00, true), 0xFFFF00U);
}

TEST(MarginTest, InHighContrastWhatIsSetApartCanBeReadSelectedOrNot) {
    constexpr std::uint32_t ink = 0xFFFFFF;
    const auto below = [](const Tint& tint, std::uint32_t paper) {
        std::uint32_t mixed = 0;
        for (const int shift : {16, 8, 0}) {
            const std::uint32_t from = paper >> shift & 0xFF;
            const std::uint32_t to = tint.colour >> shift & 0xFF;
            mixed |= (from * (255U - tint.opacity) + to * tint.opacity) / 255 << shift;
        }
        return mixed;
    };
    for (const Spot::Kind kind :
         {Spot::Kind::Bracket, Spot::Kind::LoneBracket, Spot::Kind::Blank, Spot::Kind::Lost, Spot::Kind::Match}) {
        const Tint tint = TintOf(kind, ink, true);
        EXPECT_EQ(tint.colour, ink);
        EXPECT_GE(Contrast(below(tint, 0x000000), ink), 4.5);
    }
    constexpr std::uint32_t selected = 0x008000;
    EXPECT_GE(Contrast(below(TintOf(Spot::Kind::Match, ink, true), selected), ink), 3.5);
}

// The shares of a picture that are opaque, and that have the colour of its sign.
struct Shares {
    double opaque = 0;
    double sign = 0;
};

Shares SharesOf(Mark mark, int side) {
    Shares shares;
    for (const std::uint32_t pixel : MarkPicture(mark, side, 0x000000, 0xFFFFFF)) {
        const double opacity = (pixel >> 24) / 255.0;
        shares.opaque += opacity / (side * side);
        shares.sign += opacity * (pixel & 0xFF) / 255.0 / (side * side);
    }
    return shares;
}

TEST(MarginTest, APictureIsToldByItsShapeAlone) {
    for (const int side : {9, 12, 24, 64}) {
        const Shares error = SharesOf(Mark::Error, side);
        const Shares warning = SharesOf(Mark::Warning, side);
        EXPECT_NEAR(error.opaque, 0.75, 0.05) << side; // a disc
        EXPECT_NEAR(warning.opaque, 0.45, 0.05) << side;
        EXPECT_GT(error.sign, 0.05) << side;
        EXPECT_GT(warning.sign, 0.02) << side;
    }
}

TEST(MarginTest, ATriangleStandsOnItsBase) {
    const std::vector<std::uint32_t> pixels = MarkPicture(Mark::Warning, 20, 0x123456, 0xFFFFFF);
    const auto opaqueIn = [&pixels](std::ptrdiff_t row) {
        return std::count_if(pixels.begin() + 20 * row, pixels.begin() + 20 * (row + 1),
                             [](std::uint32_t pixel) { return pixel >> 24 == 255; });
    };
    EXPECT_LT(opaqueIn(4), opaqueIn(10));
    EXPECT_LT(opaqueIn(10), opaqueIn(17));
    EXPECT_EQ(pixels.front(), 0x00123456U);
}

} // namespace
} // namespace tessaly
