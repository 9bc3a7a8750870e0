// Processes that nobody waits for.
#include "platform/system/posix/Process.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tessaly {
namespace {

class DetachedProcessTest : public testing::Test {
protected:
    DetachedProcessTest()
        : mFolder(std::filesystem::path(testing::TempDir()) / ("detached" + std::to_string(::getpid()))),
          mOutput((mFolder / "out").string()) {
        std::filesystem::create_directories(mFolder);
    }
    ~DetachedProcessTest() override { std::filesystem::remove_all(mFolder); }

    std::string Read() const {
        std::ifstream file(mOutput);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // Starts a shell script, whose last word is "end", and returns all that it wrote.
    std::string Run(const std::string& script) const {
        posix::StartDetached({"/bin/sh", "-c", script + "\necho end"}, mOutput);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        std::string text = Read();
        while (!text.ends_with("end\n") && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            text = Read();
        }
        return text;
    }

    std::string Make(const std::string& name, const std::string& text, mode_t mode) const {
        const std::string path = (mFolder / name).string();
        std::ofstream(path) << text;
        EXPECT_EQ(::chmod(path.c_str(), mode), 0);
        return path;
    }

    static int StartError(const std::vector<std::string>& arguments) {
        try {
            posix::StartDetached(arguments, "");
        } catch (const std::system_error& error) {
            return error.code().value();
        }
        return 0;
    }

    std::filesystem::path mFolder;
    std::string mOutput;
};

TEST_F(DetachedProcessTest, WhatItWritesIsInTheFileAndItsInputIsEmpty) {
    EXPECT_EQ(Run("echo out; echo err >&2; cat"), "out\nerr\nend\n");
}

TEST_F(DetachedProcessTest, AnEarlierOutputGivesWayToTheNewOne) {
    Run("echo first");
    EXPECT_EQ(Run("echo second"), "second\nend\n");
}

TEST_F(DetachedProcessTest, EveryArgumentArrivesAsItIs) {
    const std::string program =
        Make("a program", "#!/bin/sh\nfor a in \"$@\"; do echo \"<$a>\"; done\necho end\n", 0700);
    const std::vector<std::string> odd = {program, "a b", "$HOME", "`id`", "*", "", "\xC3\xA4'\\"};
    posix::StartDetached(odd, mOutput);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!Read().ends_with("end\n") && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_EQ(Read(), "<a b>\n<$HOME>\n<`id`>\n<*>\n<>\n<\xC3\xA4'\\>\nend\n");
}

TEST_F(DetachedProcessTest, NothingIsLeftToWaitFor) {
    Run("exit_is_not_asked_for=1");
    errno = 0;
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(DetachedProcessTest, ItGetsNoOpenFileOfThisProgramAndASessionOfItsOwn) {
    const int open = ::open("/dev/null", O_RDONLY); // to be inherited, if anything
    const std::string text = Run("ls /proc/self/fd; ps -o sid= -p $$ | tr -d ' '");
    EXPECT_EQ(text.substr(0, 8), "0\n1\n2\n3\n") << "3 is the folder that ls reads";
    EXPECT_NE(text.substr(8), std::to_string(::getsid(0)) + "\nend\n");
    ::close(open);
}

TEST_F(DetachedProcessTest, BlockedAndIgnoredSignalsAreNoneOfItsBusiness) {
    for (const int number : {SIGINT, SIGQUIT}) {
        std::signal(number, SIG_DFL); // a job in a shell's background has them ignored, and hands that on
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    const std::string text = Run("grep -E '^Sig(Blk|Ign)' /proc/self/status");
    std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGXFSZ, SIG_DFL);
    EXPECT_EQ(text, "SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\nend\n");
}

TEST_F(DetachedProcessTest, WhatCannotBeStartedIsAnError) {
    EXPECT_EQ(StartError({}), EINVAL);
    EXPECT_EQ(StartError({""}), EINVAL);
    EXPECT_EQ(StartError({"/bin/true", std::string("a\0b", 3)}), EINVAL);
    EXPECT_EQ(StartError({"/no/such/program"}), ENOENT);
    EXPECT_EQ(StartError({"no-such-program"}), ENOENT);
    EXPECT_EQ(StartError({mFolder.string()}), EACCES);
    EXPECT_EQ(StartError({Make("plain", "#!/bin/sh\n", 0600)}), EACCES);
    EXPECT_EQ(StartError({Make("no-program", "echo a shell would do\n", 0700)}), ENOEXEC);
    EXPECT_EQ(StartError({"true"}), 0) << "a name alone is looked for in the path";
}

TEST_F(DetachedProcessTest, AnOutputThatCannotBeMadeIsAnError) {
    EXPECT_THROW(posix::StartDetached({"/bin/true"}, (mFolder / "missing/out").string()), std::system_error);
}

} // namespace
} // namespace tessaly
