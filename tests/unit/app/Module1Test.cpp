// The start-up routine.
#include "app/Module1.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(Module1Test, TheFirstCopyShowsTheWindow) {
    int shown = 0;
    StartUp(false, [&shown] { ++shown; });
    EXPECT_EQ(shown, 1);
}

TEST(Module1Test, ASecondCopyEndsWithoutAWindow) {
    StartUp(true, [] { FAIL() << "a window"; });
}

} // namespace
} // namespace tessaly
