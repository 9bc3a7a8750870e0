// A single open, read, write or close fails. The operation returns exactly the status that it promises, leaves no file
// open and the document as it was.
#include "document/VornSrcObj.h"
#include "tests/unit/document/MemoryDocument.h"
#include "tests/unit/document/PsfBuilder.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using FileCall = memory::SequentialFiles::Call;

class FileFaultTest : public ::testing::Test, public MemoryDocument {
protected:
    // A document whose file is written in several pieces.
    void FillWithManyFunctions() {
        for (int i = 0; i < 2000; ++i) {
            ASSERT_EQ(
                document.AddFunction("F" + std::to_string(i) + "x", "", "void f()\n{" + std::string(5000, ' ') + "}"),
                Status::Done);
        }
    }
};

TEST_F(FileFaultTest, EveryFailingCallOfALoadIsALoadFailed) {
    files.readSize = 100;
    const std::string bytes = Psf(" 1", "Main", PsfFunction("Main", "x"));
    const std::size_t reads = bytes.size() / files.readSize + 2; // one more finds the end
    const std::pair<FileCall, std::size_t> calls[] = {
        {FileCall::Open, 1}, {FileCall::Read, reads}, {FileCall::Close, 1}};
    for (const auto& [call, count] : calls) {
        for (std::size_t number = 1; number <= count; ++number) {
            files.FailAt(call, number);
            EXPECT_EQ(Load(bytes), Status::LoadFailed) << static_cast<int>(call) << " number " << number;
            EXPECT_FALSE(document.LoadedOK());
            EXPECT_EQ(files.OpenCount(), 0U);
        }
    }
    files.FailAt(FileCall::Read, reads + 1);
    EXPECT_EQ(Load(bytes), Status::Done) << "there are no more reads than that";
}

TEST_F(FileFaultTest, WhatWasReadBeforeAFailureStaysInTheDocument) {
    files.readSize = 1;
    const std::string bytes = Psf(" 1", "Main", PsfFunction("Main", "x"));
    files.FailAt(FileCall::Read, bytes.find("[OnFrame]") + 12);
    EXPECT_EQ(Load(bytes), Status::LoadFailed);
    EXPECT_EQ(VarCode(), "int x;\r\n");
    EXPECT_EQ(Name(0), "Main");
    EXPECT_EQ(EventCode(0), "OnError text\r\n");
    EXPECT_EQ(EventCode(1), EventTable[1].defaultText);
}

TEST_F(FileFaultTest, FunctionsThatWereReadBeforeAFailureAmongThemStay) {
    files.readSize = 1;
    const std::string bytes = Psf(" 2", "One,Two", PsfFunction("One", "x") + PsfFunction("Two", "y"));
    files.FailAt(FileCall::Read, bytes.find("[EventCode]"));
    EXPECT_EQ(Load(bytes), Status::LoadFailed);
    ASSERT_EQ(document.GetFunctionCount(), 1);
    EXPECT_EQ(Name(0), "One");
    EXPECT_EQ(EventCode(0), EventTable[0].defaultText);
}

TEST_F(FileFaultTest, AReadThatFailsAtOnceLeavesTheDefaultDocument) {
    document.UpdateVarCode("old");
    files.FailAt(FileCall::Read, 1);
    EXPECT_EQ(Load(Psf(" 0", "", "")), Status::LoadFailed);
    EXPECT_EQ(VarCode(), "/* ... include ... */\n\n/* ... variables ...*/\n");
}

TEST_F(FileFaultTest, EveryFailingCallOfASaveIsAnUnexpectedError) {
    FillWithManyFunctions();
    for (const FileCall call : {FileCall::Open, FileCall::Write, FileCall::Close}) {
        std::size_t number = 1;
        while (true) {
            files.FailAt(call, number);
            const Status status = document.SaveFile("out.PSF");
            if (status == Status::Done) {
                break;
            }
            ASSERT_EQ(status, Status::UnexpectedError);
            ASSERT_EQ(files.OpenCount(), 0U);
            ++number;
        }
        EXPECT_GT(number, call == FileCall::Write ? 3U : 1U);
    }
}

TEST_F(FileFaultTest, EveryFailingCallOfAGenerationIsAGenerationFailedAndKeepsWhatWasWritten) {
    FillWithManyFunctions();
    const std::string whole = Generated();
    for (const FileCall call : {FileCall::Open, FileCall::Write, FileCall::Close}) {
        std::size_t number = 1;
        while (true) {
            files.FailAt(call, number);
            const Status status = document.BuildCCodeFile("out.c");
            if (status == Status::Done) {
                break;
            }
            ASSERT_EQ(status, Status::GenerationFailed);
            ASSERT_EQ(files.OpenCount(), 0U);
            ASSERT_TRUE(whole.starts_with(files.contents["out.c"]));
            ++number;
        }
        EXPECT_GT(number, call == FileCall::Write ? 3U : 1U);
    }
    EXPECT_EQ(Generated(), whole);
}

TEST_F(FileFaultTest, AFailedSaveLeavesTheDocumentAsItWas) {
    document.AddFunction("Main", "p", "c");
    files.FailAt(FileCall::Write, 1);
    EXPECT_EQ(document.SaveFile("out.PSF"), Status::UnexpectedError);
    EXPECT_EQ(Code(0), "c");
    EXPECT_EQ(document.SaveFile("out.PSF"), Status::Done);
}

} // namespace
} // namespace tessaly
