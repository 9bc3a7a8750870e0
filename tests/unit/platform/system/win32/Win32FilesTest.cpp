// The document over the files of Windows.
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"
#include "platform/text/SingleByteCodePage.h"
#include "tests/unit/platform/system/win32/TestFolder.h"

#include <gtest/gtest.h>
#include <system_error>

namespace tessaly {
namespace {

using namespace std::string_literals;

DWORD OpenHandles() {
    DWORD count = 0;
    EXPECT_NE(GetProcessHandleCount(GetCurrentProcess(), &count), 0);
    return count;
}

class Win32FilesTest : public testing::Test {
protected:
    // What opening `path` throws; no error when it does not.
    std::error_code OpenError(const std::string& path) {
        try {
            files.OpenForInput(path);
            return {};
        } catch (const std::system_error& error) {
            return error.code();
        }
    }

    std::string ReadAll(const std::string& path) {
        const auto file = files.OpenForInput(path);
        std::string content;
        std::string buffer(1000, '\0');
        while (const std::size_t count = file->Read(buffer.data(), buffer.size())) {
            content.append(buffer, 0, count);
        }
        file->Close();
        return content;
    }

    // A file that another program has open, sharing it as told.
    win32::Handle OpenedByOther(const std::string& name, DWORD access, DWORD share) const {
        return win32::Handle(
            CreateFileW(win32::ToWide(folder.Path(name)).c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
    }

    TestFolder folder;
    SystemFiles files;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    VornSrcObj document{files, codePage};
};

TEST_F(Win32FilesTest, ADocumentIsSavedAndLoadedWhateverItsNameIs) {
    document.AddFunction("Main", "", "void Main()\n{ /* ä */ }");
    for (const char* name : {"Größe 1.PSF", "日本語.PSF", "😀.PSF", "[x,y] %s.PSF"}) {
        ASSERT_EQ(document.SaveFile(folder.Path(name)), Status::Done) << name;
        EXPECT_TRUE(folder.Has(name)) << name;
        ASSERT_EQ(document.LoadFile(folder.Path(name)), Status::Done) << name;
    }
    EXPECT_EQ(folder.Names().size(), 4U);
}

TEST_F(Win32FilesTest, EveryByteIsWrittenAndReadAsItIs) {
    const std::string content = "a\r\nb\nc\r\0\x1A\xFF\r\r\n"s;
    const auto file = files.OpenForOutput(folder.Path("file"));
    file->Write(content);
    file->Close();
    EXPECT_EQ(folder.Read("file"), content);
    EXPECT_EQ(ReadAll(folder.Path("file")), content);
}

TEST_F(Win32FilesTest, APathMayBeLongerThanWindowsTakesByItself) {
    std::string path = folder.Path("deep");
    CreateDirectoryW(win32::ToWide(path).c_str(), nullptr);
    while (path.size() < 600) {
        path += "\\" + std::string(50, 'x');
        ASSERT_NE(CreateDirectoryW(win32::WidePath(path).c_str(), nullptr), 0);
    }
    const std::string file = path + "\\file.PSF";
    EXPECT_EQ(document.SaveFile(file), Status::Done);
    EXPECT_TRUE(files.FileExists(file));
    EXPECT_EQ(document.LoadFile(file), Status::Done);
    EXPECT_NE(DeleteFileW(win32::WidePath(file).c_str()), 0);
    for (; path != folder.Path("deep"); path.resize(path.rfind('\\'))) {
        EXPECT_NE(RemoveDirectoryW(win32::WidePath(path).c_str()), 0) << path;
    }
}

TEST_F(Win32FilesTest, AFolderIsAFailedLoadAndSaysSo) {
    EXPECT_EQ(document.LoadFile(folder.Path("")), Status::LoadFailed);
    EXPECT_EQ(OpenError(folder.Path("")), std::errc::is_a_directory);
    EXPECT_FALSE(files.FileExists(folder.Path("")));
}

TEST_F(Win32FilesTest, AFileThatIsNotThereIsAFailedLoadAndSaysSo) {
    for (const std::string& path : {folder.Path("missing"), folder.Path("no\\folder"), ""s, folder.Path("*.PSF")}) {
        EXPECT_EQ(document.LoadFile(path), Status::LoadFailed) << path;
        EXPECT_EQ(OpenError(path), std::errc::no_such_file_or_directory) << path;
        EXPECT_FALSE(files.FileExists(path)) << path;
    }
}

TEST_F(Win32FilesTest, APathWithANulNamesNoFile) {
    folder.Write("file", "x");
    EXPECT_TRUE(files.FileExists(folder.Path("file")));
    EXPECT_FALSE(files.FileExists(folder.Path("file\0x"s)));
    EXPECT_NE(OpenError(folder.Path("file\0x"s)), std::error_code());
    EXPECT_THROW(files.OpenForOutput(folder.Path("new\0x"s)), std::system_error);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
}

TEST_F(Win32FilesTest, APathThatCannotBeWrittenGivesTheStatusOfItsOperation) {
    EXPECT_EQ(document.SaveFile(folder.Path("no\\x.PSF")), Status::UnexpectedError);
    EXPECT_EQ(document.SaveFile(folder.Path("")), Status::UnexpectedError);
    EXPECT_EQ(document.BuildCCodeFile(folder.Path("no\\x.c")), Status::GenerationFailed);
}

TEST_F(Win32FilesTest, AHiddenFileIsWrittenAndStaysHidden) {
    folder.Write("file", std::string(10000, 'x'));
    const std::wstring path = win32::ToWide(folder.Path("file"));
    ASSERT_NE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN), 0);
    const auto file = files.OpenForOutput(folder.Path("file"));
    file->Write("new");
    file->Close();
    EXPECT_EQ(ReadAll(folder.Path("file")), "new");
    EXPECT_NE(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

TEST_F(Win32FilesTest, AFileThatAnotherProgramKeepsForItselfCannotBeReadOrWritten) {
    folder.Write("file.PSF", "old");
    const win32::Handle other = OpenedByOther("file.PSF", GENERIC_READ, 0);
    ASSERT_TRUE(other);
    EXPECT_EQ(OpenError(folder.Path("file.PSF")).value(), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(document.SaveFile(folder.Path("file.PSF")), Status::UnexpectedError);
}

TEST_F(Win32FilesTest, WhatIsBeingReadMayBeWrittenAndMovedByOthers) {
    folder.Write("file.PSF", "content");
    const auto file = files.OpenForInput(folder.Path("file.PSF"));
    EXPECT_TRUE(OpenedByOther("file.PSF", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE));
    EXPECT_NE(MoveFileW(win32::ToWide(folder.Path("file.PSF")).c_str(), win32::ToWide(folder.Path("moved")).c_str()),
              0);
    char byte = 0;
    EXPECT_EQ(file->Read(&byte, 1), 1U);
    EXPECT_EQ(byte, 'c');
}

TEST_F(Win32FilesTest, WhatIsBeingWrittenMayOnlyBeReadByOthers) {
    const auto file = files.OpenForOutput(folder.Path("file.PSF"));
    constexpr DWORD everything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    EXPECT_FALSE(OpenedByOther("file.PSF", GENERIC_WRITE, everything));
    EXPECT_TRUE(OpenedByOther("file.PSF", GENERIC_READ, everything));
}

TEST_F(Win32FilesTest, NoOperationLeavesAHandleOpen) {
    const auto work = [this] {
        document.SaveFile(folder.Path("a.PSF"));
        document.LoadFile(folder.Path("a.PSF"));
        document.LoadFile(folder.Path(""));
        document.SaveFile(folder.Path("no\\x.PSF"));
        document.BuildCCodeFile(folder.Path("a.c"));
        folder.Write("bad.PSF", "[GVars]\r\n[GFuncs]\r\nNumFuncs=x\r\n");
        EXPECT_EQ(document.LoadFile(folder.Path("bad.PSF")), Status::LoadFailed);
    };
    work(); // what Windows itself keeps from the first time on does not count
    const DWORD before = OpenHandles();
    for (int i = 0; i < 10; ++i) {
        work();
    }
    EXPECT_EQ(OpenHandles(), before);
}

} // namespace
} // namespace tessaly
