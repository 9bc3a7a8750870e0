// Where what comes up beside the caret stands on the screen.
#include "platform/desktop/Suggestions.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

constexpr ScreenArea Screen = {100, 50, 1100, 850}; // not all of the monitor, which is not the first one

// Of a character at this place, 16 pixels high.
ScreenPlace PlaceAt(int left, int top, Beside wished, int width = 200, int height = 120) {
    return PlaceBeside({left, top, left + 8, top + 16}, Screen, width, height, wished);
}

TEST(SuggestionsTest, StandOnTheSideThatIsWishedAndTouchTheLine) {
    EXPECT_EQ(PlaceAt(300, 400, Beside::Below), (ScreenPlace{300, 416}));
    EXPECT_EQ(PlaceAt(300, 400, Beside::Above), (ScreenPlace{300, 280}));
}

TEST(SuggestionsTest, GoToTheOtherSideWhereThereIsRoomOnThatAlone) {
    EXPECT_EQ(PlaceAt(300, 714, Beside::Below), (ScreenPlace{300, 730})) << "to the lower edge, and no further";
    EXPECT_EQ(PlaceAt(300, 715, Beside::Below), (ScreenPlace{300, 595}));
    EXPECT_EQ(PlaceAt(300, 170, Beside::Above), (ScreenPlace{300, 50})) << "to the upper edge, and no further";
    EXPECT_EQ(PlaceAt(300, 169, Beside::Above), (ScreenPlace{300, 185}));
}

TEST(SuggestionsTest, StandAsWishedWhereThereIsRoomOnNoSide) {
    EXPECT_EQ(PlaceAt(300, 400, Beside::Below, 200, 700), (ScreenPlace{300, 416}));
    EXPECT_EQ(PlaceAt(300, 400, Beside::Above, 200, 700), (ScreenPlace{300, -300}));
}

TEST(SuggestionsTest, StayBetweenTheEdgesOfTheScreenFromTheLeftOneOn) {
    EXPECT_EQ(PlaceAt(900, 400, Beside::Below).x, 900);
    EXPECT_EQ(PlaceAt(901, 400, Beside::Below).x, 900);
    EXPECT_EQ(PlaceAt(20, 400, Beside::Below).x, 100) << "the character is scrolled out of view";
    EXPECT_EQ(PlaceAt(300, 400, Beside::Below, 2000).x, 100);
}

} // namespace
} // namespace tessaly
