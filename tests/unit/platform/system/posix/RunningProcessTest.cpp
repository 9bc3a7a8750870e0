// Processes that run beside others: both outputs by themselves, and an end with all that was started.
#include "platform/system/Process.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

namespace tessaly {
namespace {

class RunningProcessTest : public testing::Test {
protected:
    static std::string Shell(const std::string& script) { return "/bin/sh -c \"" + script + "\""; }

    static void WaitForEnd(RunningProcess& process) {
        while (!process.HasEnded()) {
            RunningProcess::WaitForAny({&process});
        }
    }

    std::function<void(std::string_view)> Into(std::string& text) {
        return [&text](std::string_view piece) { text += piece; };
    }

    // Whether a process of that number is there and no zombie.
    static bool IsRunning(const std::string& number) {
        std::ifstream file("/proc/" + number + "/stat");
        std::string line;
        return std::getline(file, line) && line.substr(line.rfind(')')).substr(2, 1) != "Z";
    }

    std::string mOutput;
    std::string mErrors;
};

TEST_F(RunningProcessTest, BothOutputsGoToOnePlaceWithoutAnother) {
    RunningProcess process(Shell("echo 1; echo 2 >&2; echo 3"), Into(mOutput));
    WaitForEnd(process);
    EXPECT_EQ(mOutput, "1\n2\n3\n");
}

TEST_F(RunningProcessTest, StandardErrorHasAPlaceOfItsOwn) {
    RunningProcess process(Shell("echo 1; echo 2 >&2; echo 3; exit 4"), Into(mOutput), Into(mErrors));
    WaitForEnd(process);
    EXPECT_EQ(mOutput, "1\n3\n");
    EXPECT_EQ(mErrors, "2\n");
    EXPECT_EQ(process.Result().exitStatus, 4);
}

TEST_F(RunningProcessTest, MuchInBothOutputsArrivesWhole) {
    RunningProcess process(Shell("i=0; while [ $i -lt 20000 ]; do echo output $i; echo error $i >&2; i=$((i+1)); done"),
                           Into(mOutput), Into(mErrors));
    WaitForEnd(process);
    EXPECT_TRUE(mOutput.ends_with("output 19999\n"));
    EXPECT_TRUE(mErrors.ends_with("error 19999\n"));
    EXPECT_EQ(std::count(mOutput.begin(), mOutput.end(), '\n'), 20000);
    EXPECT_EQ(std::count(mErrors.begin(), mErrors.end(), '\n'), 20000);
}

TEST_F(RunningProcessTest, OneThatClosesItsOutputsIsAskedNow) {
    RunningProcess process(Shell("exec >&- 2>&-; sleep 1000"), Into(mOutput), Into(mErrors));
    for (int i = 0; i < 20; ++i) {
        RunningProcess::WaitForAny({&process});
        EXPECT_FALSE(process.HasEnded());
    }
}

TEST_F(RunningProcessTest, TheFirstToEndIsNotWaitedForBehindTheOthers) {
    RunningProcess slow(Shell("sleep 1000"), Into(mOutput));
    RunningProcess quick(Shell("exit 3"), Into(mOutput));
    while (!quick.HasEnded()) {
        RunningProcess::WaitForAny({&slow, &quick});
    }
    EXPECT_EQ(quick.Result().exitStatus, 3);
    EXPECT_FALSE(slow.HasEnded());
}

TEST_F(RunningProcessTest, WhatItHasStartedEndsWithIt) {
    std::string number;
    {
        RunningProcess process(Shell("sleep 1000 & echo $!; wait"), Into(mOutput), Into(mErrors));
        while (mOutput.find('\n') == std::string::npos) {
            RunningProcess::WaitForAny({&process});
            ASSERT_FALSE(process.HasEnded());
        }
        std::istringstream(mOutput) >> number;
        ASSERT_TRUE(IsRunning(number));
    }
    const auto begin = std::chrono::steady_clock::now();
    while (IsRunning(number) && std::chrono::steady_clock::now() - begin < std::chrono::seconds(60)) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(IsRunning(number));
}

TEST_F(RunningProcessTest, OneThatCannotBeStartedHasEnded) {
    RunningProcess process("/no/such/program", Into(mOutput), Into(mErrors));
    EXPECT_TRUE(process.HasEnded());
    EXPECT_EQ(process.Result().startError, std::errc::no_such_file_or_directory);
    RunningProcess::WaitForAny({&process});
}

} // namespace
} // namespace tessaly
