// The generated C file, byte for byte.
#include "document/CCodeGenerator.h"
#include "document/VornSrcObj.h"
#include "tests/unit/document/MemoryDocument.h"

#include <gtest/gtest.h>
#include <new>

namespace tessaly {
namespace {

const std::string Head = "\r\n"
                         "#include <stdlib.h>\r\n"
                         "#include \"vexlib.h\"\r\n"
                         "#include \"tornem.h\"\r\n"
                         "#include <stdio.h>\r\n"
                         "void OnShutdown(){} /* this function is inserted here for compilation purposes it is not "
                         "used by this version of the client */\n\r\n"
                         "/* Global Variables */\r\n"
                         "\n\r\n";

const std::string Events = "\n\r\n"
                           "/* Event Code */\r\n"
                           "void OnError(uchar channel, uchar error_type)\n{\n\n}\r\n"
                           "void OnFrame(DataFrame *frame, uchar channel)\n{\n\n}\r\n"
                           "void OnKey(char character)\n{\n\n}\r\n"
                           "void OnStart(long time)\n{\n\n}\r\n"
                           "void OnStop(long time)\n{\n\n}\r\n"
                           "void OnTimer(uint timerid)\n{\n\n}\r\n"
                           "void OnTrigger(long time)\n{\n\n}\r\n"
                           "void OnSerial(const void * data, unsigned short datacount)\n{\n\n}\r\n"
                           "void OnMsg(char * string){}\r\n";

const std::string Main = "int main(int argc, char *argv[]) \r\n"
                         "{\r\n"
                         "initialize(argc,argv);\r\n"
                         "EventLoop();\r\n"
                         "return 0;\r\n"
                         "}\r\n";

// What stands in the file for references and functions.
std::string File(const std::string& references, const std::string& prototypes, const std::string& functions) {
    return Head + references + "\r\n\n\r\n/* Global Function Prototypes */\r\n" + prototypes +
           "/* Global Functions */\r\n" + functions + Events + Main;
}

class CCodeTest : public ::testing::Test, public MemoryDocument {
protected:
    CCodeTest() { document.UpdateVarCode("int gCount = 0;"); }
};

TEST_F(CCodeTest, TheWorkedExampleIsGeneratedToTheByte) {
    document.AddFunction("Bump", "", "void Bump(int n)\r\n{\r\ngCount += n; }");
    EXPECT_EQ(document.BuildCCodeFile("bump.c"), Status::Done);
    EXPECT_EQ(files.contents["bump.c"],
              File("int gCount = 0;", "void Bump(int n)\r;\r\n", "void Bump(int n)\r\n{\r\ngCount += n; }\r\n"));
}

TEST_F(CCodeTest, AnEmptyDocumentStillYieldsTheWholeFrame) {
    document.UpdateVarCode("");
    EXPECT_EQ(Generated(), File("", "", ""));
}

TEST_F(CCodeTest, AFunctionWithoutABraceIsItsOwnPrototypeEvenOverSeveralLines) {
    document.AddFunction("NoBrace", "", "int a;\r\nint b;");
    EXPECT_EQ(Generated(), File("int gCount = 0;", "int a;\r\nint b;;\r\n", "int a;\r\nint b;\r\n"));
}

TEST_F(CCodeTest, ANewFunctionWithLineFeedsLosesItsLineFeedInThePrototype) {
    document.AddFunction("New", "", "void New(void)\n{\n\n}");
    EXPECT_EQ(Generated(), File("int gCount = 0;", "void New(void);\r\n", "void New(void)\n{\n\n}\r\n"));
}

TEST_F(CCodeTest, AFunctionWhoseCodeStartsWithABraceFailsTheGenerationAndKeepsWhatWasWritten) {
    document.AddFunction("Good", "", "void Good()\n{}");
    document.AddFunction("Bad", "", "{}");
    EXPECT_EQ(document.BuildCCodeFile("bad.c"), Status::GenerationFailed);
    EXPECT_EQ(static_cast<std::int32_t>(document.BuildCCodeFile("bad.c")), 6);
    EXPECT_EQ(files.contents["bad.c"],
              Head + "int gCount = 0;\r\n\n\r\n/* Global Function Prototypes */\r\nvoid Good();\r\n");
    EXPECT_EQ(files.OpenCount(), 0U);
}

TEST_F(CCodeTest, ABraceAsTheSecondCharacterYieldsASemicolonAlone) {
    document.AddFunction("Short", "", "x{}");
    EXPECT_EQ(Generated(), File("int gCount = 0;", ";\r\n", "x{}\r\n"));
}

TEST_F(CCodeTest, TheCharacterBeforeTheBraceIsDroppedWhateverItIs) {
    document.AddFunction("Inline", "", "void Inline() {}");
    document.AddFunction("Tight", "", "void Tight(){}");
    document.AddFunction("Umlaut", "", "int \xC3\xA4{}");
    EXPECT_EQ(Generated(), File("int gCount = 0;", "void Inline();\r\nvoid Tight(;\r\nint ;\r\n",
                                "void Inline() {}\r\nvoid Tight(){}\r\nint \xE4{}\r\n"));
}

TEST_F(CCodeTest, ACharacterBeforeTheBraceIsDroppedWhole) {
    for (const std::string character : {"ä", "å", "€", "＿", "😀", "\U0010FFFF"}) {
        for (const std::string front : {"", "int x"}) {
            std::string_view prototype;
            const std::string code = front + character + "{}";
            EXPECT_TRUE(CutPrototype(code, prototype));
            EXPECT_EQ(prototype, front) << code;
        }
    }
}

TEST_F(CCodeTest, TheStoredPrototypeNeverReachesTheFile) {
    document.AddFunction("Main", "int stored(void);\r\n", "void Main(void)\r\n{}");
    EXPECT_EQ(Generated().find("stored"), std::string::npos);
}

TEST_F(CCodeTest, AnEmptyCodeTextYieldsAPrototypeOfASemicolon) {
    document.AddFunction("Empty", "", "");
    EXPECT_EQ(Generated(), File("int gCount = 0;", ";\r\n", "\r\n"));
}

TEST_F(CCodeTest, FunctionsAndPrototypesStandInTheDocumentsOrder) {
    document.AddFunction("Zulu", "", "void Zulu()\n{}");
    document.AddFunction("Alpha", "", "void Alpha()\n{}");
    EXPECT_EQ(Generated(),
              File("int gCount = 0;", "void Zulu();\r\nvoid Alpha();\r\n", "void Zulu()\n{}\r\nvoid Alpha()\n{}\r\n"));
}

TEST_F(CCodeTest, ReferencesWithTrailingLineBreaksAreWrittenAsTheyStandAndOneMore) {
    document.UpdateVarCode("int a;\r\n\r\n");
    EXPECT_EQ(Generated(), File("int a;\r\n\r\n", "", ""));
}

TEST_F(CCodeTest, GeneratingTwiceReplacesTheFileWithTheSameBytes) {
    const std::string once = Generated();
    files.contents["out.c"] = std::string(100000, 'x');
    EXPECT_EQ(Generated(), once);
}

TEST_F(CCodeTest, OnMsgIsWrittenLikeAnyOtherEventFromItsStoredText) {
    document.UpdateEventCodeByIndex(8, "void OnMsg(char * string){ puts(string); }");
    EXPECT_NE(Generated().find("\r\nvoid OnMsg(char * string){ puts(string); }\r\nint main("), std::string::npos);
}

TEST_F(CCodeTest, AFileThatCannotBeCreatedIsStatusSix) {
    files.FailAt(memory::SequentialFiles::Call::Open, 1);
    EXPECT_EQ(document.BuildCCodeFile("bump.c"), Status::GenerationFailed);
    EXPECT_EQ(files.contents.count("bump.c"), 0U);
}

// A sink that keeps the origin of every piece.
class Pieces final : public CCodeSink {
public:
    void Write(std::string_view text, CCodeOrigin origin) override {
        all += text;
        if (origin.kind != CCodeOrigin::Kind::Frame) {
            members.emplace_back(origin.kind, origin.index, std::string(text));
        }
    }
    std::string all;
    std::vector<std::tuple<CCodeOrigin::Kind, std::int32_t, std::string>> members;
};

TEST_F(CCodeTest, TheGeneratorTellsWhereEveryPieceComesFrom) {
    document.AddFunction("One", "", "void One()\n{}");
    Pieces pieces;
    ASSERT_EQ(document.BuildCCode(pieces), Status::Done);
    EXPECT_EQ(pieces.all, Generated());
    using Kind = CCodeOrigin::Kind;
    ASSERT_EQ(pieces.members.size(), 12U);
    EXPECT_EQ(pieces.members[0], std::make_tuple(Kind::References, 0, std::string("int gCount = 0;")));
    EXPECT_EQ(pieces.members[1], std::make_tuple(Kind::Function, 0, std::string("void One()")));
    EXPECT_EQ(pieces.members[2], std::make_tuple(Kind::Function, 0, std::string("void One()\n{}")));
    for (std::int32_t i = 0; i < EventCount; ++i) {
        EXPECT_EQ(pieces.members[static_cast<std::size_t>(3 + i)], std::make_tuple(Kind::Event, i, EventCode(i)));
    }
}

// Takes `room` pieces and fails for want of memory from then on.
class ShortOfMemory final : public CCodeSink {
public:
    explicit ShortOfMemory(int room) : mRoom(room) {}
    void Write(std::string_view /*text*/, CCodeOrigin /*origin*/) override {
        ++calls;
        if (calls > mRoom) {
            throw std::bad_alloc();
        }
    }
    int calls = 0;

private:
    int mRoom;
};

TEST_F(CCodeTest, AnObserverSeesWhatIsWrittenAndItsFailureChangesNothing) {
    const std::string whole = Generated();
    Pieces pieces;
    ASSERT_EQ(document.BuildCCodeFile("observed.c", &pieces), Status::Done);
    EXPECT_EQ(pieces.all, whole);
    for (int room = 0; room < 5; ++room) {
        ShortOfMemory observer(room);
        EXPECT_EQ(document.BuildCCodeFile("observed.c", &observer), Status::Done);
        EXPECT_EQ(files.contents["observed.c"], whole);
        EXPECT_EQ(observer.calls, room + 1);
    }
}

} // namespace
} // namespace tessaly
