// Copies in other processes, which come and go and are killed.
#include "platform/system/PreviousInstance.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

// A process that holds the mutex of `name` until it is killed.
class OtherCopy {
public:
    OtherCopy(const TestFolder& folder, const std::string& answer, const std::string& name) {
        std::wstring line =
            win32::ToWide("\"" + ProgramBeside("TestChild.exe") + "\" hold \"" + folder.Path(answer) + "\" " + name);
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started = {};
        EXPECT_NE(
            CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started), 0);
        mThread = win32::Handle(started.hThread);
        mProcess = win32::Handle(started.hProcess);
        EXPECT_TRUE(WaitUntil([&] { return folder.Has(answer); }));
    }
    OtherCopy(const OtherCopy&) = delete;
    OtherCopy& operator=(const OtherCopy&) = delete;
    ~OtherCopy() { Kill(); }

    void Kill() {
        if (mProcess) {
            TerminateProcess(mProcess.Get(), 1);
            EXPECT_EQ(WaitForSingleObject(mProcess.Get(), 30000), WAIT_OBJECT_0);
            mProcess.Close();
        }
    }

private:
    win32::Handle mThread;
    win32::Handle mProcess;
};

class Win32PreviousInstanceTest : public testing::Test {
protected:
    const TestFolder folder;
    const std::string name = "TessalyTest" + std::to_string(GetCurrentProcessId());
};

TEST_F(Win32PreviousInstanceTest, TheFirstCopyFindsNoneAndTheSecondFindsTheFirst) {
    const OtherCopy first(folder, "first", name);
    const OtherCopy second(folder, "second", name);
    EXPECT_TRUE(folder.Read("first").starts_with("first "));
    EXPECT_TRUE(folder.Read("second").starts_with("found "));
    EXPECT_TRUE(PreviousInstanceTest(name).PreviousInstance());
}

TEST_F(Win32PreviousInstanceTest, AnotherProgramsCopyDoesNotCount) {
    const OtherCopy other(folder, "other", name + "Other");
    EXPECT_FALSE(PreviousInstanceTest(name).PreviousInstance());
}

TEST_F(Win32PreviousInstanceTest, ACopyThatWasKilledIsGone) {
    OtherCopy first(folder, "first", name);
    ASSERT_TRUE(PreviousInstanceTest(name).PreviousInstance());
    first.Kill();
    EXPECT_TRUE(WaitUntil([&] { return !PreviousInstanceTest(name).PreviousInstance(); }));
}

TEST_F(Win32PreviousInstanceTest, ACopyCountsAsLongAsItsTestLives) {
    {
        const PreviousInstanceTest first(name);
        EXPECT_FALSE(first.PreviousInstance());
        const OtherCopy second(folder, "second", name);
        EXPECT_TRUE(folder.Read("second").starts_with("found "));
    }
    EXPECT_TRUE(WaitUntil([&] { return !PreviousInstanceTest(name).PreviousInstance(); }));
}

} // namespace
} // namespace tessaly
