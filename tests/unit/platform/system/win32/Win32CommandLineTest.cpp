// The command line as it stands, cut and in a process of its own.
#include "platform/system/Process.h"
#include "platform/system/win32/Streams.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(Win32CommandLineTest, TheProgramsNameAndTheBlanksBehindItAreCutOff) {
    EXPECT_EQ(win32::WithoutProgramName(L"Tessaly.exe C:\\a b.PSF"), L"C:\\a b.PSF");
    EXPECT_EQ(win32::WithoutProgramName(L"\"C:\\Program Files\\Tessaly.exe\" C:\\a b.PSF"), L"C:\\a b.PSF");
    EXPECT_EQ(win32::WithoutProgramName(L"Tessaly.exe \t  x"), L"x");
    EXPECT_EQ(win32::WithoutProgramName(L"\"a b\"x y"), L"x y") << "a name in quotes ends at the quote";
}

TEST(Win32CommandLineTest, QuotesInnerBlanksAndBlanksAtTheEndStay) {
    EXPECT_EQ(win32::WithoutProgramName(L"Tessaly.exe \"C:\\a b.PSF\"  x "), L"\"C:\\a b.PSF\"  x ");
}

TEST(Win32CommandLineTest, WithoutArgumentsNothingIsLeft) {
    EXPECT_EQ(win32::WithoutProgramName(L"Tessaly.exe"), L"");
    EXPECT_EQ(win32::WithoutProgramName(L"\"Tessaly.exe\" "), L"");
    EXPECT_EQ(win32::WithoutProgramName(L"\"Tessaly.exe"), L"");
    EXPECT_EQ(win32::WithoutProgramName(L""), L"");
}

TEST(Win32CommandLineTest, AProcessSeesItsOwnAsItWasWritten) {
    const TestFolder folder;
    const std::string line = "line \"" + folder.Path("answer") + "\"  \"Größe 1.PSF\" \\\" x\t日本";
    StartProcess("\"" + ProgramBeside("TestChild.exe") + "\"   " + line, 1);
    ASSERT_TRUE(WaitUntil([&] { return folder.Has("answer"); }));
    EXPECT_EQ(folder.Read("answer"), line);
}

} // namespace
} // namespace tessaly
