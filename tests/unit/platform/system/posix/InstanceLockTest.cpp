// The lock that tells of another running copy.
#include "platform/system/PreviousInstance.h"

#include <array>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaly {
namespace {

class InstanceLockTest : public testing::Test {
protected:
    InstanceLockTest()
        : mFolder(std::filesystem::path(testing::TempDir()) / ("lock" + std::to_string(::getpid()))),
          mPath((mFolder / "new/tessaly.lock").string()) {}
    ~InstanceLockTest() override { std::filesystem::remove_all(mFolder); }

    std::filesystem::path mFolder;
    std::string mPath;
};

TEST_F(InstanceLockTest, TheFirstOneHasItAndTheSecondFindsItTaken) {
    const PreviousInstanceTest first(mPath);
    EXPECT_FALSE(first.PreviousInstance());
    EXPECT_TRUE(PreviousInstanceTest(mPath).PreviousInstance());
    EXPECT_TRUE(PreviousInstanceTest(mPath).PreviousInstance()) << "asking takes nothing away";
}

TEST_F(InstanceLockTest, ItIsFreeWhenTheFirstOneHasGone) {
    { const PreviousInstanceTest first(mPath); }
    EXPECT_FALSE(PreviousInstanceTest(mPath).PreviousInstance());
}

TEST_F(InstanceLockTest, AnotherProcessHoldsItUntilItIsKilled) {
    std::array<int, 2> pipe = {-1, -1};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const PreviousInstanceTest held(mPath);
        const char answer = held.PreviousInstance() ? 't' : 'h';
        [[maybe_unused]] const ssize_t written = ::write(pipe[1], &answer, 1);
        while (true) {
            ::pause();
        }
    }
    char answer = 0;
    ASSERT_EQ(::read(pipe[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'h');
    EXPECT_TRUE(PreviousInstanceTest(mPath).PreviousInstance());
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    EXPECT_FALSE(PreviousInstanceTest(mPath).PreviousInstance());
    ::close(pipe[0]);
    ::close(pipe[1]);
}

TEST_F(InstanceLockTest, WhereNoFileCanBeMadeNobodyIsThought) {
    EXPECT_FALSE(PreviousInstanceTest("/proc/no/such/tessaly.lock").PreviousInstance());
}

TEST(InstanceLockPathTest, EachUserHasHisOwn) {
    std::map<std::string, std::string> variables = {{"HOME", "/h"}};
    const Environment environment = [&variables](const std::string& name) {
        const auto found = variables.find(name);
        return found != variables.end() ? std::optional(found->second) : std::nullopt;
    };
    EXPECT_EQ(InstanceName(environment), "/h/.local/state/tessaly/tessaly.lock");
    variables["XDG_STATE_HOME"] = "/s";
    EXPECT_EQ(InstanceName(environment), "/s/tessaly/tessaly.lock");
    variables["XDG_RUNTIME_DIR"] = "/run/user/7";
    EXPECT_EQ(InstanceName(environment), "/run/user/7/tessaly.lock");
    variables["XDG_RUNTIME_DIR"] = "relative";
    EXPECT_EQ(InstanceName(environment), "/s/tessaly/tessaly.lock");
}

} // namespace
} // namespace tessaly
