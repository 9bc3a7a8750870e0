// The document's use of memory. No file, however made, takes more than its size justifies. An allocation that fails
// ends an operation with its status and leaks nothing. This program counts every allocation, so it is built on its own.
#include "tests/unit/document/CountedAllocations.h"
#include "tests/unit/document/MemoryDocument.h"
#include "tests/unit/document/PsfBuilder.h"

#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <malloc.h>
#include <new>
#include <utility>

namespace tessaly {
namespace {

constexpr std::size_t MiB = std::size_t{1} << 20;

// How many bytes more than before were in use at most while `file` was loaded.
std::size_t PeakOfLoad(MemoryDocument& memory, const std::string& bytes, Status expected) {
    memory.files.contents["in.PSF"] = bytes;
    const std::size_t before = Allocations().live;
    Allocations().peak = before;
    EXPECT_EQ(memory.document.LoadFile("in.PSF"), expected);
    // The file in memory hands out a copy of itself; that is the test's, not the document's.
    return Allocations().peak - before - bytes.size();
}

class MemoryUseTest : public ::testing::Test, public MemoryDocument {};

TEST_F(MemoryUseTest, ASmallFileThatAnnouncesTwoThousandMillionFunctionsTakesNextToNothing) {
    const std::string bytes = "[GVars]\r\n[GFuncs]\r\nNumFuncs= "
                              "2147483647\r\nFuncNames=a\r\n[FuncCode]\r\n[a]\r\nProtoType=\r\nFuncBody=x\r\n";
    EXPECT_LT(PeakOfLoad(*this, bytes, Status::LoadFailed), 1 * MiB);
}

TEST_F(MemoryUseTest, AnOrdinaryFileTakesLittleMoreThanItsSize) {
    std::string sections;
    std::string names;
    for (int i = 0; i < 2000; ++i) {
        const std::string name = "F" + std::to_string(i) + "x";
        names += (i > 0 ? "," : "") + name;
        sections += PsfFunction(name, "void " + name + "()\r\n{\r\n" + std::string(4000, '\xE4') + "\r\n}");
    }
    const std::string bytes = Psf(" 2000", names, sections);
    files.readSize = bytes.size();
    // Nearly every byte here takes two bytes in memory.
    EXPECT_LT(PeakOfLoad(*this, bytes, Status::Done), bytes.size() * 9 / 4 + 2 * MiB);
}

TEST_F(MemoryUseTest, OneEndlessLineTakesAFewTimesItsSize) {
    const std::string bytes(64 * MiB, 'x');
    EXPECT_LT(PeakOfLoad(*this, bytes, Status::LoadFailed), bytes.size() * 3 + MiB);
    const std::string inBody =
        PsfHead() + Lines({"NumFuncs= 1", "FuncNames=a", "[FuncCode]", "[a]", "ProtoType="}) + "FuncBody=" + bytes;
    EXPECT_LT(PeakOfLoad(*this, inBody, Status::LoadFailed), bytes.size() * 4);
}

TEST_F(MemoryUseTest, FunctionsThatShareAnEndlessBodyTakeItOnce) {
    std::string names;
    std::string ends;
    for (int i = 0; i < 5000; ++i) {
        names += "a" + std::to_string(i) + "x,";
        ends += "[EventCode]\r\n";
    }
    const std::string body(4 * MiB, 'x');
    const std::string bytes =
        PsfHead() + Lines({"NumFuncs= 5000", "FuncNames=" + names, "[FuncCode]", "[a0x]", "ProtoType=" + body}) +
        "FuncBody=" + body + "\r\n" + ends + PsfEvents();
    EXPECT_LT(PeakOfLoad(*this, bytes, Status::Done), bytes.size() * 3);
    EXPECT_EQ(document.GetFunctionCount(), 5000);
    EXPECT_EQ(document.Functions().CodeAt(4999).size(), body.size() + 2);
}

TEST_F(MemoryUseTest, AnEndlessNameThatIsRepeatedWithoutEndTakesItOnce) {
    const std::string name(MiB, 'n');
    std::string ends;
    for (int i = 0; i < 100000; ++i) {
        ends += "[EventCode]\r\n";
    }
    const std::string bytes = PsfHead() +
                              Lines({"NumFuncs= 2147483647", "FuncNames=" + name, "[FuncCode]", "[" + name + "]",
                                     "ProtoType=", "FuncBody="}) +
                              ends;
    EXPECT_LT(PeakOfLoad(*this, bytes, Status::LoadFailed), 16 * MiB);
    EXPECT_EQ(document.GetFunctionCount(), 1);
}

TEST_F(MemoryUseTest, AMillionNamesLinesTakeTheMemoryOfOne) {
    std::string lines;
    for (int i = 0; i < 1000000; ++i) {
        lines += "FuncNames=a\r\n";
    }
    EXPECT_LT(PeakOfLoad(*this, PsfHead() + "NumFuncs= 1\r\n" + lines, Status::LoadFailed), 1 * MiB);
}

TEST_F(MemoryUseTest, AMillionCommasInTheNamesLineAreNotTurnedIntoAMillionNames) {
    const std::string bytes =
        PsfHead() + "NumFuncs= 2147483647\r\nFuncNames=" + std::string(MiB, ',') + "\r\n[FuncCode]\r\n";
    EXPECT_LT(PeakOfLoad(*this, bytes, Status::LoadFailed), 8 * MiB);
}

TEST_F(MemoryUseTest, EventsThatShareATextAfterTheEndTagTakeItOnce) {
    std::string bytes = PsfHead() + Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]", "[OnError]"}) +
                        "FuncBody=" + std::string(4 * MiB, 'x') + "\r\n";
    for (int i = 0; i < EventCount; ++i) {
        bytes += "[EndPSF]\r\n";
    }
    EXPECT_LT(PeakOfLoad(*this, bytes, Status::Done), bytes.size() * 5 / 2 + 4 * MiB);
    EXPECT_EQ(document.EventCodeAt(8), document.EventCodeAt(0));
}

// Every allocation of an operation fails once. It must answer with one of its statuses, and what it used must be free
// again when the document is gone.
template <class Operation>
void FailEveryAllocation(Operation operation) {
    for (std::size_t number = 1;; ++number) {
        const std::size_t before = Allocations().live;
        {
            MemoryDocument memory;
            memory.files.contents["in.PSF"] =
                Psf(" 2", "One,Two", PsfFunction("One", std::string(100, 'x')) + PsfFunction("Two", "\xE4"));
            memory.document.AddFunction("Main", "p", "void Main()\n{}");
            Allocations().leftUntilFailure = number;
            operation(memory);
            const bool failed = Allocations().leftUntilFailure == 0;
            Allocations().leftUntilFailure = 0;
            EXPECT_EQ(memory.files.OpenCount(), 0U);
            if (!failed) {
                EXPECT_GT(number, 1U) << "nothing was allocated";
                return;
            }
        }
        ASSERT_EQ(Allocations().live, before) << "a leak when allocation " << number << " fails";
    }
}

TEST_F(MemoryUseTest, EveryFailingAllocationEndsALoadWithAStatus) {
    FailEveryAllocation([](MemoryDocument& memory) {
        const Status status = memory.document.LoadFile("in.PSF");
        EXPECT_TRUE(status == Status::LoadFailed || status == Status::Done);
        if (status == Status::Done) {
            EXPECT_EQ(memory.document.GetFunctionCount(), 2) << "no function may be lost without a word";
        }
    });
}

TEST_F(MemoryUseTest, ALoadThatRanOutOfMemorySaysSoUntilTheNextOne) {
    files.contents["in.PSF"] = Psf(" 1", "One", PsfFunction("One", "x"));
    for (const char* const next : {"in.PSF", "there is none.PSF"}) {
        Allocations().leftUntilFailure = 1;
        EXPECT_EQ(document.LoadFile("in.PSF"), Status::LoadFailed);
        EXPECT_EQ(document.ReadError(), std::errc::not_enough_memory);
        EXPECT_EQ(document.LoadFile(next), files.FileExists(next) ? Status::Done : Status::LoadFailed);
        EXPECT_NE(document.ReadError(), std::errc::not_enough_memory) << next;
    }
}

TEST_F(MemoryUseTest, EveryFailingAllocationEndsASaveWithItsStatus) {
    FailEveryAllocation([](MemoryDocument& memory) {
        const Status status = memory.document.SaveFile("out.PSF");
        EXPECT_TRUE(status == Status::Done || status == Status::UnexpectedError);
    });
}

TEST_F(MemoryUseTest, EveryFailingAllocationEndsAGenerationWithItsStatus) {
    FailEveryAllocation([](MemoryDocument& memory) {
        const Status status = memory.document.BuildCCodeFile("out.c");
        EXPECT_TRUE(status == Status::Done || status == Status::GenerationFailed);
    });
}

TEST_F(MemoryUseTest, EveryFailingAllocationOfATableOperationGivesItsFixedStatusAndChangesNothing) {
    FailEveryAllocation([](MemoryDocument& memory) {
        const Status status = memory.document.AddFunction("AnotherFunctionWithALongName", "p", "c");
        EXPECT_EQ(memory.document.GetFunctionCount(), status == Status::Done ? 2 : 1);
        EXPECT_TRUE(status == Status::Done || status == Status::UnexpectedError);
    });
    FailEveryAllocation([](MemoryDocument& memory) {
        // Here and there the table has to grow.
        const std::size_t number = std::exchange(Allocations().leftUntilFailure, 0);
        for (int i = 1; i < 30; ++i) {
            memory.document.AddFunction("F" + std::to_string(i) + "x", "", "");
        }
        Allocations().leftUntilFailure = number;
        std::string refused;
        for (int i = 30; i < 60; ++i) {
            const std::string name = "F" + std::to_string(i) + "x";
            refused = memory.document.AddFunction(name, "", "") == Status::Done ? refused : name;
        }
        const std::size_t left = std::exchange(Allocations().leftUntilFailure, 0);
        if (!refused.empty()) {
            EXPECT_EQ(memory.document.AddFunction(refused, "", ""), Status::Done) << "its name is free";
        }
        EXPECT_EQ(memory.document.GetFunctionCount(), 60);
        for (std::int32_t i = 0; i < 60; ++i) {
            std::string prototype;
            std::string code;
            EXPECT_EQ(memory.document.UpdateFunction(memory.Name(i), "", "new"), Status::Done);
            EXPECT_EQ(memory.Code(i), "new");
        }
        Allocations().leftUntilFailure = left;
    });
    FailEveryAllocation([](MemoryDocument& memory) {
        const Status status = memory.document.UpdateFunction("Main", "a prototype that is longer than before", "code");
        EXPECT_TRUE(status == Status::Done || (status == Status::NotFound && memory.Prototype(0) == "p"));
    });
}

} // namespace
} // namespace tessaly
