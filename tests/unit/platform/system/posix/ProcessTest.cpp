// How a command line is split, and processes that are waited for.
#include "platform/system/posix/Process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace tessaly {
namespace {

using Arguments = std::vector<std::string>;

// Splits with these files in existence; `asked` is what the files were looked up by.
Arguments Split(std::string_view line, const std::set<std::string>& files = {}, Arguments* asked = nullptr) {
    return posix::SplitCommandLine(line, [&](const std::string& path) {
        if (asked != nullptr) {
            asked->push_back(path);
        }
        return files.contains(path);
    });
}

TEST(SplitCommandLineTest, BlanksAndTabsSeparate) {
    EXPECT_EQ(Split("cc  -o\tx y"), (Arguments{"cc", "-o", "x", "y"}));
}

TEST(SplitCommandLineTest, BlanksAroundTheLineDoNotCount) {
    EXPECT_EQ(Split("  cc x \t"), (Arguments{"cc", "x"}));
}

TEST(SplitCommandLineTest, ABlankLineHasNoArguments) {
    EXPECT_EQ(Split(""), Arguments{});
    EXPECT_EQ(Split(" \t "), Arguments{});
}

TEST(SplitCommandLineTest, QuotesGroupAndAreRemoved) {
    EXPECT_EQ(Split("cc \"my block.out\""), (Arguments{"cc", "my block.out"}));
    EXPECT_EQ(Split("cc -o\"my block\".out"), (Arguments{"cc", "-omy block.out"}));
    EXPECT_EQ(Split("cc \"\" x"), (Arguments{"cc", "", "x"}));
}

TEST(SplitCommandLineTest, AQuoteWithoutItsPartnerReachesToTheEnd) {
    EXPECT_EQ(Split("cc \"a b  "), (Arguments{"cc", "a b  "}));
    EXPECT_EQ(Split("cc x \""), (Arguments{"cc", "x", ""}));
}

TEST(SplitCommandLineTest, NothingElseHasAMeaning) {
    EXPECT_EQ(Split("cc a\\ b $HOME '*' `x` \"\\\" ;|&"),
              (Arguments{"cc", "a\\", "b", "$HOME", "'*'", "`x`", "\\", ";|&"}));
}

TEST(SplitCommandLineTest, AProgramMayContainBlanks) {
    EXPECT_EQ(Split("/opt/my tools/cc \"x.out\"", {"/opt/my tools/cc"}), (Arguments{"/opt/my tools/cc", "x.out"}));
    EXPECT_EQ(Split("/opt/my  tools/cc", {"/opt/my  tools/cc"}), (Arguments{"/opt/my  tools/cc"}));
}

TEST(SplitCommandLineTest, TheShortestProgramCounts) {
    Arguments asked;
    EXPECT_EQ(Split("/opt/my tools/cc -v \"x\"", {"/opt/my tools/cc", "/opt/my tools/cc -v"}, &asked),
              (Arguments{"/opt/my tools/cc", "-v", "x"}));
    EXPECT_EQ(asked, (Arguments{"/opt/my", "/opt/my tools/cc"}));
}

TEST(SplitCommandLineTest, TheProgramEndsAtAQuote) {
    EXPECT_EQ(Split("/my cc\"x y\"", {"/my cc"}), (Arguments{"/my cc", "x y"}));
}

TEST(SplitCommandLineTest, WithoutSuchAProgramTheLineIsSplitAsItStands) {
    Arguments asked;
    EXPECT_EQ(Split("/opt/my tools/cc \"x y\"", {"/opt/my tools/cc \"x y\""}, &asked),
              (Arguments{"/opt/my", "tools/cc", "x y"}));
    EXPECT_EQ(asked, (Arguments{"/opt/my", "/opt/my tools/cc"})) << "nothing behind the quote is the program";
}

TEST(SplitCommandLineTest, AQuotedProgramIsNotLookedFor) {
    Arguments asked;
    EXPECT_EQ(Split("\"/opt/my tools/cc\" x", {"/opt/my"}, &asked), (Arguments{"/opt/my tools/cc", "x"}));
    EXPECT_EQ(asked, Arguments{});
}

TEST(SplitCommandLineTest, ALineOfBlanksIsNotSearchedWithoutEnd) {
    std::string line;
    for (int i = 0; i < 200000; ++i) {
        line += "a ";
    }
    std::size_t asked = 0;
    const Arguments arguments = posix::SplitCommandLine(line, [&asked](const std::string&) {
        ++asked;
        return false;
    });
    EXPECT_EQ(arguments.size(), 200000U);
    EXPECT_LE(asked, 4096U);
}

TEST(IsRegularFileTest, OnlyAFileIsOne) {
    EXPECT_TRUE(posix::IsRegularFile("/bin/sh"));
    EXPECT_FALSE(posix::IsRegularFile("/bin"));
    EXPECT_FALSE(posix::IsRegularFile("/dev/null"));
    EXPECT_FALSE(posix::IsRegularFile("/bin/no such file"));
    EXPECT_FALSE(posix::IsRegularFile(std::string("/bin/sh\0x", 9)));
}

class RunProcessTest : public testing::Test {
protected:
    ProcessResult Run(const Arguments& arguments) {
        return posix::RunProcess(arguments, [this](std::string_view piece) {
            EXPECT_FALSE(piece.empty());
            mOutput += piece;
        });
    }

    ProcessResult RunShell(const std::string& script) { return Run({"/bin/sh", "-c", script}); }

    std::string mOutput;
};

std::set<int> OpenDescriptors() {
    std::set<int> numbers;
    for (int number = 0; number < 256; ++number) {
        if (::fcntl(number, F_GETFD) >= 0) {
            numbers.insert(number);
        }
    }
    return numbers;
}

bool HasChildren() {
    return ::waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD;
}

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST_F(RunProcessTest, TheExitStatusIsReturned) {
    EXPECT_EQ(RunShell("exit 0").exitStatus, 0);
    EXPECT_EQ(RunShell("exit 64").exitStatus, 64);
    EXPECT_TRUE(RunShell("exit 64").Started());
}

TEST_F(RunProcessTest, ASignalCountsFrom128) {
    EXPECT_EQ(RunShell("kill -TERM $$").exitStatus, 128 + SIGTERM);
    EXPECT_EQ(RunShell("kill -KILL $$").exitStatus, 128 + SIGKILL);
}

TEST_F(RunProcessTest, BothOutputsArriveInTheOrderWritten) {
    RunShell("echo a; echo b >&2; echo c; echo d >&2");
    EXPECT_EQ(mOutput, "a\nb\nc\nd\n");
}

TEST_F(RunProcessTest, ArgumentsArriveAsTheyAre) {
    Run({"/bin/sh", "-c", "for a; do echo \"<$a>\"; done", "sh", "a b", "", "$HOME *", "\"\\'"});
    EXPECT_EQ(mOutput, "<a b>\n<>\n<$HOME *>\n<\"\\'>\n");
}

TEST_F(RunProcessTest, AProgramWithoutASlashIsLookedUpInThePath) {
    EXPECT_EQ(Run({"sh", "-c", "echo found"}).exitStatus, 0);
    EXPECT_EQ(mOutput, "found\n");
}

TEST_F(RunProcessTest, StandardInputIsEmpty) {
    EXPECT_EQ(RunShell("cat; echo end").exitStatus, 0);
    EXPECT_EQ(mOutput, "end\n");
}

TEST_F(RunProcessTest, AProgramThatDoesNotExistIsNotStarted) {
    const ProcessResult result = Run({"/no/such/program"});
    EXPECT_FALSE(result.Started());
    EXPECT_EQ(result.startError.value(), ENOENT);
    EXPECT_EQ(Run({"no-such-program-anywhere"}).startError.value(), ENOENT);
    EXPECT_EQ(Run({""}).startError.value(), ENOENT);
}

TEST_F(RunProcessTest, AFolderOrAPlainFileIsNotStarted) {
    EXPECT_EQ(Run({"/"}).startError.value(), EACCES);
    EXPECT_EQ(Run({"/etc/passwd"}).startError.value(), EACCES);
}

TEST_F(RunProcessTest, AnExitStatusOf127IsNoStartError) {
    const ProcessResult result = RunShell("exit 127");
    EXPECT_TRUE(result.Started());
    EXPECT_EQ(result.exitStatus, 127);
}

TEST_F(RunProcessTest, ArgumentsThatCannotBePassedAreRefused) {
    EXPECT_EQ(Run({}).startError.value(), EINVAL);
    EXPECT_EQ(Run({"/bin/sh", std::string("a\0b", 3)}).startError.value(), EINVAL);
}

TEST_F(RunProcessTest, ALotOfOutputArrivesWhole) {
    EXPECT_EQ(RunShell("i=0; while [ $i -lt 20000 ]; do echo line $i; i=$((i+1)); done").exitStatus, 0);
    EXPECT_EQ(std::count(mOutput.begin(), mOutput.end(), '\n'), 20000);
    EXPECT_TRUE(mOutput.ends_with("line 19999\n"));
}

TEST_F(RunProcessTest, OutputArrivesBeforeTheProcessEnds) {
    const std::filesystem::path gate = std::filesystem::path(testing::TempDir()) / ("gate" + std::to_string(getpid()));
    bool opened = false;
    const auto open = [&](std::string_view piece) {
        opened = opened || piece.find("ready") != std::string_view::npos;
        std::ofstream file(gate);
    };
    // Ends with status 0 only once the first piece was handed on.
    const std::string script = "echo ready; i=0; while [ $i -lt 100 ]; do [ -e '" + gate.string() +
                               "' ] && exit 0; sleep 0.1; i=$((i+1)); done; exit 1";
    EXPECT_EQ(posix::RunProcess({"/bin/sh", "-c", script}, open).exitStatus, 0);
    EXPECT_TRUE(opened);
    std::filesystem::remove(gate);
}

TEST_F(RunProcessTest, AProcessLeftBehindIsNotWaitedFor) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(RunShell("echo begin; sleep 20 & echo end; exit 3").exitStatus, 3);
    EXPECT_EQ(mOutput, "begin\nend\n");
    EXPECT_LT(SecondsSince(start), 10);
}

TEST_F(RunProcessTest, AProcessLeftBehindThatKeepsWritingIsNotWaitedFor) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(RunShell("yes & echo end; exit 4").exitStatus, 4);
    EXPECT_NE(mOutput.find("end\n"), std::string::npos);
    EXPECT_LT(SecondsSince(start), 10);
}

TEST_F(RunProcessTest, AProcessThatClosesItsOutputIsWaitedFor) {
    EXPECT_EQ(RunShell("echo x; exec >&- 2>&-; sleep 0.3; exit 7").exitStatus, 7);
    EXPECT_EQ(mOutput, "x\n");
}

TEST_F(RunProcessTest, NoDescriptorAndNoZombieIsLeft) {
    const std::set<int> before = OpenDescriptors();
    RunShell("echo x");
    Run({"/no/such/program"});
    RunShell("sleep 1 & exit 1");
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_FALSE(HasChildren());
}

TEST_F(RunProcessTest, TheProcessHoldsThePipeAsItsTwoOutputsOnly) {
    const std::string script = "pipe=$(readlink /proc/$$/fd/1); count=0; for file in /proc/$$/fd/*; do "
                               "[ \"$(readlink $file)\" = \"$pipe\" ] && count=$((count+1)); done; exit $count";
    EXPECT_EQ(RunShell(script).exitStatus, 2);
}

TEST_F(RunProcessTest, AnExceptionOfTheCallerKillsTheProcessAndIsPassedOn) {
    const std::set<int> before = OpenDescriptors();
    const auto start = std::chrono::steady_clock::now();
    const auto refuse = [](std::string_view) { throw std::runtime_error("full"); };
    EXPECT_THROW(posix::RunProcess({"/bin/sh", "-c", "echo x; sleep 20"}, refuse), std::runtime_error);
    EXPECT_LT(SecondsSince(start), 10);
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_FALSE(HasChildren());
}

TEST_F(RunProcessTest, TheProcessStartsWithTheUsualSignals) {
    struct sigaction old = {};
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    sigset_t blocked;
    sigset_t oldMask;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigprocmask(SIG_BLOCK, &blocked, &oldMask);
    for (const int signal : {SIGPIPE, SIGXFSZ}) {
        sigaction(signal, &ignore, &old);
        EXPECT_EQ(RunShell("kill -" + std::to_string(signal) + " $$; exit 1").exitStatus, 128 + signal);
        sigaction(signal, &old, nullptr);
    }
    EXPECT_EQ(RunShell("kill -TERM $$; exit 1").exitStatus, 128 + SIGTERM);
    sigprocmask(SIG_SETMASK, &oldMask, nullptr);
}

void DoNothing(int) {}

TEST_F(RunProcessTest, SignalsThatInterruptDoNoHarm) {
    struct sigaction old = {};
    struct sigaction interrupt = {};
    interrupt.sa_handler = DoNothing; // without SA_RESTART: every call may fail with EINTR
    sigaction(SIGUSR1, &interrupt, &old);
    const std::string script = "i=0; while [ $i -lt 30 ]; do kill -USR1 $PPID; echo $i; sleep 0.01; i=$((i+1)); done; "
                               "exec >&- 2>&-; kill -USR1 $PPID; sleep 0.1; kill -USR1 $PPID; sleep 0.1; exit 9";
    EXPECT_EQ(RunShell(script).exitStatus, 9);
    EXPECT_EQ(std::count(mOutput.begin(), mOutput.end(), '\n'), 30);
    sigaction(SIGUSR1, &old, nullptr);
}

TEST_F(RunProcessTest, ItWorksWithTheStandardDescriptorsClosed) {
    const pid_t process = ::fork();
    ASSERT_GE(process, 0);
    if (process == 0) {
        ::close(0);
        ::close(1);
        ::close(2);
        std::string output;
        const ProcessResult result = posix::RunProcess({"/bin/sh", "-c", "cat; echo a; echo b >&2; exit 5"},
                                                       [&output](std::string_view piece) { output += piece; });
        ::_exit(output == "a\nb\n" && result.exitStatus == 5 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(process, &status, 0), process);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace tessaly
