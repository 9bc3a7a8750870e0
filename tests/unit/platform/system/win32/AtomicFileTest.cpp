// Replacing files, and everything that can come between.
#include "platform/system/AtomicFile.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace tessaly {
namespace {

using Names = std::vector<std::string>;

// Writes `content` to the path that it gets.
std::function<bool(const std::string&)> Writing(const std::string& content) {
    return [content](const std::string& path) {
        std::ofstream file(std::filesystem::path(win32::ToWide(path)), std::ios::binary);
        return !(file << content).flush().fail();
    };
}

class AtomicFileTest : public testing::Test {
protected:
    AtomicFileTest() { folder.Write(file, "old"); }

    std::wstring Wide() const { return win32::ToWide(folder.Path(file)); }

    // Another program's handle of the file, which does not let it be replaced.
    win32::Handle Held() const {
        win32::Handle handle(
            CreateFileW(Wide().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(handle);
        return handle;
    }

    const TestFolder folder;
    const std::string file = "Größe 1.PSF";
};

TEST_F(AtomicFileTest, AFileIsReplacedByANewOne) {
    EXPECT_EQ(ReplaceWhole(folder.Path(file), Existing::Replace, Writing("new")), std::error_code());
    EXPECT_EQ(folder.Read(file), "new");
    EXPECT_EQ(ReplaceWhole(folder.Path("other"), Existing::Replace, Writing("other")), std::error_code());
    EXPECT_EQ(folder.Read("other"), "other");
    EXPECT_EQ(folder.Names(), (Names{file, "other"}));
}

TEST_F(AtomicFileTest, TheOldContentStandsThereUntilTheNewIsWhole) {
    const auto write = [this](const std::string& path) {
        EXPECT_EQ(folder.Read(file), "old");
        EXPECT_NE(path, folder.Path(file));
        const bool written = Writing("new")(path);
        EXPECT_EQ(folder.Read(file), "old");
        return written;
    };
    EXPECT_EQ(ReplaceWhole(folder.Path(file), Existing::Replace, write), std::error_code());
    EXPECT_EQ(folder.Read(file), "new");
}

TEST_F(AtomicFileTest, AFileThatIsToBeKeptIsKept) {
    EXPECT_EQ(ReplaceWhole(folder.Path(file), Existing::Keep, Writing("new")), std::errc::file_exists);
    EXPECT_EQ(folder.Read(file), "old");
    EXPECT_EQ(ReplaceWhole(folder.Path("other"), Existing::Keep, Writing("new")), std::error_code());
    EXPECT_EQ(folder.Read("other"), "new");
}

TEST_F(AtomicFileTest, AFileThatAppearsMeanwhileIsKept) {
    const auto write = [this](const std::string& path) {
        folder.Write("other", "somebody's");
        return Writing("new")(path);
    };
    EXPECT_EQ(ReplaceWhole(folder.Path("other"), Existing::Keep, write), std::errc::file_exists);
    EXPECT_EQ(folder.Read("other"), "somebody's");
    EXPECT_EQ(folder.Names(), (Names{file, "other"}));
}

TEST_F(AtomicFileTest, AWriteThatFailsLeavesTheFileAndNothingElse) {
    const auto fail = [](const std::string& path) {
        Writing("half")(path);
        return false;
    };
    EXPECT_EQ(ReplaceWhole(folder.Path(file), Existing::Replace, fail), std::errc::operation_canceled);
    EXPECT_EQ(folder.Read(file), "old");
    EXPECT_EQ(folder.Names(), Names{file});
}

TEST_F(AtomicFileTest, AFileThatAnotherProgramHoldsIsLeftAlone) {
    const win32::Handle other = Held();
    const std::error_code error = ReplaceWhole(folder.Path(file), Existing::Replace, Writing("new"));
    EXPECT_TRUE(error.value() == ERROR_SHARING_VIOLATION || error.value() == ERROR_ACCESS_DENIED) << error;
    EXPECT_EQ(folder.Read(file), "old");
    EXPECT_EQ(folder.Names(), Names{file});
}

TEST_F(AtomicFileTest, AFileThatAnotherProgramLetsGoSoonIsReplaced) {
    win32::Handle other = Held();
    std::thread scanner;
    const auto write = [&](const std::string& path) {
        const bool written = Writing("new")(path);
        scanner = std::thread([&other] {
            Sleep(150); // not a wait for anything: the file is held for so long
            other.Close();
        });
        return written;
    };
    EXPECT_EQ(ReplaceWhole(folder.Path(file), Existing::Replace, write), std::error_code());
    scanner.join();
    EXPECT_EQ(folder.Read(file), "new");
    EXPECT_EQ(folder.Names(), Names{file});
}

TEST_F(AtomicFileTest, AReadOnlyFileAndAFolderAreLeftAlone) {
    ASSERT_NE(SetFileAttributesW(Wide().c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_EQ(ReplaceWhole(folder.Path(file), Existing::Replace, Writing("new")), std::errc::operation_not_permitted);
    EXPECT_EQ(folder.Read(file), "old");
    ASSERT_NE(CreateDirectoryW(win32::ToWide(folder.Path("sub")).c_str(), nullptr), 0);
    EXPECT_EQ(ReplaceWhole(folder.Path("sub"), Existing::Replace, Writing("new")), std::errc::is_a_directory);
    EXPECT_EQ(folder.Names(), (Names{file, "sub"}));
}

TEST_F(AtomicFileTest, AHiddenFileStaysHidden) {
    ASSERT_NE(SetFileAttributesW(Wide().c_str(), FILE_ATTRIBUTE_HIDDEN), 0);
    EXPECT_EQ(ReplaceWhole(folder.Path(file), Existing::Replace, Writing("new")), std::error_code());
    EXPECT_NE(GetFileAttributesW(Wide().c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
    EXPECT_EQ(folder.Read(file), "new");
}

TEST_F(AtomicFileTest, ADeviceIsWrittenInPlace) {
    std::string path;
    const auto write = [&path](const std::string& given) {
        path = given;
        return true;
    };
    EXPECT_EQ(ReplaceWhole("NUL", Existing::Replace, write), std::error_code());
    EXPECT_EQ(path, "NUL");
}

TEST_F(AtomicFileTest, WithoutItsFolderAFileCannotBeMade) {
    EXPECT_EQ(ReplaceWhole(folder.Path("no\\file"), Existing::Replace, Writing("new")),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(folder.Names(), Names{file});
}

} // namespace
} // namespace tessaly
