#include "app/Module1.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace tessaly {
namespace {

TEST(Module1Test, TheFirstCopyShowsTheWindowAfterTheTest) {
    std::string steps;
    StartUp(
        [&steps] {
            steps += "asked ";
            return false;
        },
        [&steps] { steps += "shown "; });
    EXPECT_EQ(steps, "asked shown ");
}

TEST(Module1Test, ASecondCopyEndsWithoutAWindow) {
    std::string steps;
    StartUp(
        [&steps] {
            steps += "asked ";
            return true;
        },
        [&steps] { steps += "shown "; });
    EXPECT_EQ(steps, "asked ");
}

TEST(Module1Test, WithoutAnAnswerThereIsNoWindow) {
    bool isShown = false;
    EXPECT_THROW(StartUp([]() -> bool { throw std::runtime_error("no answer"); }, [&isShown] { isShown = true; }),
                 std::runtime_error);
    EXPECT_FALSE(isShown);
}

} // namespace
} // namespace tessaly
