// The start-up routine.
#include "app/Module1.h"

#include "platform/memory/MemoryApplication.h"

#include <gtest/gtest.h>
#include <system_error>

namespace tessaly {
namespace {

class Module1Test : public ::testing::Test {
protected:
    void Start() {
        StartUp(application, [this] { ++shown; });
    }

    MemoryFaults faults;
    MemoryApplication application{faults};
    int shown = 0;
};

TEST_F(Module1Test, TheFirstCopyShowsTheWindow) {
    Start();
    EXPECT_EQ(shown, 1);
}

TEST_F(Module1Test, ASecondCopyEndsWithoutAWindow) {
    application.previousInstance = true;
    Start();
    EXPECT_EQ(shown, 0);
}

TEST_F(Module1Test, WithoutAnAnswerThereIsNoWindow) {
    faults.FailAt(1);
    EXPECT_THROW(Start(), std::system_error);
    EXPECT_EQ(shown, 0);
}

} // namespace
} // namespace tessaly
