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

class LinkerDiagnosticsTest : public DiagnosticsTest {
protected:
    LinkerDiagnosticsTest() {
        AddFunction("Call", "int Call(void)\r\n{\r\n\r\n    return Missing() + 1;\r\n}\r\n");
        AddFunction("Twice", "/* Twice */\r\nint Twice(void) { return 0; }\r\n");
        mDocument.UpdateEventCodeByIndex(3, "void OnStart(long time)\n{\n  Missing();\n}");
        mCall = std::to_string(LineOf("Missing()"));
    }

    std::string mCall;
};

TEST_F(LinkerDiagnosticsTest, LdNamesALineOrAFunction) {
    const std::string function = "/usr/bin/ld: /tmp/a.o: in function `Call':\n";
    const std::string text = "undefined reference to `Missing'";
    const std::string place = "error | functions/Call:4:0 |  | ";
    EXPECT_EQ(Read(function + CFile() + ":" + mCall + ": " + text), place + text);
    EXPECT_EQ(Read("/usr/bin/ld: " + CFile() + ":" + mCall + ": " + text), place + text);
    EXPECT_EQ(Read(function + "gen.c:(.text+0x39): " + text), place + text);
    EXPECT_EQ(Read(function + "gen.c:" + mCall + ": more undefined references to `Missing' follow"),
              place + "more undefined references to `Missing' follow");
    EXPECT_EQ(Read("/usr/bin/ld: /tmp/a.o: in function `OnStart':\ngen.c:(.text+0x39): " + text),
              "error | events/OnStart:3:0 |  | " + text);
    EXPECT_EQ(Read("/usr/bin/i686-w64-mingw32-ld: /tmp/a.o:gen.c:(.text+0x29): " + text),
              place + "/tmp/a.o:gen.c:(.text+0x29): " + text);
    EXPECT_EQ(Read("/usr/bin/ld: /tmp/a.o: in Funktion \xC2\xBB"
                   "Call\xC2\xAB:\ngen.c:(.text+0x39): undefinierter Verweis auf \xC2\xBBMissing\xC2\xAB"),
              place + "undefinierter Verweis auf \xC2\xBBMissing\xC2\xAB");
    EXPECT_EQ(Read("/tmp/a.o:gen.c:function Call: error: " + text), place + text);
}

TEST_F(LinkerDiagnosticsTest, LdNamesWhatIsThereTwice) {
    EXPECT_EQ(Read("/usr/bin/ld: /tmp/kit.o: in function `Twice':\nkit.c:7: multiple definition of `Twice'; "
                   "/tmp/a.o:gen.c:(.text+0x0): first defined here"),
              "error | functions/Twice:1:0 |  | multiple definition of `Twice'; "
              "/tmp/a.o:gen.c:(.text+0x0): first defined here");
}

TEST_F(LinkerDiagnosticsTest, AMissingHandlerIsItsEvent) {
    const std::string function = "/usr/bin/ld: /tmp/loop.o: in function `deliver':\n";
    EXPECT_EQ(Read(function + "/kit/runtime/loop.c:90: undefined reference to `OnKey'"),
              "error | events/OnKey:1:0 |  | undefined reference to `OnKey'");
    EXPECT_EQ(Read("ld.lld: error: undefined symbol: OnKey\n>>> referenced by loop.c\n>>>   loop.o:(deliver)"),
              "error | events/OnKey:1:0 |  | undefined symbol: OnKey");
    EXPECT_EQ(Read("loop.obj : error LNK2019: unresolved external symbol _OnKey referenced in function _deliver"),
              "error | events/OnKey:1:0 |  | LNK2019: unresolved external symbol _OnKey referenced in function "
              "_deliver");
    EXPECT_EQ(Read(function + "/kit/runtime/loop.c:90: undefined reference to `clock_gettime'"),
              "error | :0:0 | /kit/runtime/loop.c:90 | undefined reference to `clock_gettime'");
}

TEST_F(LinkerDiagnosticsTest, LldNamesThePlaceBehindItsMessage) {
    EXPECT_EQ(Read("ld.lld: error: undefined symbol: Missing\n>>> referenced by gen.c:" + mCall + " (" + CFile() + ":" +
                   mCall + ")\n>>>               /tmp/a.o:(Call)\n"),
              "error | functions/Call:4:0 |  | undefined symbol: Missing");
    EXPECT_EQ(Read("lld-link: error: undefined symbol: _Missing\n>>> referenced by gen.obj:(_Call)\n"),
              "error | functions/Call:4:0 |  | undefined symbol: _Missing");
    EXPECT_EQ(Read("lld-link: error: duplicate symbol: _Twice\n>>> defined at gen.obj\n>>> defined at kit.obj\n"),
              "error | functions/Twice:1:0 |  | duplicate symbol: _Twice");
    EXPECT_EQ(Read("ld.lld: error: undefined symbol: elsewhere\n>>> referenced by x.c:1\n"),
              "error | :0:0 | ld.lld | undefined symbol: elsewhere");
}

TEST_F(LinkerDiagnosticsTest, LinkNamesTheFunction) {
    EXPECT_EQ(Read("gen.obj : error LNK2019: unresolved external symbol _Missing referenced in function _OnStart\r\n"
                   "Blink.out : fatal error LNK1120: 1 unresolved externals\r\n"),
              "error | events/OnStart:3:0 |  | LNK2019: unresolved external symbol _Missing referenced in function "
              "_OnStart");
    EXPECT_EQ(Read("gen.obj : error LNK2001: unresolved external symbol __imp__Missing"),
              "error | functions/Call:4:0 |  | LNK2001: unresolved external symbol __imp__Missing");
    EXPECT_EQ(Read("kit.obj : error LNK2005: _Twice already defined in gen.obj"),
              "error | functions/Twice:1:0 |  | LNK2005: _Twice already defined in gen.obj");
    EXPECT_EQ(Read("gen.obj : error LNK2019: Verweis auf nicht aufgel\xC3\xB6stes externes Symbol \"_Missing\" in "
                   "Funktion \"_Call\"."),
              "error | functions/Call:4:0 |  | LNK2019: Verweis auf nicht aufgel\xC3\xB6stes externes Symbol "
              "\"_Missing\" in Funktion \"_Call\".");
}

TEST_F(LinkerDiagnosticsTest, WhatALinkerSaysOfItselfIsShown) {
    EXPECT_EQ(Read("/usr/bin/ld: cannot find -lfoo: No such file or directory\ncollect2: error: ld returned 1 exit "
                   "status\n"),
              "error | :0:0 | /usr/bin/ld | cannot find -lfoo: No such file or directory");
    EXPECT_EQ(Read("/usr/bin/ld: warning: a.o: requires executable stack\n/usr/bin/ld: NOTE: This is deprecated\n"),
              "warning | :0:0 | /usr/bin/ld | a.o: requires executable stack\n"
              "note | :0:0 | /usr/bin/ld | This is deprecated");
}

TEST_F(LinkerDiagnosticsTest, SuchMessagesAreLedBackInTheOutputToo) {
    EXPECT_EQ(Rewrite("ld: a.o: in function `Call':\ngen.c:(.text+0x39): undefined reference to `Missing'\r\n"),
              "ld: a.o: in function `Call':\nBlink.PSF:functions/Call:4: undefined reference to `Missing' "
              "(gen.c:(.text+0x39))\r\n");
    EXPECT_EQ(Rewrite("/kit/loop.c:90: undefined reference to `OnKey'"),
              "Blink.PSF:events/OnKey:1: undefined reference to `OnKey' (/kit/loop.c:90)");
    EXPECT_EQ(Rewrite("gen.obj : error LNK2019: unresolved external symbol _Missing referenced in function _OnStart"),
              "Blink.PSF:events/OnStart:3: error LNK2019: unresolved external symbol _Missing referenced in function "
              "_OnStart (gen.obj)");
    for (const std::string& line : std::vector<std::string>{
             "/kit/loop.c:90: undefined reference to `elsewhere'", "undefined reference to `Missing'",
             "    x: undefined reference to `Missing'", "a: undefined reference to "}) {
        EXPECT_EQ(Rewrite(line), line);
    }
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

TEST_F(DiagnosticsTest, WhatIsSaidTwiceOfOnePlaceIsThereOnce) {
    AddFunction("Wrong", "void Wrong(Type t)\r\n{\r\n}\r\n");
    const std::string text = Generate();
    const std::string prototype = std::to_string(LineAt(text, text.find("Wrong("), true));
    const std::string function = std::to_string(LineAt(text, text.rfind("Wrong("), true));
    const std::string output = "gen.c:" + prototype + ":12: error: x\ngen.c:3:1: note: y\ngen.c:" + function +
                               ":12: error: x\ngen.c:3:1: note: y\ngen.c:" + function + ":12: error: z\n";
    EXPECT_EQ(Read(output), "error | functions/Wrong:1:12 |  | x\nnote | :0:0 | gen.c:3:1 | y\n"
                            "error | functions/Wrong:1:12 |  | z");
    EXPECT_EQ(Read("a.h:1:1: error: x\na.h:1:1: error: x"), "error | :0:0 | a.h:1:1 | x\nerror | :0:0 | a.h:1:1 | x");
}

TEST_F(DiagnosticsTest, AMapOfNoBuildLeadsNothingBack) {
    const std::vector<Diagnostic> found = ReadDiagnostics(BuildMap(), "gen.c:" + mNumber + ":7: error: x");
    EXPECT_EQ(testing::PrintToString(found.at(0)), "error | :0:0 | gen.c:" + mNumber + ":7 | x");
}

} // namespace
} // namespace tessaly
