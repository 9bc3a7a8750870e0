// The document in memory: its defaults and its accessors.
#include "document/VornSrcObj.h"

#include "tests/unit/document/MemoryDocument.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace tessaly {
namespace {

class VornSrcObjTest : public ::testing::Test, public MemoryDocument {};

TEST_F(VornSrcObjTest, ANewDocumentHasTheDefaultReferences) {
    std::string code;
    EXPECT_EQ(document.GetVarCode(code), Status::Done);
    EXPECT_EQ(code, "/* ... include ... */\n\n/* ... variables ...*/\n");
}

TEST_F(VornSrcObjTest, ANewDocumentHasNoFunctions) {
    EXPECT_EQ(document.GetFunctionCount(), 0);
}

TEST_F(VornSrcObjTest, TheDefaultHandlersAreFourLinesSeparatedByLineFeeds) {
    const char* const prototypes[] = {
        "void OnError(uchar channel, uchar error_type)",
        "void OnFrame(DataFrame *frame, uchar channel)",
        "void OnKey(char character)",
        "void OnStart(long time)",
        "void OnStop(long time)",
        "void OnTimer(uint timerid)",
        "void OnTrigger(long time)",
        "void OnSerial(const void * data, unsigned short datacount)",
    };
    for (std::int32_t i = 0; i < 8; ++i) {
        std::string code;
        EXPECT_EQ(document.GetEventCodeByIndex(i, code), Status::Done);
        EXPECT_EQ(code, std::string(prototypes[i]) + "\n{\n\n}");
    }
}

TEST_F(VornSrcObjTest, TheDefaultOnMsgIsOneLineWithoutALineBreak) {
    EXPECT_EQ(EventCode(8), "void OnMsg(char * string){}");
}

TEST_F(VornSrcObjTest, TheEventTableHasNineEventsInOrderWithTheirTags) {
    const char* const names[] = {"OnError", "OnFrame",   "OnKey",    "OnStart", "OnStop",
                                 "OnTimer", "OnTrigger", "OnSerial", "OnMsg"};
    ASSERT_EQ(EventTable.size(), std::size(names));
    for (std::size_t i = 0; i < EventTable.size(); ++i) {
        EXPECT_EQ(EventTable[i].name, names[i]);
        EXPECT_EQ(EventTable[i].tag, "[" + std::string(names[i]) + "]");
    }
}

TEST_F(VornSrcObjTest, InitBringsEveryDefaultBack) {
    document.UpdateVarCode("int x;");
    document.UpdateEventCodeByIndex(8, "changed");
    document.AddFunction("Main", "", "");
    EXPECT_EQ(document.Init(), Status::Done);
    EXPECT_EQ(VarCode(), "/* ... include ... */\n\n/* ... variables ...*/\n");
    EXPECT_EQ(EventCode(8), "void OnMsg(char * string){}");
    EXPECT_EQ(document.GetFunctionCount(), 0);
}

TEST_F(VornSrcObjTest, InitLeavesLoadedOKAsItWas) {
    const std::string bytes = Saved();
    ASSERT_EQ(Load(bytes), Status::Done);
    document.Init();
    EXPECT_TRUE(document.LoadedOK());
}

TEST_F(VornSrcObjTest, EveryEventPrototypeIsTheEmptyString) {
    for (std::int32_t i = 0; i < EventCount; ++i) {
        std::string prototype = "old";
        EXPECT_EQ(document.GetEventProtoTypeByIndex(i, prototype), Status::Done);
        EXPECT_EQ(prototype, "");
    }
}

TEST_F(VornSrcObjTest, AnEventIndexOutsideTheTableIsARuntimeError) {
    std::string text;
    for (const std::int32_t index : {-1, 9}) {
        EXPECT_THROW(document.GetEventCodeByIndex(index, text), std::out_of_range);
        EXPECT_THROW(document.UpdateEventCodeByIndex(index, "x"), std::out_of_range);
        EXPECT_THROW(document.GetEventProtoTypeByIndex(index, text), std::out_of_range);
    }
}

TEST_F(VornSrcObjTest, UpdatedTextsAreHeldAsTheyAre) {
    const std::string text = "a\rb\nc\r\n\td\xC3\xA4\xE2\x82\xAC" + std::string(1, '\0');
    EXPECT_EQ(document.UpdateVarCode(text), Status::Done);
    EXPECT_EQ(VarCode(), text);
    EXPECT_EQ(document.UpdateEventCodeByIndex(0, text), Status::Done);
    EXPECT_EQ(EventCode(0), text);
}

TEST_F(VornSrcObjTest, APrototypeGivenAsANumberIsStoredAsItsText) {
    EXPECT_EQ(document.AddFunction("Whole", 42, "code"), Status::Done);
    EXPECT_EQ(document.AddFunction("Negative", -7, 2.5), Status::Done);
    EXPECT_EQ(Prototype(0), "42");
    EXPECT_EQ(Prototype(1), "-7");
    EXPECT_EQ(Code(1), "2.5");
}

TEST_F(VornSrcObjTest, ANumberHasFifteenDigitsAsItsText) {
    EXPECT_EQ(document.AddFunction("Third", 1.0 / 3, 2e15 / 3), Status::Done);
    EXPECT_EQ(Prototype(0), "0.333333333333333");
    EXPECT_EQ(Code(0), "666666666666667");
}

TEST_F(VornSrcObjTest, GetFuncNameIsThreeBeyondTheLastFunctionAndZeroWithoutFunctions) {
    std::string name = "old";
    EXPECT_EQ(document.GetFuncName(5, name), Status::Done);
    EXPECT_EQ(name, "");
    document.AddFunction("Main", "", "");
    EXPECT_EQ(document.GetFuncName(0, name), Status::Done);
    EXPECT_EQ(name, "Main");
    EXPECT_EQ(document.GetFuncName(1, name), Status::IndexOutOfRange);
    EXPECT_EQ(static_cast<std::int32_t>(document.GetFuncName(1, name)), 3);
    EXPECT_EQ(name, "");
}

TEST_F(VornSrcObjTest, TheFunctionOperationsPassTheirStatusOn) {
    std::string prototype;
    std::string code;
    EXPECT_EQ(document.DeleteFunction("Main"), Status::UnexpectedError);
    EXPECT_EQ(document.UpdateFunction("Main", "", ""), Status::NotFound);
    EXPECT_EQ(document.AddFunction("Main", "p", "c"), Status::Done);
    EXPECT_EQ(document.AddFunction("main", "p", "c"), Status::NameCollision);
    EXPECT_EQ(document.UpdateFunction("Main", "p2", "c2"), Status::Done);
    EXPECT_EQ(document.GetFunction("Main", prototype, code), Status::Done);
    EXPECT_EQ(prototype + code, "p2c2");
    EXPECT_EQ(document.GetFunctionByIndex(1, prototype, code), Status::NotFound);
    EXPECT_EQ(document.DeleteFunction("main"), Status::NotFound);
    EXPECT_EQ(document.DeleteFunction("Main"), Status::Done);
}

} // namespace
} // namespace tessaly
