// What LoadFile makes of PSF files good, odd and broken.
#include "document/VornSrcObj.h"
#include "tests/unit/document/MemoryDocument.h"
#include "tests/unit/document/PsfBuilder.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

class PsfFileTest : public ::testing::Test, public MemoryDocument {
protected:
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (std::int32_t i = 0; i < document.GetFunctionCount(); ++i) {
            names.push_back(Name(i));
        }
        return names;
    }

    // The events whose text is not the default any more.
    std::vector<int> StoredEvents() const {
        std::vector<int> stored;
        for (std::int32_t i = 0; i < EventCount; ++i) {
            if (document.EventCodeAt(i) != EventTable[static_cast<std::size_t>(i)].defaultText) {
                stored.push_back(i);
            }
        }
        return stored;
    }
};

using NameList = std::vector<std::string>;
using EventList = std::vector<int>;
const EventList AllEvents = {0, 1, 2, 3, 4, 5, 6, 7, 8};

// Header and references

TEST_F(PsfFileTest, AMissingFileIsAFailedLoadWithTheDefaultDocument) {
    document.AddFunction("Old", "", "");
    document.UpdateVarCode("old");
    EXPECT_EQ(document.LoadFile("missing.PSF"), Status::LoadFailed);
    EXPECT_FALSE(document.LoadedOK());
    EXPECT_EQ(document.GetFunctionCount(), 0);
    EXPECT_EQ(VarCode(), DefaultReferences);
    EXPECT_EQ(StoredEvents(), EventList());
}

TEST_F(PsfFileTest, AnEmptyFileIsAFailedLoadWithEmptyReferences) {
    EXPECT_EQ(Load(""), Status::LoadFailed);
    EXPECT_EQ(VarCode(), "");
    EXPECT_EQ(document.GetFunctionCount(), 0);
    EXPECT_EQ(StoredEvents(), EventList());
}

TEST_F(PsfFileTest, AFileWithoutGVarsIsAFailedLoadWithEmptyReferences) {
    EXPECT_EQ(Load("[BeginPSF]\r\nint x;\r\n[GFuncs]\r\nNumFuncs= 1\r\n[EndPSF]\r\n"), Status::LoadFailed);
    EXPECT_EQ(VarCode(), "");
    EXPECT_EQ(document.GetFunctionCount(), 0);
    EXPECT_EQ(StoredEvents(), EventList());
}

TEST_F(PsfFileTest, TheHeaderIsNotChecked) {
    const std::string rest = Psf(" 0", "", "").substr(PsfHead().size());
    EXPECT_EQ(Load("anything\r\n\r\nFileName=ignored\r\n[GVars]\r\nint x;\r\n[GFuncs]\r\n" + rest), Status::Done);
    EXPECT_EQ(VarCode(), "int x;\r\n");
    EXPECT_EQ(Load("[GVars]\r\n[GFuncs]\r\n" + rest), Status::Done);
    EXPECT_EQ(VarCode(), "");
}

TEST_F(PsfFileTest, AByteOrderMarkIsText) {
    EXPECT_EQ(Load("\xEF\xBB\xBF" + Psf(" 0", "", "")), Status::Done);
    EXPECT_EQ(Load("\xEF\xBB\xBF[GVars]\r\nlost\r\n[GFuncs]\r\n"), Status::LoadFailed);
    EXPECT_EQ(VarCode(), "");
}

TEST_F(PsfFileTest, TagLinesInOtherLetterCaseOrWithBlanksAreNotAccepted) {
    EXPECT_EQ(Load("[gvars]\r\n[GVars] \r\n [GVars]\r\n"), Status::LoadFailed);
    ASSERT_EQ(Load("[GVars]\r\n[gfuncs]\r\n[GFuncs] \r\n[GFuncs]\r\n[FuncCode]\r\n[EventCode]\r\n" + PsfEvents()),
              Status::Done);
    EXPECT_EQ(VarCode(), "[gfuncs]\r\n[GFuncs] \r\n");
}

TEST_F(PsfFileTest, CarriageReturnAloneEndsALine) {
    std::string bytes = Psf(" 1", "Main", PsfFunction("Main", "x\r\ny"));
    std::string crOnly;
    for (const char c : bytes) {
        crOnly += c == '\n' ? "" : std::string(1, c);
    }
    ASSERT_EQ(Load(crOnly), Status::Done);
    EXPECT_EQ(Code(0), "x\r\ny\r\n");
    EXPECT_EQ(StoredEvents(), AllEvents);
}

TEST_F(PsfFileTest, LineFeedsAloneLeaveOneLineAndAFailedLoad) {
    std::string bytes = Psf(" 0", "", "");
    std::erase(bytes, '\r');
    EXPECT_EQ(Load(bytes), Status::LoadFailed);
}

TEST_F(PsfFileTest, ALastLineWithoutALineEndIsALine) {
    std::string bytes = Psf(" 0", "", "");
    bytes.resize(bytes.size() - 2);
    EXPECT_EQ(Load(bytes), Status::Done);
    EXPECT_EQ(Load(bytes + "\r"), Status::Done) << "a CR as the last byte ends its line";
}

TEST_F(PsfFileTest, NulAndControlZAreCharactersLikeAnyOther) {
    const std::string text = std::string("a\0b\x1A c", 6);
    ASSERT_EQ(Load(PsfHead(text) + Psf(" 0", "", "").substr(PsfHead().size())), Status::Done);
    EXPECT_EQ(VarCode(), text + "\r\n");
}

// The function list

TEST_F(PsfFileTest, KeyLinesInOtherLetterCaseAreAccepted) {
    ASSERT_EQ(Load(PsfHead() +
                   Lines({"numfuncs=1", "FUNCNAMES=Main", "[FuncCode]", "[Main]", "prototype=p", "funcBODY=c",
                          "[EventCode]"}) +
                   PsfEvents()),
              Status::Done);
    EXPECT_EQ(Names(), NameList({"Main"}));
    EXPECT_EQ(Prototype(0), "p\r\n");
    EXPECT_EQ(Code(0), "c\r\n");
}

TEST_F(PsfFileTest, AKeyInsideALineCountsButItsValueStartsAtTheFixedPosition) {
    ASSERT_EQ(Load(PsfHead() +
                   Lines({"NumFuncs=1", "x FuncNames=Main", "[FuncCode]", "[=Main]", "a ProtoType=p", "ab FuncBody=c",
                          "[EventCode]"}) +
                   PsfEvents()),
              Status::LoadFailed)
        << "the name is \"s=Main\"";
    ASSERT_EQ(Load(PsfHead() +
                   Lines({"NumFuncs=1", "x FuncNames=Main", "[FuncCode]", "[s=Main]", "a ProtoType=p", "ab FuncBody=c",
                          "[EventCode]"}) +
                   PsfEvents()),
              Status::Done);
    EXPECT_EQ(Names(), NameList({"s=Main"}));
    EXPECT_EQ(Prototype(0), "e=p\r\n");
    EXPECT_EQ(Code(0), "dy=c\r\n");
}

TEST_F(PsfFileTest, ThePositionOfAValueCountsCharactersNotBytes) {
    ASSERT_EQ(Load(PsfHead() +
                   Lines({"NumFuncs=1", "FuncNames=M", "[FuncCode]", "[M]", "ProtoType=", "\xE4\xF6 FuncBody=c",
                          "[EventCode]"}) +
                   PsfEvents()),
              Status::Done);
    EXPECT_EQ(Code(0), "dy=c\r\n");
}

TEST_F(PsfFileTest, ACountThatIsNotANumberIsAFailedLoadThatKeepsTheReferences) {
    for (const char* count : {"", " ", "x", "0x10", "&H10", "1,000", "1 2", "2147483648", "1e10", "--1", "1.2.3"}) {
        EXPECT_EQ(Load(Psf(count, "Main", PsfFunction("Main", "x"))), Status::LoadFailed) << count;
        EXPECT_EQ(VarCode(), "int x;\r\n") << count;
        EXPECT_EQ(document.GetFunctionCount(), 0) << count;
        EXPECT_EQ(StoredEvents(), EventList()) << count;
        EXPECT_FALSE(document.LoadedOK());
        EXPECT_EQ(files.OpenCount(), 0U) << "the file was left open";
    }
}

TEST_F(PsfFileTest, ACountTakesBlanksSignFractionAndExponent) {
    for (const char* count : {" 2", "2", "\t 2 \t", "+2", "2.5", "1.5", "0.2e1", "20E-1", "2."}) {
        EXPECT_EQ(Load(Psf(count, "One,Two", PsfFunction("One", "x") + PsfFunction("Two", "y"))), Status::Done)
            << count;
        EXPECT_EQ(Names(), NameList({"One", "Two"})) << count;
    }
}

TEST_F(PsfFileTest, ACountOfZeroSkipsFunctionSectionsStraightToTheEvents) {
    ASSERT_EQ(Load(Psf(" 0", "Main", PsfFunction("Main", "x"))), Status::Done);
    EXPECT_EQ(document.GetFunctionCount(), 0);
    EXPECT_EQ(StoredEvents(), AllEvents);
}

TEST_F(PsfFileTest, ACountBelowOneMeansNoNamesAndNoFunctions) {
    ASSERT_EQ(Load(Psf("-3", "Main", PsfFunction("Main", "x"))), Status::Done);
    EXPECT_EQ(document.GetFunctionCount(), 0);
}

TEST_F(PsfFileTest, FewerNamesThanAnnouncedRepeatTheLastListedName) {
    // Three are announced and two listed: the third is the second again, whose header ends the second's body.
    const std::string bytes =
        Psf(" 3", "One,Two", PsfFunction("One", "x") + PsfFunction("Two", "y") + PsfFunction("Two", "z"));
    ASSERT_EQ(Load(bytes), Status::Done);
    EXPECT_EQ(Names(), NameList({"One", "Two"})) << "the second Two collides with the first";
    EXPECT_EQ(Code(1), "y\r\n");
}

TEST_F(PsfFileTest, NamesBeforeTheCountAreNotTaken) {
    EXPECT_EQ(Load(PsfHead() + Lines({"FuncNames=Main", "NumFuncs= 1", "[FuncCode]"}) + PsfFunction("Main", "x") +
                   "[EventCode]\r\n" + PsfEvents()),
              Status::LoadFailed);
    EXPECT_EQ(document.GetFunctionCount(), 0) << "the one name expected is empty";
}

TEST_F(PsfFileTest, WithoutANamesLineTheExpectedNamesAreEmpty) {
    ASSERT_EQ(
        Load(PsfHead() + Lines({"NumFuncs= 1", "[FuncCode]"}) + PsfFunction("", "x") + "[EventCode]\r\n" + PsfEvents()),
        Status::Done);
    EXPECT_EQ(Names(), NameList({""}));
}

TEST_F(PsfFileTest, ALaterCountReplacesTheNamesListedBefore) {
    ASSERT_EQ(Load(PsfHead() + Lines({"NumFuncs= 1", "FuncNames=One", "NumFuncs= 1", "[FuncCode]"}) +
                   PsfFunction("", "x") + "[EventCode]\r\n" + PsfEvents()),
              Status::Done);
    EXPECT_EQ(Names(), NameList({""}));
}

TEST_F(PsfFileTest, NamesAreNotTrimmed) {
    ASSERT_EQ(Load(Psf(" 2", " One, Two ", PsfFunction(" One", "x") + PsfFunction(" Two ", "y"))), Status::Done);
    EXPECT_EQ(Names(), NameList({" One", " Two "}));
}

TEST_F(PsfFileTest, MoreNamesThanAnnouncedAreNotTaken) {
    ASSERT_EQ(Load(Psf(" 1", "One,Two", PsfFunction("One", "x"))), Status::Done);
    EXPECT_EQ(Names(), NameList({"One"}));
}

// Function sections

TEST_F(PsfFileTest, FunctionsAreReadWithPrototypesAndBodiesOfSeveralLines) {
    ASSERT_EQ(Load(Psf(" 2", "One,Two",
                       Lines({"[One]", "ProtoType=void", "One(int a,", "int b)", "FuncBody={", "x;", "", "}"}) +
                           PsfFunction("Two", "y"))),
              Status::Done);
    EXPECT_EQ(Prototype(0), "void\r\nOne(int a,\r\nint b)\r\n");
    EXPECT_EQ(Code(0), "{\r\nx;\r\n\r\n}\r\n");
    EXPECT_EQ(Prototype(1), "\r\n");
    EXPECT_EQ(Code(1), "y\r\n");
}

TEST_F(PsfFileTest, LinesBeforeTheFirstHeaderAndBeforeAPrototypeAreIgnored) {
    ASSERT_EQ(Load(Psf(" 1", "One", Lines({"junk", "[one]", "[One]", "junk", "[One]", "ProtoType=p", "FuncBody=c"}))),
              Status::Done);
    EXPECT_EQ(Prototype(0), "p\r\n");
    EXPECT_EQ(Code(0), "c\r\n");
}

TEST_F(PsfFileTest, ABodyLineThatIsTheNextHeaderEndsTheBodyEarly) {
    ASSERT_EQ(Load(Psf(" 2", "One,Two", PsfFunction("One", "x\r\n[Two]\r\nlost") + PsfFunction("Two", "y"))),
              Status::Done);
    EXPECT_EQ(Code(0), "x\r\n");
    EXPECT_EQ(Code(1), "y\r\n");
}

TEST_F(PsfFileTest, ABodyLineThatIsEventCodeEndsTheBodyEarly) {
    ASSERT_EQ(Load(Psf(" 1", "One", PsfFunction("One", "x\r\n[EventCode]\r\nlost"))), Status::Done);
    EXPECT_EQ(Code(0), "x\r\n");
    EXPECT_EQ(StoredEvents(), AllEvents);
}

TEST_F(PsfFileTest, ABodyLineThatIsEndPsfEndsTheFunctionWithoutAddingIt) {
    ASSERT_EQ(Load(Psf(" 2", "One,Two", PsfFunction("One", "x\r\n[EndPSF]\r\ny"))), Status::Done);
    // The second function goes on in the same body until "[EventCode]" and is added with all of it.
    EXPECT_EQ(Names(), NameList({"Two"}));
    EXPECT_EQ(Code(0), "x\r\ny\r\n");
}

TEST_F(PsfFileTest, TagsInABodyThatDifferInCaseOrCarryBlanksArePlainText) {
    const std::string body = "[two]\r\n[Two] \r\n [Two]\r\n[eventcode]\r\n[ENDPSF]\r\n[OnError]\r\n[One]";
    ASSERT_EQ(Load(Psf(" 2", "One,Two", PsfFunction("One", body) + PsfFunction("Two", "y"))), Status::Done);
    EXPECT_EQ(Code(0), body + "\r\n");
}

TEST_F(PsfFileTest, BehindTheLastFunctionItsOwnHeaderEndsTheBody) {
    ASSERT_EQ(Load(Psf(" 1", "One", PsfFunction("One", "x\r\n[One]\r\nlost"))), Status::Done);
    EXPECT_EQ(Names(), NameList({"One"}));
    EXPECT_EQ(Code(0), "x\r\n");
}

TEST_F(PsfFileTest, BehindTheLastFunctionTheHeaderOfAFurtherNameIsPlainText) {
    ASSERT_EQ(Load(Psf(" 1", "One,Two", PsfFunction("One", "x\r\n[Two]\r\ny"))), Status::Done);
    EXPECT_EQ(Code(0), "x\r\n[Two]\r\ny\r\n");
}

TEST_F(PsfFileTest, AFunctionWhoseNameCollidesIsSilentlyDropped) {
    ASSERT_EQ(Load(Psf(" 3", "OnTick,on,Other",
                       PsfFunction("OnTick", "x") + PsfFunction("on", "y") + PsfFunction("Other", "z"))),
              Status::Done);
    EXPECT_EQ(Names(), NameList({"OnTick", "Other"}));
}

TEST_F(PsfFileTest, MoreFunctionsAnnouncedThanSectionsSwallowTheEventsAndFailTheLoad) {
    EXPECT_EQ(Load(Psf(" 2", "One,Two", PsfFunction("One", "x"))), Status::LoadFailed);
    EXPECT_EQ(Names(), NameList({"One"}));
    EXPECT_EQ(StoredEvents(), EventList());
    EXPECT_FALSE(document.LoadedOK());
}

TEST_F(PsfFileTest, AFileThatEndsInABodyLosesThatFunctionAndKeepsThoseBefore) {
    EXPECT_EQ(Load(PsfHead() + Lines({"NumFuncs= 2", "FuncNames=One,Two", "[FuncCode]"}) + PsfFunction("One", "x") +
                   PsfFunction("Two", "y")),
              Status::LoadFailed);
    EXPECT_EQ(Names(), NameList({"One"}));
}

TEST_F(PsfFileTest, FunctionsThatShareABodyAfterEventCodeHoldItsGrowingFront) {
    const std::string bytes = PsfHead() + Lines({"NumFuncs= 3", "FuncNames=a,b,c", "[FuncCode]"}) +
                              PsfFunction("a", "1") + Lines({"[EventCode]", "2", "[EventCode]", "3", "[EventCode]"}) +
                              PsfEvents();
    ASSERT_EQ(Load(bytes), Status::Done);
    EXPECT_EQ(Code(0), "1\r\n");
    EXPECT_EQ(Code(1), "1\r\n2\r\n");
    EXPECT_EQ(Code(2), "1\r\n2\r\n3\r\n");
}

// Event sections

TEST_F(PsfFileTest, AnEndTagInsideAnEventTextEndsTheFileAndLeavesLaterEventsAtTheirDefaults) {
    const std::string bytes =
        PsfHead() + Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]", "[OnError]", "FuncBody=e", "[EndPSF]"});
    ASSERT_EQ(Load(bytes), Status::Done);
    EXPECT_TRUE(document.LoadedOK());
    EXPECT_EQ(EventCode(0), "e\r\n");
    EXPECT_EQ(StoredEvents(), EventList({0}));
}

TEST_F(PsfFileTest, TextBehindAnEarlyEndTagStillCountsForTheFollowingEvents) {
    const std::string bytes = PsfHead() + Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]", "[OnError]", "FuncBody=e",
                                                 "[EndPSF]", "more", "[OnKey]", "FuncBody=k", "[EndPSF]"});
    ASSERT_EQ(Load(bytes), Status::Done);
    EXPECT_EQ(EventCode(0), "e\r\n");
    EXPECT_EQ(EventCode(1), "e\r\nmore\r\n") << "the text is not cleared after the end tag";
    EXPECT_EQ(EventCode(2), "k\r\n");
    EXPECT_EQ(StoredEvents(), EventList({0, 1, 2}));
}

TEST_F(PsfFileTest, AFileThatEndsAfterTheThirdEventsTextKeepsTwoEvents) {
    const std::string bytes = PsfHead() + Lines({"NumFuncs= 1", "FuncNames=Main", "[FuncCode]"}) +
                              PsfFunction("Main", "x") + "[EventCode]\r\n" + PsfEvents(0, 2, false);
    EXPECT_EQ(Load(bytes), Status::LoadFailed);
    EXPECT_EQ(EventCode(0), "OnError text\r\n");
    EXPECT_EQ(EventCode(1), "OnFrame text\r\n");
    EXPECT_EQ(StoredEvents(), EventList({0, 1}));
    EXPECT_EQ(VarCode(), "int x;\r\n");
    EXPECT_EQ(Names(), NameList({"Main"}));
}

TEST_F(PsfFileTest, ATagOfALaterEventInsideATextIsPlainText) {
    const std::string bytes = PsfHead() +
                              Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]", "[OnError]", "FuncBody=e", "[OnKey]",
                                     "[onframe]", "[OnFrame]"}) +
                              PsfEvents(1);
    ASSERT_EQ(Load(bytes), Status::Done);
    EXPECT_EQ(EventCode(0), "e\r\n[OnKey]\r\n[onframe]\r\n");
    EXPECT_EQ(EventCode(1), "OnFrame text\r\n");
}

TEST_F(PsfFileTest, ALineInAnEventTextThatIsTheNextTagEndsTheText) {
    const std::string bytes =
        PsfHead() +
        Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]", "[OnError]", "FuncBody=e", "[OnFrame]", "lost"}) +
        PsfEvents(1);
    ASSERT_EQ(Load(bytes), Status::Done);
    EXPECT_EQ(EventCode(0), "e\r\n");
    EXPECT_EQ(EventCode(1), "OnFrame text\r\n");
}

TEST_F(PsfFileTest, BehindOnMsgItsOwnTagEndsTheText) {
    const std::string bytes = PsfHead() + Lines({"NumFuncs= 0", "[FuncCode]", "[EventCode]"}) + PsfEvents(0, 8, false) +
                              "[OnMsg]\r\nlost\r\n[EndPSF]\r\n";
    EXPECT_EQ(Load(bytes), Status::LoadFailed) << "the end tag was not met in an event's text";
    EXPECT_EQ(EventCode(8), "OnMsg text\r\n");
}

TEST_F(PsfFileTest, LinesBehindTheEndTagAreIgnored) {
    ASSERT_EQ(Load(Psf(" 0", "", "") + Lines({"more", "[OnMsg]", "[EndPSF]"})), Status::Done);
    EXPECT_EQ(EventCode(8), "OnMsg text\r\n");
}

TEST_F(PsfFileTest, SectionsInAnUnexpectedOrderFailTheLoad) {
    EXPECT_EQ(Load(PsfHead() + Lines({"NumFuncs= 0", "[EventCode]"}) + PsfEvents() + "[FuncCode]\r\n"),
              Status::LoadFailed);
    EXPECT_EQ(StoredEvents(), EventList());
}

TEST_F(PsfFileTest, EveryLoadStartsFromTheDefaults) {
    ASSERT_EQ(Load(Psf(" 1", "One", PsfFunction("One", "x"))), Status::Done);
    ASSERT_EQ(Load("[GVars]\r\nnew\r\n"), Status::LoadFailed);
    EXPECT_EQ(VarCode(), "new\r\n");
    EXPECT_EQ(document.GetFunctionCount(), 0);
    EXPECT_EQ(StoredEvents(), EventList());
    EXPECT_FALSE(document.LoadedOK());
}

} // namespace
} // namespace tessaly
