// What nobody would see otherwise.
#include "editing/Spots.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using Kind = Spot::Kind;

bool IsGerman(char32_t character) {
    return character < 0x100 || character == 0x20AC;
}

TEST(SpotsTest, PlainTextHasNone) {
    EXPECT_TRUE(FindSpots(u"", IsGerman).empty());
    EXPECT_TRUE(FindSpots(u"\tint a; // \u00E4 \u20AC", IsGerman).empty());
}

TEST(SpotsTest, BlanksAtTheEndAreOne) {
    EXPECT_EQ(FindSpots(u"a \t ", nullptr), (std::vector<Spot>{{Kind::Blank, 1, 4}}));
    EXPECT_EQ(FindSpots(u"\t", nullptr), (std::vector<Spot>{{Kind::Blank, 0, 1}}));
}

TEST(SpotsTest, ANoBreakSpaceIsOneAnywhere) {
    EXPECT_EQ(FindSpots(u"a\u00A0b\u00A0 ", IsGerman), (std::vector<Spot>{{Kind::Blank, 1, 2}, {Kind::Blank, 3, 5}}));
}

TEST(SpotsTest, WhatASaveWouldLoseIsOneWhateverItsUnits) {
    EXPECT_EQ(FindSpots(u"a\u03B1\u03B2 \U0001F600;", IsGerman),
              (std::vector<Spot>{{Kind::Lost, 1, 3}, {Kind::Lost, 4, 6}}));
    EXPECT_TRUE(FindSpots(u"\u03B1", nullptr).empty());
    EXPECT_EQ(FindSpots(std::u16string(1, 0xD800), IsGerman), (std::vector<Spot>{{Kind::Lost, 0, 1}}));
}

} // namespace
} // namespace tessaly
