// The forms of messages, and which counting of lines an output has, without a compiler.
#include "tests/unit/diagnostics/DiagnosticFixture.h"

namespace tessaly {
namespace {

class DiagnosticMapFormTest : public DiagnosticMapTest {
protected:
    DiagnosticMapFormTest() {
        AddFillers(1, 3);
        mDocument.UpdateEventCodeByIndex(2, "void OnKey(char c)\n{\n  int marker;\n}");
        mNumber = std::to_string(LineOf("marker"));
    }

    std::string mNumber;
    const std::string mPlace = "Blink.PSF:events/OnKey:3";
};

TEST_F(DiagnosticMapFormTest, EveryFormAtTheFrontOfALineIsKnown) {
    const std::string colon = CFile() + ":" + mNumber;
    const std::string parenthesis = CFile() + "(" + mNumber;
    EXPECT_EQ(Rewrite(colon + ": error: x"), mPlace + ": error: x (" + colon + ")");
    EXPECT_EQ(Rewrite(colon + ":9: error: x"), mPlace + ": error: x (" + colon + ":9)");
    EXPECT_EQ(Rewrite(parenthesis + "): error: x"), mPlace + ": error: x (" + parenthesis + "))");
    EXPECT_EQ(Rewrite(parenthesis + ") : error C1: x"), mPlace + ": error C1: x (" + parenthesis + "))");
    EXPECT_EQ(Rewrite(parenthesis + ",7): error: x"), mPlace + ": error: x (" + parenthesis + ",7))");
    EXPECT_EQ(Rewrite(parenthesis + ",7) : error: x"), mPlace + ": error: x (" + parenthesis + ",7))");
    EXPECT_EQ(Rewrite(colon + ":"), mPlace + ": (" + colon + ")");
}

TEST_F(DiagnosticMapFormTest, OtherFormsStay) {
    const std::string file = CFile();
    for (const std::string& line : std::vector<std::string>{
             file, file + ":", file + ": error: x", file + ":0: x", file + ":" + mNumber, file + ":" + mNumber + "x: y",
             file + ":99999: x", file + ":99999999999999999999: x", file + "(" + mNumber + ": x", file + "(x): y",
             file + "(" + mNumber + ") x", file + "x:" + mNumber + ": y",
             file + ": In function 'OnKey':", " " + file + ":" + mNumber + ": x", "x " + file + ":" + mNumber + ": y",
             "   45 | puts(\"" + file + ":" + mNumber + ": y\");", "gen.c:(.text+0x14): undefined reference to `x'"}) {
        EXPECT_EQ(Rewrite(line), line);
    }
}

TEST_F(DiagnosticMapFormTest, TheFileMayBeSpelledInSeveralWays) {
    const std::string folder = mFolder.filename().string();
    const std::string end = ":" + mNumber + ": x";
    for (const std::string& file :
         std::vector<std::string>{CFile(), "gen.c", "./gen.c", folder + "/gen.c", folder + "/./x/../gen.c",
                                  mFolder.string() + "//gen.c", mFolder.string() + "/../" + folder + "/gen.c"}) {
        EXPECT_EQ(Rewrite(file + end), mPlace + ": x (" + file + ":" + mNumber + ")");
    }
    for (const std::string& file : std::vector<std::string>{"/gen.c", "other/gen.c", "/tmp/other/gen.c", "mygen.c",
                                                            "x" + folder + "/gen.c", "../gen.c", "my gen.c", "GEN.C"}) {
        EXPECT_EQ(Rewrite(file + end), file + end);
    }
}

TEST_F(DiagnosticMapFormTest, APathMayHaveBlanks) {
    const BuildMap map(mDocument, "/my (own) files/gen.c");
    EXPECT_EQ(RewriteMessages(map, "My Block.PSF", "/my (own) files/gen.c:" + mNumber + ": x"),
              "My Block.PSF:events/OnKey:3: x (/my (own) files/gen.c:" + mNumber + ")");
    EXPECT_EQ(RewriteMessages(map, "My Block.PSF", "In file included from /my (own) files/gen.c:" + mNumber + ":"),
              "In file included from My Block.PSF:events/OnKey:3 (/my (own) files/gen.c:" + mNumber + "):");
}

TEST_F(DiagnosticMapFormTest, ARelativePathIsOneOfTheCurrentFolder) {
    const BuildMap map(mDocument, "out/gen.c");
    const std::string absolute = std::filesystem::current_path().string() + "/out/gen.c:" + mNumber;
    EXPECT_EQ(RewriteMessages(map, "x.PSF", absolute + ": x"), "x.PSF:events/OnKey:3: x (" + absolute + ")");
    EXPECT_EQ(RewriteMessages(map, "x.PSF", "out/gen.c:" + mNumber + ": x"),
              "x.PSF:events/OnKey:3: x (out/gen.c:" + mNumber + ")");
}

TEST_F(DiagnosticMapFormTest, AWindowsPathIsKnown) {
    const BuildMap map(mDocument, "C:\\x y\\gen.c");
    for (const std::string& file :
         std::vector<std::string>{"C:\\x y\\gen.c", "x y\\gen.c", "gen.c", "C:/x y/gen.c", ".\\gen.c"}) {
        const std::string old = file + "(" + mNumber + ")";
        EXPECT_EQ(RewriteMessages(map, "C:\\x\\b.PSF", old + ": x"), "C:\\x\\b.PSF:events/OnKey:3: x (" + old + ")");
    }
    EXPECT_EQ(RewriteMessages(map, "C:\\x\\b.PSF", "D:\\x y\\gen.c(" + mNumber + "): x"),
              "D:\\x y\\gen.c(" + mNumber + "): x");
}

TEST_F(DiagnosticMapFormTest, WithoutAPathNothingIsTheCFile) {
    const std::string line = ":" + mNumber + ": x";
    EXPECT_EQ(RewriteMessages(BuildMap(mDocument, ""), "x.PSF", line), line);
}

TEST_F(DiagnosticMapFormTest, IncludingLinesAreLedBackInPlace) {
    EXPECT_EQ(Rewrite("In file included from gen.c:" + mNumber + ":5,\n                 from gen.c:" + mNumber + ":"),
              "In file included from " + mPlace + " (gen.c:" + mNumber + ":5),\n                 from " + mPlace +
                  " (gen.c:" + mNumber + "):");
    const std::string quoted = "  // from gen.c:" + mNumber + ": see there";
    EXPECT_EQ(Rewrite(quoted), quoted);
}

TEST_F(DiagnosticMapFormTest, LinkerLinesAreLedBackInPlace) {
    const std::string old = "gen.c:" + mNumber;
    for (const std::string& prefix :
         std::vector<std::string>{"ld: ", "/usr/bin/ld: ", "/usr/bin/x86_64-linux-gnu-ld.bfd: ", "ld.lld: error: "}) {
        EXPECT_EQ(Rewrite(prefix + old + ": undefined reference to `x'"),
                  prefix + mPlace + " (" + old + "): undefined reference to `x'");
    }
    EXPECT_EQ(Rewrite("a.c:1: multiple definition of `x'; /tmp/b.o:" + old + ": first defined here"),
              "a.c:1: multiple definition of `x'; /tmp/b.o:" + mPlace + " (" + old + "): first defined here");
    EXPECT_EQ(Rewrite(old + ": multiple definition of `x'; /tmp/b.o:" + old + ": first defined here"),
              mPlace + ": multiple definition of `x'; /tmp/b.o:" + mPlace + " (" + old + "): first defined here (" +
                  old + ")");
    EXPECT_EQ(Rewrite(">>> referenced by " + old + " (/x/" + old + ")"),
              ">>> referenced by " + mPlace + " (" + old + ") (/x/" + old + ")");
    const std::string other = "note: " + old + ": x";
    EXPECT_EQ(Rewrite(other), other);
}

TEST_F(DiagnosticMapFormTest, LineEndsAndOtherBytesStay) {
    const std::string old = "gen.c:" + mNumber;
    const std::string rest("\xFF\0\xC3|\r x\r\r\n\n\ny", 13);
    EXPECT_EQ(Rewrite(""), "");
    EXPECT_EQ(Rewrite("\n"), "\n");
    EXPECT_EQ(Rewrite("\r\n\r"), "\r\n\r");
    EXPECT_EQ(Rewrite(rest), rest);
    EXPECT_EQ(Rewrite(rest + "\n" + old + ": \xFC\r\n" + rest),
              rest + "\n" + mPlace + ": \xFC (" + old + ")\r\n" + rest);
    EXPECT_EQ(Rewrite(old + ": x\n" + old + ": y"), mPlace + ": x (" + old + ")\n" + mPlace + ": y (" + old + ")");
}

TEST_F(DiagnosticMapFormTest, AnUnfinishedGenerationIsKnownAsFarAsItWent) {
    mDocument.UpdateVarCode("int reference;\r\n");
    const std::string number = std::to_string(LineOf("reference;"));
    AddFunction("NoPrototype", "{}");
    ASSERT_EQ(mDocument.BuildCCodeFile(CFile()), Status::GenerationFailed);
    EXPECT_EQ(Rewrite("gen.c:" + number + ": x"), "Blink.PSF:references:1: x (gen.c:" + number + ")");
    EXPECT_EQ(Rewrite("gen.c:" + mNumber + ": x"), "gen.c:" + mNumber + ": x");
}

TEST_F(DiagnosticMapFormTest, TheEmptyLastLineOfATextIsTheTexts) {
    mDocument.UpdateVarCode("int reference;\r\n");
    const std::size_t line = LineOf("reference;");
    const std::string first = "gen.c:" + std::to_string(line);
    const std::string second = "gen.c:" + std::to_string(line + 1);
    const std::string third = "gen.c:" + std::to_string(line + 2);
    EXPECT_EQ(Rewrite(second + ": x"), "Blink.PSF:references:2: x (" + second + ")");
    EXPECT_EQ(Rewrite(third + ": x"), third + ": x");
    mDocument.UpdateVarCode("");
    EXPECT_EQ(Rewrite(first + ": x"), "Blink.PSF:references:1: x (" + first + ")");
    EXPECT_EQ(Rewrite(second + ": x"), second + ": x");
}

TEST_F(DiagnosticMapFormTest, MuchOutputTakesNoLongerThanItMust) {
    std::string output;
    while (output.size() < 4000000) {
        output += "gen.c:" + mNumber + ": 'marker' (gen.c:1: gen.c:1: ";
    }
    output += "\n" + std::string(2000000, '/') + "gen.c:1: x\n";
    for (int i = 0; i < 50000; ++i) {
        output += "gen.c:" + mNumber + ": 'marker'\n";
    }
    const std::string result = Rewrite(output);
    EXPECT_TRUE(result.ends_with(mPlace + ": 'marker' (gen.c:" + mNumber + ")\n"));
}

// What other tools print, in which a position may stand anywhere.
class AnywhereTest : public DiagnosticMapFormTest {
protected:
    std::string Map(const std::string& line) {
        const BuildMap map(mDocument, CFile());
        std::string result;
        MessageRewriter(map, "x.PSF", MessageRewriter::Inside::Anywhere).Rewrite(line, result);
        return result;
    }

    // `before`, a position, `behind`: its new form is in front of the old one.
    void Expect(const std::string& before, const std::string& position, const std::string& behind) {
        EXPECT_EQ(Map(before + position + behind), before + "x.PSF:events/OnKey:3 (" + position + ")" + behind);
    }
};

TEST_F(AnywhereTest, EveryPositionIsLedBackInItsLine) {
    const std::string full = CFile() + ":" + mNumber;
    Expect("    #0 0x55cac3 in OnKey ", full, "");
    Expect("    #0 0x55cac3 in OnKey ", full + ":5", "");
    Expect("SUMMARY: AddressSanitizer: SEGV ", full, " in OnKey");
    Expect("San.out: ", full, ": OnKey: Assertion `character == 0x63' failed.");
    Expect("==24452==    by 0x10933C: OnKey (", "gen.c:" + mNumber, ")");
    Expect("#1  0x0000555 in OnKey (character=<optimized out>) at ", full, "");
    Expect("Breakpoint 1 at 0x12ea: file ", CFile() + ", line " + mNumber, ".");
    Expect("", full, "");
    Expect("", full, " (discriminator 2)");
    Expect("1: file = ", "'gen.c', line = " + mNumber, ", exact_match = 0");
    Expect("\x1B[01m\x1B[K", full + ":7", ":\x1B[m\x1B[K x");
    Expect("  // from ", full, ": see there");
}

TEST_F(AnywhereTest, MessagesOfOtherCompilersAreLedBack) {
    const std::string words = "\"" + CFile() + "\", line " + mNumber;
    EXPECT_EQ(Map(words + ": error #20: x"), "x.PSF:events/OnKey:3: error #20: x (" + words + ")");
    Expect("", "\"" + CFile() + "\"," + mNumber, "  Error[Pe020]: x");
    const std::string full = CFile() + ":" + mNumber + ":5";
    EXPECT_EQ(Map(full + ": runtime error: x"), "x.PSF:events/OnKey:3: runtime error: x (" + full + ")");
}

TEST_F(AnywhereTest, OtherFilesAndLinesStay) {
    for (const std::string& line : std::vector<std::string>{
             "", "x", "in OnKey gen.c", "in OnKey gen.c:0", "in OnKey gen.c:99999", "in OnKey gen.c:2",
             "mygen.c:" + mNumber, "gen.c, lines " + mNumber, "gen.c, line x", "\"gen.c\", " + mNumber,
             "loop.c:" + mNumber, "\x1B[1;:xgen.c:" + mNumber, "[1mgen.c:" + mNumber}) {
        EXPECT_EQ(Map(line), line);
    }
}

TEST_F(AnywhereTest, LinesOfAFileThatWasEditedSinceAreTheNearest) {
    BuildMap map(mDocument, CFile());
    std::string old = Generate();
    old.replace(old.find("void OnKey"), 0, "/* one */\r\n\r\n");
    map.SetFileText(old);
    const auto place = [&](int line) {
        return map.Find(static_cast<std::size_t>(std::stoi(mNumber) + line), LineCounting::LoneCrEndsLine);
    };
    ASSERT_TRUE(place(2));
    EXPECT_EQ(place(2)->member, "events/OnKey");
    EXPECT_EQ(place(2)->line, 3U);
    EXPECT_EQ(place(1)->line, 2U);
    EXPECT_FALSE(map.Find(0, LineCounting::LoneCrEndsLine));
    EXPECT_FALSE(map.Find(99999, LineCounting::LoneCrEndsLine));
    EXPECT_EQ(map.Find(std::stoul(mNumber) + 2 - 3, LineCounting::LoneCrIsBlank)->line, 3U) << "three functions";
}

class DiagnosticMapCountingTest : public DiagnosticMapTest {
protected:
    DiagnosticMapCountingTest() {
        AddFillers(1, 20);
        AddFunction("Wrong", "int Wrong(int n)\r\n{\r\n    n = UND_a;\r\n    return UND_b;\r\n}\r\n");
    }

    // A message as a compiler gives it to which a lone CR ends no line.
    std::string Message(const std::string& marker, bool loneCrEndsLine) {
        return "gen.c:" + std::to_string(LineOf(marker, loneCrEndsLine)) + ": error: '" + marker + "' undeclared\n";
    }
};

TEST_F(DiagnosticMapCountingTest, NamesInTheirLinesTellThatALoneCrIsABlank) {
    const std::string output = Message("UND_a", false) + Message("UND_b", false);
    EXPECT_EQ(CountingOf(Map(), output), LineCounting::LoneCrIsBlank);
    Check(output);
}

TEST_F(DiagnosticMapCountingTest, NamesInTheirLinesTellThatALoneCrEndsALine) {
    const std::string output = Message("UND_a", true) + Message("UND_b", true);
    EXPECT_EQ(CountingOf(Map(), output), LineCounting::LoneCrEndsLine);
    Check(output);
}

TEST_F(DiagnosticMapCountingTest, TheMajorityOfTheMessagesDecides) {
    EXPECT_EQ(CountingOf(Map(), Message("UND_a", false) + Message("UND_b", true)), LineCounting::LoneCrEndsLine);
    EXPECT_EQ(CountingOf(Map(), Message("UND_a", false) + Message("UND_b", true) + Message("UND_a", false)),
              LineCounting::LoneCrIsBlank);
}

TEST_F(DiagnosticMapCountingTest, NamesInTypographicQuotesCountToo) {
    const std::string number = std::to_string(LineOf("UND_a", false));
    EXPECT_EQ(CountingOf(Map(), "gen.c:" + number + ": \xE2\x80\x98UND_a\xE2\x80\x99 undeclared"),
              LineCounting::LoneCrIsBlank);
    EXPECT_EQ(CountingOf(Map(), "gen.c:" + number + ": undefined reference to `UND_a'"), LineCounting::LoneCrIsBlank);
    EXPECT_EQ(CountingOf(Map(), "gen.c:" + number + ": UND_a undeclared"), LineCounting::LoneCrEndsLine);
    EXPECT_EQ(CountingOf(Map(), "gen.c:" + number + ": 'UND_' undeclared"), LineCounting::LoneCrEndsLine);
}

TEST_F(DiagnosticMapCountingTest, AColumnBehindAColonIsProofOfALoneCrThatEndsALine) {
    const std::string output = Message("UND_a", false) + "gen.c:" + std::to_string(LineOf("UND_b")) + ":3: error: x\n";
    EXPECT_EQ(CountingOf(Map(), output), LineCounting::LoneCrEndsLine);
}

TEST_F(DiagnosticMapCountingTest, AColumnInParenthesesProvesNothing) {
    const std::string number = std::to_string(LineOf("UND_a", false));
    EXPECT_EQ(CountingOf(Map(), "gen.c(" + number + ",5): error: 'UND_a'"), LineCounting::LoneCrIsBlank);
}

TEST_F(DiagnosticMapCountingTest, WithoutEvidenceALoneCrEndsALine) {
    EXPECT_EQ(CountingOf(Map(), ""), LineCounting::LoneCrEndsLine);
    EXPECT_EQ(CountingOf(Map(), "gen.c:40: error: syntax error\n"), LineCounting::LoneCrEndsLine);
    EXPECT_EQ(CountingOf(Map(), "gen.c:99999: 'UND_a'\n"), LineCounting::LoneCrEndsLine);
}

TEST_F(DiagnosticMapCountingTest, ALineWithSeveralLinesOfATextGivesTheFirst) {
    AddFunction("Crs", "void Crs(int n)\r{\r  n = 1;\r  n = UND_crs;\r}\n");
    const std::string output =
        Rewrite(Message("UND_b", false) + "gen.c:" + std::to_string(LineOf("UND_crs", false)) + ": 'UND_crs'\n");
    EXPECT_NE(output.find("Blink.PSF:functions/Crs:1: 'UND_crs'"), std::string::npos) << output;
}

TEST(CFileLinesTest, LinesOutsideTheFileHoldNothing) {
    SystemFiles files;
    const SingleByteCodePage codePage(Windows1252HighHalf());
    const VornSrcObj document(files, codePage);
    CFileLines lines;
    document.BuildCCode(lines);
    for (const LineCounting counting : {LineCounting::LoneCrEndsLine, LineCounting::LoneCrIsBlank}) {
        EXPECT_FALSE(lines.Find(0, counting));
        EXPECT_FALSE(lines.Find(1, counting));
        EXPECT_FALSE(lines.Find(100000, counting));
        EXPECT_EQ(lines.Text(0, counting), "");
        EXPECT_EQ(lines.Text(2, counting), "#include <stdlib.h>\r\n");
        EXPECT_EQ(lines.Text(100000, counting), "");
    }
}

} // namespace
} // namespace tessaly
