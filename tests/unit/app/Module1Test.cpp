// The start-up routine.
#include "app/Module1.h"

#include <gtest/gtest.h>
#include <optional>

namespace tessaly {
namespace {

// Answers as it was told, or throws where it was told nothing.
class SaidInstance final : public PreviousInstanceTest {
public:
    bool PreviousInstance() const override { return answer.value(); }

    std::optional<bool> answer;
};

class Module1Test : public ::testing::Test {
protected:
    void Start() {
        StartUp(previous, [this] { ++shown; });
    }

    SaidInstance previous;
    int shown = 0;
};

TEST_F(Module1Test, TheFirstCopyShowsTheWindow) {
    previous.answer = false;
    Start();
    EXPECT_EQ(shown, 1);
}

TEST_F(Module1Test, ASecondCopyEndsWithoutAWindow) {
    previous.answer = true;
    Start();
    EXPECT_EQ(shown, 0);
}

TEST_F(Module1Test, WithoutAnAnswerThereIsNoWindow) {
    EXPECT_THROW(Start(), std::bad_optional_access);
    EXPECT_EQ(shown, 0);
}

} // namespace
} // namespace tessaly
