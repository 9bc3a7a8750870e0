// Real programs and real batch files, started as the Build command starts them, and as psf does.
#include "platform/system/Process.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace tessaly {
namespace {

using namespace std::string_literals;

class Win32ProcessTest : public testing::Test {
protected:
    // The batch file `name` writes its arguments, as they came, to "answer" beside it.
    void MakeBatch(const std::string& name) {
        SetEnvironmentVariableW(L"TESSALY_CHILD", win32::ToWide(child).c_str());
        folder.Write(name, "@\"%TESSALY_CHILD%\" line \"%~dp0answer\" %*\r\n");
    }

    std::string Answer(const std::string& name = "answer") {
        EXPECT_TRUE(WaitUntil([&] { return folder.Has(name); }));
        return folder.Has(name) ? folder.Read(name) : "";
    }

    // Ends the process with this number, which runs.
    static void Kill(const std::string& number) {
        const win32::Handle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, std::stoul(number)));
        ASSERT_TRUE(process);
        EXPECT_EQ(WaitForSingleObject(process.Get(), 0), WAIT_TIMEOUT);
        EXPECT_NE(TerminateProcess(process.Get(), 1), 0);
        EXPECT_EQ(WaitForSingleObject(process.Get(), 30000), WAIT_OBJECT_0);
    }

    std::string Child(const std::string& arguments) const { return "\"" + child + "\" " + arguments; }

    std::string InFolder(const std::string& name) const { return "\"" + folder.Path(name) + "\""; }

    ProcessResult Run(const std::string& commandLine) {
        return RunProcess(commandLine, [this](std::string_view piece) { output += piece; });
    }

    const TestFolder folder;
    const std::string child = ProgramBeside("TestChild.exe");
    std::string output;
};

TEST_F(Win32ProcessTest, ABatchFileGetsItsQuotedArgument) {
    MakeBatch("compile.bat");
    StartProcess(InFolder("compile.bat") + " \"C:\\Gerät 1\\Größe.out\"", SW_SHOWMAXIMIZED);
    EXPECT_TRUE(Answer().ends_with("answer\" \"C:\\Gerät 1\\Größe.out\"")) << Answer();
}

TEST_F(Win32ProcessTest, ABatchFileWithBlanksInItsPathNeedsNoQuotes) {
    MakeBatch("my compile.bat");
    StartProcess(folder.Path("my compile.bat") + " \"x 1.out\"", SW_SHOWMAXIMIZED);
    EXPECT_TRUE(Answer().ends_with("answer\" \"x 1.out\"")) << Answer();
}

TEST_F(Win32ProcessTest, ACmdFileIsABatchFileToo) {
    MakeBatch("compile.cmd");
    StartProcess(folder.Path("compile.cmd") + " \".out\"", SW_SHOWMAXIMIZED);
    EXPECT_TRUE(Answer().ends_with("answer\" \".out\"")) << Answer();
}

TEST_F(Win32ProcessTest, AProcessIsToldItsWindowStyle) {
    StartProcess(Child("style " + InFolder("answer")), SW_SHOWMAXIMIZED);
    EXPECT_EQ(Answer(), "3");
}

TEST_F(Win32ProcessTest, AProcessInheritsNothing) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    win32::Handle file(CreateFileW(win32::ToWide(folder.Path("kept")).c_str(), GENERIC_WRITE, 0, &inheritable,
                                   CREATE_ALWAYS, 0, nullptr));
    ASSERT_TRUE(file);
    const std::string name = "TessalyTestInherit" + std::to_string(GetCurrentProcessId());
    StartProcess(Child("hold " + InFolder("answer") + " " + name), 1);
    const std::string answer = Answer(); // it runs, and goes on running
    file.Close();
    EXPECT_TRUE(DeleteFileW(win32::ToWide(folder.Path("kept")).c_str())) << "the process holds the file";
    Kill(answer.substr(answer.find(' ') + 1));
}

TEST_F(Win32ProcessTest, WhatCannotBeStartedThrows) {
    for (const std::string& line : {InFolder("missing.bat") + " \"x\"", ""s, Child("line\0x"s)}) {
        EXPECT_THROW(StartProcess(line, SW_SHOWMAXIMIZED), std::system_error) << line;
    }
}

TEST_F(Win32ProcessTest, TheOutputComesInItsOrderAndTheExitStatusWithIt) {
    const ProcessResult result = Run(Child("talk x 6"));
    EXPECT_TRUE(result.Started());
    EXPECT_EQ(result.exitStatus, 7);
    EXPECT_EQ(output, "line 0\nline 1\nline 2\nline 3\nline 4\nline 5\nread 0");
}

TEST_F(Win32ProcessTest, MuchOutputIsReadWhileTheProcessRuns) {
    EXPECT_EQ(Run(Child("talk x 30000")).exitStatus, 7);
    EXPECT_TRUE(output.ends_with("line 29999\nread 0"));
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 30000);
}

TEST_F(Win32ProcessTest, ABatchFilesOutputAndStatusAreTakenToo) {
    folder.Write("my compile.bat", "@echo off\r\necho compiling %1\r\nexit /b 3\r\n");
    const ProcessResult result = Run(folder.Path("my compile.bat") + " \"x 1.out\"");
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(output, "compiling \"x 1.out\"\r\n");
}

TEST_F(Win32ProcessTest, AProcessThatIsLeftBehindIsNotWaitedFor) {
    EXPECT_EQ(Run(Child("leave " + InFolder("answer"))).exitStatus, 0);
    ASSERT_NE(output, "");
    Kill(output);
}

TEST_F(Win32ProcessTest, WhatIsThrownAtOutputGetsThroughAndTheProcessIsKilled) {
    const std::string name = "TessalyTestThrow" + std::to_string(GetCurrentProcessId());
    folder.Write("loop.bat", "@echo off\r\n:again\r\necho x\r\ngoto again\r\n");
    EXPECT_THROW(RunProcess(InFolder("loop.bat"), [](std::string_view) { throw std::runtime_error("enough"); }),
                 std::runtime_error);
}

TEST_F(Win32ProcessTest, StandardErrorHasAPlaceOfItsOwn) {
    std::string errors;
    RunningProcess process(
        Child("talk x 6"), [this](std::string_view piece) { output += piece; },
        [&errors](std::string_view piece) { errors += piece; });
    while (!process.HasEnded()) {
        RunningProcess::WaitForAny({&process});
    }
    EXPECT_EQ(process.Result().exitStatus, 7);
    EXPECT_EQ(output, "line 0\nline 2\nline 4\nread 0");
    EXPECT_EQ(errors, "line 1\nline 3\nline 5\n");
}

TEST_F(Win32ProcessTest, WhatARunningProcessHasStartedEndsWithIt) {
    SetEnvironmentVariableW(L"TESSALY_CHILD", win32::ToWide(child).c_str());
    folder.Write("start.bat", "@\"%TESSALY_CHILD%\" hold \"%~dp0answer\" TessalyTestEnds\r\n");
    auto process = std::make_unique<RunningProcess>(InFolder("start.bat"), [](std::string_view) {});
    EXPECT_TRUE(WaitUntil([&] { return process->HasEnded() || folder.Has("answer"); }));
    const std::string answer = Answer();
    const win32::Handle held(OpenProcess(SYNCHRONIZE, FALSE, std::stoul(answer.substr(answer.find(' ') + 1))));
    ASSERT_TRUE(held);
    process.reset();
    EXPECT_EQ(WaitForSingleObject(held.Get(), 30000), WAIT_OBJECT_0);
}

TEST_F(Win32ProcessTest, AStartThatFailsIsToldWithItsReason) {
    EXPECT_EQ(Run(InFolder("missing.bat")).startError, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(Run("").Started());
    EXPECT_EQ(output, "");
}

} // namespace
} // namespace tessaly
