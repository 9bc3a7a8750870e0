// SaveFile's output to the byte, and the document after loading it again.
#include "tests/unit/document/MemoryDocument.h"
#include "tests/unit/document/PsfBuilder.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

class PsfWriterTest : public ::testing::Test, public MemoryDocument {};

TEST_F(PsfWriterTest, TheExampleDocumentIsWrittenLineByLine) {
    document.AddFunction("Blink", "void Blink(int n)\r\n", "{\r\ntoggle(n);\r\n}");
    const std::string expected = "[BeginPSF]\r\n"
                                 "Comment= Do not modify this file! Doing so will produce unpredictable results!!!\r\n"
                                 "FileName=\r\n"
                                 "[GVars]\r\n"
                                 "/* ... include ... */\n\n/* ... variables ...*/\n\r\n"
                                 "[GFuncs]\r\n"
                                 "NumFuncs= 1\r\n"
                                 "FuncNames=Blink\r\n"
                                 "[FuncCode]\r\n"
                                 "[Blink]\r\n"
                                 "ProtoType=void Blink(int n)\r\n"
                                 "\r\n"
                                 "FuncBody={\r\n"
                                 "toggle(n);\r\n"
                                 "}\r\n"
                                 "[EventCode]\r\n"
                                 "[OnError]\r\n"
                                 "FuncBody=void OnError(uchar channel, uchar error_type)\n{\n\n}\r\n"
                                 "[OnFrame]\r\n"
                                 "FuncBody=void OnFrame(DataFrame *frame, uchar channel)\n{\n\n}\r\n"
                                 "[OnKey]\r\n"
                                 "FuncBody=void OnKey(char character)\n{\n\n}\r\n"
                                 "[OnStart]\r\n"
                                 "FuncBody=void OnStart(long time)\n{\n\n}\r\n"
                                 "[OnStop]\r\n"
                                 "FuncBody=void OnStop(long time)\n{\n\n}\r\n"
                                 "[OnTimer]\r\n"
                                 "FuncBody=void OnTimer(uint timerid)\n{\n\n}\r\n"
                                 "[OnTrigger]\r\n"
                                 "FuncBody=void OnTrigger(long time)\n{\n\n}\r\n"
                                 "[OnSerial]\r\n"
                                 "FuncBody=void OnSerial(const void * data, unsigned short datacount)\n{\n\n}\r\n"
                                 "[OnMsg]\r\n"
                                 "FuncBody=void OnMsg(char * string){}\r\n"
                                 "[EndPSF]\r\n";
    EXPECT_EQ(document.SaveFile("Blink.PSF"), Status::Done);
    EXPECT_EQ(files.contents["Blink.PSF"], expected);
}

TEST_F(PsfWriterTest, WithoutFunctionsTheCountIsBlankZeroAndTheNamesLineIsTheKeyAlone) {
    EXPECT_NE(Saved().find("\r\nNumFuncs= 0\r\nFuncNames=\r\n[FuncCode]\r\n[EventCode]\r\n"), std::string::npos);
}

TEST_F(PsfWriterTest, NamesAreJoinedByCommasWithoutBlanksOrATrailingComma) {
    document.AddFunction("One", "", "");
    document.AddFunction("Two", "", "");
    document.AddFunction("Three", "", "");
    EXPECT_NE(Saved().find("\r\nNumFuncs= 3\r\nFuncNames=One,Two,Three\r\n"), std::string::npos);
}

TEST_F(PsfWriterTest, SavingReplacesAnExistingFile) {
    const std::string once = Saved();
    files.contents["out.PSF"] = std::string(100000, 'x');
    EXPECT_EQ(Saved(), once);
}

TEST_F(PsfWriterTest, ALongTextIsWrittenAndReadWholeWhereverItsCharactersLie) {
    for (const std::string character : {"å", "€", "\u009D"}) {
        for (std::size_t shift = 0; shift < 4; ++shift) {
            std::string text(shift, 'x');
            while (text.size() < 300000) {
                text += character;
            }
            document.UpdateVarCode(text);
            EXPECT_EQ(Load(Saved()), Status::Done);
            EXPECT_EQ(VarCode(), text + "\r\n") << character << " behind " << shift;
        }
    }
}

TEST_F(PsfWriterTest, CharactersWithoutAPlaceInTheCodePageAreWrittenAsQuestionMarks) {
    document.UpdateVarCode("\xC3\xA4 \xE2\x82\xAC \xCE\xA9 \xF0\x9F\x98\x80");
    EXPECT_NE(Saved().find("[GVars]\r\n\xE4 \x80 ? ?\r\n"), std::string::npos);
}

TEST_F(PsfWriterTest, InALongTextEachOfThemIsOneQuestionMarkWhereverItLies) {
    for (std::size_t shift = 0; shift < 4; ++shift) {
        constexpr std::size_t count = 75000;
        std::string text(shift, 'x');
        for (std::size_t i = 0; i < count; ++i) {
            text += "\xF0\x9F\x98\x80";
        }
        document.UpdateVarCode(text);
        const std::string expected = "[GVars]\r\n" + std::string(shift, 'x') + std::string(count, '?') + "\r\n";
        EXPECT_TRUE(Saved().find(expected) != std::string::npos) << "behind " << shift;
    }
}

// Round trips

TEST_F(PsfWriterTest, AFreshDocumentComesBackWithEachTextGainingAFinalCrLf) {
    ASSERT_EQ(Load(Saved()), Status::Done);
    EXPECT_EQ(document.GetFunctionCount(), 0);
    EXPECT_EQ(VarCode(), std::string(DefaultReferences) + "\r\n");
    for (std::int32_t i = 0; i < EventCount; ++i) {
        EXPECT_EQ(EventCode(i), std::string(EventTable[static_cast<std::size_t>(i)].defaultText) + "\r\n");
    }
}

TEST_F(PsfWriterTest, EachFurtherRoundTripMakesEveryValueOneEmptyLineLonger) {
    document.AddFunction("Main", "proto", "code");
    std::string growth;
    for (int trip = 0; trip < 3; ++trip) {
        growth += "\r\n";
        ASSERT_EQ(Load(Saved()), Status::Done);
        EXPECT_EQ(VarCode(), DefaultReferences + growth);
        EXPECT_EQ(Prototype(0), "proto" + growth);
        EXPECT_EQ(Code(0), "code" + growth);
        EXPECT_EQ(EventCode(3), "void OnStart(long time)\n{\n\n}" + growth);
    }
}

TEST_F(PsfWriterTest, AValueWithoutAFinalCrLfComesBackWithExactlyOne) {
    document.UpdateVarCode("int a;\r\nint b;");
    ASSERT_EQ(Load(Saved()), Status::Done);
    EXPECT_EQ(VarCode(), "int a;\r\nint b;\r\n");
}

TEST_F(PsfWriterTest, LoneLineFeedsNeverSplitALineAndComeBackUnchanged) {
    document.AddFunction("Main", "", "a\n[EndPSF]\nb");
    ASSERT_EQ(Load(Saved()), Status::Done);
    EXPECT_EQ(Code(0), "a\n[EndPSF]\nb\r\n");
}

TEST_F(PsfWriterTest, ALoneCarriageReturnInAValueComesBackAsCrLf) {
    document.UpdateVarCode("a\rb");
    ASSERT_EQ(Load(Saved()), Status::Done);
    EXPECT_EQ(VarCode(), "a\r\nb\r\n");
}

TEST_F(PsfWriterTest, ANameWithACommaDoesNotSurvive) {
    document.AddFunction("a,b", "", "code");
    EXPECT_EQ(Load(Saved()), Status::LoadFailed);
    EXPECT_EQ(document.GetFunctionCount(), 0);
}

TEST_F(PsfWriterTest, EveryByteSurvivesLoadAndSave) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\r') {
            all += static_cast<char>(byte);
        }
    }
    const std::string bytes =
        PsfHead(all) + Lines({"NumFuncs= 0", "FuncNames=", "[FuncCode]", "[EventCode]"}) + PsfEvents();
    ASSERT_EQ(Load(bytes), Status::Done);
    EXPECT_NE(Saved().find("[GVars]\r\n" + all + "\r\n\r\n[GFuncs]"), std::string::npos);
}

} // namespace
} // namespace tessaly
