// Messages as the window lists them: the forms of all tools, from their documentation, without a compiler.
#include "tests/unit/diagnostics/DiagnosticFixture.h"

namespace tessaly {

void PrintTo(const Diagnostic& diagnostic, std::ostream* stream) {
    constexpr const char* names[] = {"error", "warning", "note"};
    *stream << names[static_cast<int>(diagnostic.kind)] << " | " << diagnostic.member << ":" << diagnostic.line << ":"
            << diagnostic.column << " | " << diagnostic.file << " | " << diagnostic.text;
}

namespace {

class DiagnosticsTest : public DiagnosticMapTest {
protected:
    DiagnosticsTest() {
        AddFillers(1, 3);
        mDocument.UpdateEventCodeByIndex(2, "void OnKey(char c)\n{\n  int marker;\n}");
        mNumber = std::to_string(LineOf("marker"));
    }

    // "kind | member:line:column | file | text", one a line; "" for no messages.
    std::string Read(const std::string& output) const {
        std::ostringstream result;
        const char* separator = "";
        for (const Diagnostic& diagnostic : ReadDiagnostics(Map(), output)) {
            result << separator;
            PrintTo(diagnostic, &result);
            separator = "\n";
        }
        return result.str();
    }

    std::string mNumber;
};

TEST_F(DiagnosticsTest, GccAndClangWriteColons) {
    const std::string at = CFile() + ":" + mNumber;
    EXPECT_EQ(Read(at + ":7: error: x"), "error | events/OnKey:3:7 |  | x");
    EXPECT_EQ(Read(at + ": error: x"), "error | events/OnKey:3:0 |  | x");
    EXPECT_EQ(Read(at + ":7: warning: x [-Wy]"), "warning | events/OnKey:3:7 |  | x [-Wy]");
    EXPECT_EQ(Read(at + ":7: note: x"), "note | events/OnKey:3:7 |  | x");
    EXPECT_EQ(Read(at + ":7: fatal error: own.h: No such file or directory"),
              "error | events/OnKey:3:7 |  | own.h: No such file or directory");
    EXPECT_EQ(Read(at + ": Error: no such instruction: `x'"), "error | events/OnKey:3:0 |  | no such instruction: `x'");
}

TEST_F(DiagnosticsTest, GccMaySpeakGerman) {
    const std::string at = CFile() + ":" + mNumber + ":7: ";
    EXPECT_EQ(Read(at + "Fehler: x"), "error | events/OnKey:3:7 |  | x");
    EXPECT_EQ(Read(at + "schwerwiegender Fehler: x"), "error | events/OnKey:3:7 |  | x");
    EXPECT_EQ(Read(at + "Warnung: x"), "warning | events/OnKey:3:7 |  | x");
    EXPECT_EQ(Read(at + "Anmerkung: x"), "note | events/OnKey:3:7 |  | x");
}

TEST_F(DiagnosticsTest, ClWritesParenthesesAndCodes) {
    const std::string at = CFile() + "(" + mNumber;
    EXPECT_EQ(Read(at + "): error C2065: 'x': undeclared identifier"),
              "error | events/OnKey:3:0 |  | C2065: 'x': undeclared identifier");
    EXPECT_EQ(Read(at + ") : error C2065: 'x' : undeclared identifier"),
              "error | events/OnKey:3:0 |  | C2065: 'x' : undeclared identifier");
    EXPECT_EQ(Read(at + ",7): warning C4101: x"), "warning | events/OnKey:3:7 |  | C4101: x");
    EXPECT_EQ(Read(at + "): fatal error C1083: Cannot open include file: 'a.h': No such file or directory\r\n"),
              "error | events/OnKey:3:0 |  | C1083: Cannot open include file: 'a.h': No such file or directory");
    EXPECT_EQ(Read(at + "): note: see declaration of 'x'"), "note | events/OnKey:3:0 |  | see declaration of 'x'");
    EXPECT_EQ(Read("gen.c"), "");
    EXPECT_EQ(Read("cl : Command line error D8003 : missing source filename"),
              "error | :0:0 | cl | D8003 : missing source filename");
}

TEST_F(DiagnosticsTest, APlaceInNoMemberIsShownAsPrinted) {
    EXPECT_EQ(Read("/x/own.h:2:9: error: x"), "error | :0:0 | /x/own.h:2:9 | x");
    EXPECT_EQ(Read("C:\\My Files\\own.h(2): error C2065: x"), "error | :0:0 | C:\\My Files\\own.h(2) | C2065: x");
    EXPECT_EQ(Read("gen.c:2:1: warning: x"), "warning | :0:0 | gen.c:2:1 | x");
    EXPECT_EQ(Read("collect2: error: ld returned 1 exit status"),
              "error | :0:0 | collect2 | ld returned 1 exit status");
    EXPECT_EQ(Read("LINK : fatal error LNK1104: cannot open file 'x.lib'"),
              "error | :0:0 | LINK | LNK1104: cannot open file 'x.lib'");
}

TEST_F(DiagnosticsTest, WhatIsNoMessageIsLeftOut) {
    for (const std::string& line : std::vector<std::string>{
             "", "\n\n", " ", "hello", "2 warnings and 1 error generated.",
             "gen.c: In function 'OnKey':", "   45 | puts(\"gen.c:" + mNumber + ": error: y\");",
             "  gen.c:" + mNumber + ": error: x", "error: x", "In file included from gen.c:" + mNumber + ":",
             "    Print(\"a: error: b\");", "Print(\"a: error: b\");", "gen.c:" + mNumber + ":"}) {
        EXPECT_EQ(Read(line), "") << line;
    }
}

TEST_F(DiagnosticsTest, SequencesOfATerminalAreNoPartOfAMessage) {
    EXPECT_EQ(Read("\x1B[01m\x1B[K" + CFile() + ":" + mNumber +
                   ":7:\x1B[m\x1B[K \x1B[01;31m\x1B[Kerror: \x1B[m\x1B[K\x1B]8;;http\x07link\x1B]8;;\x1B\\ed\tx\x01"),
              "error | events/OnKey:3:7 |  | linked x");
}

TEST_F(DiagnosticsTest, AnyBytesGiveUtf8) {
    const std::string text = Read("gen.c:" + mNumber + ":7: error: \xFC\xC2\x85" + std::string(1, '\0') + "x");
    EXPECT_EQ(text, "error | events/OnKey:3:7 |  | \xEF\xBF\xBD x");
}

TEST_F(DiagnosticsTest, HiddenMistakesAreWarningsOfTheSameKind) {
    mDocument.UpdateVarCode("int a;\n/* never ends");
    const std::vector<Diagnostic> hidden = HiddenDiagnostics(mDocument);
    ASSERT_EQ(hidden.size(), 1U);
    EXPECT_EQ(testing::PrintToString(hidden[0]),
              "warning | references:2:0 |  | the comment that begins here does not end in this text [open-comment]");
}

TEST_F(DiagnosticsTest, TheMapIsThatOfTheFileAsItWasWritten) {
    BuildMap map;
    ASSERT_EQ(BuildMap::BuildCCodeFile(mDocument, CFile(), map), Status::Done);
    mDocument.UpdateVarCode("int a;\n\n\n\n");
    mDocument.UpdateEventCodeByIndex(2, "void OnKey(char c){}");
    const std::vector<Diagnostic> found = ReadDiagnostics(map, "gen.c:" + mNumber + ":7: error: x");
    EXPECT_EQ(testing::PrintToString(found.at(0)), "error | events/OnKey:3:7 |  | x");
    EXPECT_EQ(map.Text("events/OnKey"), "void OnKey(char c)\n{\n  int marker;\n}");
    EXPECT_EQ(map.Text("functions/Filler101"), "void Filler101(int n)\r\n{\r\n    n++;\r\n}\r\n");
    EXPECT_EQ(map.Text("functions/None"), "");
}

TEST_F(DiagnosticsTest, AMapOfNoBuildLeadsNothingBack) {
    const std::vector<Diagnostic> found = ReadDiagnostics(BuildMap(), "gen.c:" + mNumber + ":7: error: x");
    EXPECT_EQ(testing::PrintToString(found.at(0)), "error | :0:0 | gen.c:" + mNumber + ":7 | x");
}

} // namespace
} // namespace tessaly
