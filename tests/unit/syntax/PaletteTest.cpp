#include "syntax/Palette.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>

namespace tessaly {
namespace {

constexpr CTokenKind Kinds[] = {CTokenKind::Keyword, CTokenKind::Type,   CTokenKind::String,
                                CTokenKind::Comment, CTokenKind::Number, CTokenKind::Preprocessor};

// As eyes see it, from 0 to 1.
double Luminance(std::uint32_t colour) {
    const auto part = [colour](int shift) {
        const double value = static_cast<double>(colour >> shift & 0xFF) / 255;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

double ContrastOf(std::uint32_t first, std::uint32_t second) {
    const double lighter = std::max(Luminance(first), Luminance(second));
    const double darker = std::min(Luminance(first), Luminance(second));
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(PaletteTest, EveryKindCanBeReadAndToldFromTheOthers) {
    for (const std::uint32_t background : {0xFFFFFFU, 0x2D2D2DU, 0x000000U}) {
        std::set<std::uint32_t> colours;
        for (const CTokenKind kind : Kinds) {
            const std::uint32_t colour = TokenColour(kind, IsDark(background));
            EXPECT_GE(ContrastOf(colour, background), 4.5) << std::hex << colour << " on " << background;
            colours.insert(colour);
        }
        EXPECT_EQ(colours.size(), std::size(Kinds));
    }
}

TEST(PaletteTest, ABackgroundIsDarkWhereLightTextIsReadOnIt) {
    EXPECT_FALSE(IsDark(0xFFFFFF));
    EXPECT_FALSE(IsDark(0xC0C0C0));
    EXPECT_FALSE(IsDark(0xFFFF00));
    EXPECT_TRUE(IsDark(0x000000));
    EXPECT_TRUE(IsDark(0x404040));
    EXPECT_TRUE(IsDark(0x0000FF));
}

} // namespace
} // namespace tessaly
