// The command line where the shell has split it.
#include "platform/system/posix/Process.h"

#include <array>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(CommandLineTest, AllArgumentsBehindTheNameAreOneLineAgain) {
    std::array<char, 8> name = {"tessaly"};
    std::array<char, 4> first = {"a b"};
    std::array<char, 6> second = {"c.PSF"};
    std::array<char*, 3> arguments = {name.data(), first.data(), second.data()};
    EXPECT_EQ(posix::CommandLine(1, arguments.data()), "");
    EXPECT_EQ(posix::CommandLine(2, arguments.data()), "a b");
    EXPECT_EQ(posix::CommandLine(3, arguments.data()), "a b c.PSF");
}

} // namespace
} // namespace tessaly
