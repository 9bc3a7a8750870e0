// Folders of the user's own on a real drive, and what tells one process from another.
#include "platform/system/PrivateFiles.h"
#include "platform/system/SequentialFiles.h"
#include "platform/system/win32/Text.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <aclapi.h>
#include <gtest/gtest.h>
#include <memory>
#include <sddl.h>
#include <windows.h>

namespace tessaly {
namespace {

class Win32PrivateFilesTest : public testing::Test {
protected:
    TestFolder top;
    std::string folder = top.Path("above\\own");
    SystemPrivateFiles own;
};

TEST_F(Win32PrivateFilesTest, AFolderIsMadeForTheUserAloneWithThoseAbove) {
    ASSERT_FALSE(own.MakeFolder(folder));
    EXPECT_FALSE(own.MakeFolder(folder));
    PACL rights = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring name = win32::ToWide(folder);
    ASSERT_EQ(GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &rights,
                                    nullptr, &descriptor),
              static_cast<DWORD>(ERROR_SUCCESS));
    SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
    PSID everyone = nullptr;
    AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0, &everyone);
    for (DWORD i = 0; i < rights->AceCount; ++i) {
        void* entry = nullptr;
        GetAce(rights, i, &entry);
        EXPECT_EQ(EqualSid(&static_cast<ACCESS_ALLOWED_ACE*>(entry)->SidStart, everyone), 0);
    }
    FreeSid(everyone);
    LocalFree(descriptor);
}

TEST_F(Win32PrivateFilesTest, AFileInItsPlaceIsRefused) {
    top.Write("file", "x");
    EXPECT_EQ(own.MakeFolder(top.Path("file")), std::errc::operation_not_permitted);
}

TEST_F(Win32PrivateFilesTest, FilesAreWrittenListedFlushedAndRemoved) {
    std::vector<FolderEntry> entries;
    EXPECT_FALSE(own.List(folder, entries)) << "one that is not there has no files";
    own.MakeFolder(folder);
    own.MakeFolder(folder + "\\kept");
    for (const Flushing flushing : {Flushing::Now, Flushing::Later}) {
        ASSERT_FALSE(own.Write(folder + "/\xC3\xA4.PSF", "22", flushing));
    }
    ASSERT_FALSE(own.List(folder, entries));
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].name, "\xC3\xA4.PSF");
    EXPECT_EQ(entries[0].size, 2U);
    EXPECT_FALSE(own.Flush(folder + "/\xC3\xA4.PSF"));
    EXPECT_FALSE(own.Remove(folder + "/\xC3\xA4.PSF"));
    EXPECT_FALSE(own.Remove(folder + "/\xC3\xA4.PSF"));
    EXPECT_TRUE(own.Flush(folder + "/\xC3\xA4.PSF"));
}

TEST_F(Win32PrivateFilesTest, AFileIsWrittenOverWholeWhetherItGrowsOrShrinks) {
    own.MakeFolder(folder);
    SystemFiles files;
    for (const std::string bytes : {"first", "the second", "3", ""}) {
        for (const Flushing flushing : {Flushing::Now, Flushing::Later}) {
            ASSERT_FALSE(own.Rewrite(folder + "\\a", bytes, flushing));
            EXPECT_EQ(ReadWhole(files, folder + "\\a"), bytes);
            std::vector<FolderEntry> entries;
            own.List(folder, entries);
            EXPECT_EQ(entries.size(), 1U);
        }
    }
    EXPECT_TRUE(SystemPrivateFiles().Remove(folder + "\\a")) << "another program cannot take it away";
    ASSERT_FALSE(own.Remove(folder + "\\a"));
    ASSERT_FALSE(own.Rewrite(folder + "\\a", "again", Flushing::Later));
    EXPECT_EQ(ReadWhole(files, folder + "\\a"), "again");
}

TEST_F(Win32PrivateFilesTest, AProcessHasAStartUntilItEnds) {
    EXPECT_TRUE(own.ProcessStart(OwnProcess()));
    std::wstring command = L"\"" + win32::ToWide(ProgramBeside("TestChild.exe")) + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION child = {};
    ASSERT_NE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr, nullptr,
                             &start, &child),
              0);
    EXPECT_TRUE(own.ProcessStart(child.dwProcessId));
    TerminateProcess(child.hProcess, 1);
    WaitForSingleObject(child.hProcess, INFINITE);
    EXPECT_FALSE(own.ProcessStart(child.dwProcessId));
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
}

TEST_F(Win32PrivateFilesTest, TheFoldersForCopiesAreTheUsersOwn) {
    const auto folders = RecoveryFolders([](const std::string& name) { return std::optional("C:\\" + name); });
    ASSERT_EQ(folders.size(), 2U);
    EXPECT_EQ(folders[0], "C:\\LOCALAPPDATA\\Ostrel\\Tessaly\\Recovery");
    EXPECT_TRUE(folders[1].ends_with("\\Ostrel\\Tessaly\\Recovery"));
}

TEST_F(Win32PrivateFilesTest, ANameWithADotInFrontIsHidden) {
    ASSERT_FALSE(own.MakeFolder(folder));
    for (const std::string name : {"\\.a", "\\a"}) {
        for (const std::string bytes : {"first", "second"}) {
            ASSERT_FALSE(own.Write(folder + name, bytes, Flushing::Later));
            SystemFiles files;
            EXPECT_EQ(ReadWhole(files, folder + name), bytes);
        }
        const DWORD attributes = GetFileAttributesW(win32::ToWide(folder + name).c_str());
        EXPECT_EQ((attributes & FILE_ATTRIBUTE_HIDDEN) != 0, name == "\\.a");
    }
}

} // namespace
} // namespace tessaly
