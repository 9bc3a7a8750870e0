// The document over the real file system.
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/SingleByteCodePage.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace tessaly {
namespace {

namespace fs = std::filesystem;

std::size_t CountDescriptors() {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

class PosixFilesTest : public ::testing::Test {
protected:
    PosixFilesTest() {
        folder = fs::temp_directory_path() / ("tessaly-" + std::to_string(getpid()));
        fs::create_directories(folder);
    }
    ~PosixFilesTest() override { fs::remove_all(folder); }

    std::string Path(const std::string& name) const { return (folder / name).string(); }

    fs::path folder;
    SystemFiles files;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    VornSrcObj document{files, codePage};
};

TEST_F(PosixFilesTest, ADocumentIsSavedAndLoaded) {
    document.AddFunction("Main", "", "void Main()\n{ /* \xC3\xA4 */ }");
    ASSERT_EQ(document.SaveFile(Path("Gr\xC3\xB6\xC3\x9F"
                                     "e 1.PSF")),
              Status::Done);
    ASSERT_EQ(document.LoadFile(Path("Gr\xC3\xB6\xC3\x9F"
                                     "e 1.PSF")),
              Status::Done);
    EXPECT_EQ(document.Functions().CodeAt(0), "void Main()\n{ /* \xC3\xA4 */ }\r\n");
}

TEST_F(PosixFilesTest, AFolderIsAFailedLoadWithTheDefaultDocument) {
    EXPECT_EQ(document.LoadFile(folder.string()), Status::LoadFailed);
    EXPECT_EQ(document.VarCode(), "/* ... include ... */\n\n/* ... variables ...*/\n");
}

TEST_F(PosixFilesTest, AFileThatMayNotBeReadOrIsNotThereIsAFailedLoad) {
    EXPECT_EQ(document.LoadFile(Path("missing.PSF")), Status::LoadFailed);
    EXPECT_EQ(document.LoadFile(""), Status::LoadFailed);
    EXPECT_EQ(document.LoadFile(std::string("/dev/null\0x", 11)), Status::LoadFailed);
    EXPECT_EQ(document.LoadFile("/proc/self/mem"), Status::LoadFailed) << "it opens, and reading fails";
    EXPECT_EQ(document.VarCode(), "/* ... include ... */\n\n/* ... variables ...*/\n");
}

TEST_F(PosixFilesTest, APathThatCannotBeWrittenGivesTheStatusOfItsOperation) {
    EXPECT_EQ(document.SaveFile(Path("no/folder/x.PSF")), Status::UnexpectedError);
    EXPECT_EQ(document.SaveFile(folder.string()), Status::UnexpectedError);
    EXPECT_EQ(document.BuildCCodeFile(Path("no/folder/x.c")), Status::GenerationFailed);
    EXPECT_EQ(document.BuildCCodeFile(folder.string()), Status::GenerationFailed);
}

TEST_F(PosixFilesTest, AFullDiskGivesTheStatusOfItsOperation) {
    EXPECT_EQ(document.SaveFile("/dev/full"), Status::UnexpectedError);
    EXPECT_EQ(document.BuildCCodeFile("/dev/full"), Status::GenerationFailed);
}

TEST_F(PosixFilesTest, NoOperationLeavesADescriptorOpen) {
    const std::size_t before = CountDescriptors();
    document.SaveFile(Path("a.PSF"));
    document.LoadFile(Path("a.PSF"));
    document.LoadFile(folder.string());
    document.SaveFile("/dev/full");
    document.BuildCCodeFile("/dev/full");
    std::ofstream(Path("bad.PSF")) << "[GVars]\r\n[GFuncs]\r\nNumFuncs=x\r\n";
    EXPECT_EQ(document.LoadFile(Path("bad.PSF")), Status::LoadFailed);
    EXPECT_EQ(CountDescriptors(), before);
}

} // namespace
} // namespace tessaly
