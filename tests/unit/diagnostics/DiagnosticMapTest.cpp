// Against the compilers themselves: what they say about a marker must be led back to the line the marker is in.
#include "platform/system/posix/Process.h"
#include "platform/text/Utf16.h"
#include "tests/unit/diagnostics/DiagnosticFixture.h"

#include <random>

namespace tessaly {
namespace {

// A compiler and the options that make it write messages in some way.
struct Compiler {
    std::string name;
    std::string command;
};

void PrintTo(const Compiler& compiler, std::ostream* stream) {
    *stream << compiler.command;
}

class DiagnosticMapWithCompiler : public DiagnosticMapTest {
protected:
    // What a compiler, started in the folder, has to say.
    std::string Compile(const std::string& command) {
        Generate();
        std::string output;
        posix::RunProcess({"/bin/sh", "-c", "cd '" + mFolder.string() + "' && exec env LC_ALL=C " + command},
                          [&output](std::string_view piece) { output += piece; });
        return output;
    }
};

class DiagnosticMapCompilerTest : public DiagnosticMapWithCompiler, public testing::WithParamInterface<Compiler> {
protected:
    std::string CompileIt() { return Compile(GetParam().command + " -Wall -c '" + CFile() + "' -o gen.o"); }
};

INSTANTIATE_TEST_SUITE_P(
    Compilers, DiagnosticMapCompilerTest,
    testing::Values(Compiler{"Gcc", "gcc"}, Compiler{"GccWithoutExcerpts", "gcc -fno-diagnostics-show-caret"},
                    Compiler{"GccWithoutColumns", "gcc -fno-show-column"}, Compiler{"Clang", "clang -ferror-limit=0"},
                    Compiler{"ClangWithParentheses", "clang -ferror-limit=0 -fdiagnostics-format=msvc"}),
    [](const auto& compiler) { return compiler.param.name; });

TEST_P(DiagnosticMapCompilerTest, AnErrorInTheReferencesIsLedBack) {
    mDocument.UpdateVarCode("int first = UND_1;\r\n\r\nint b;\r\nint last = UND_2;");
    Check(CompileIt());
}

TEST_P(DiagnosticMapCompilerTest, AnErrorInAFunctionIsLedBackHoweverManyStandBeforeIt) {
    AddFunction("First", "int First(int n)\r\n{\r\n    int a = UND_a;\r\n    return n + UND_b; }");
    AddFillers(2, 39);
    AddFunction("Last", "int Last(int n)\r\n{ int x = UND_c;\r\n\r\n    return n + UND_d + x;\r\n}\r\n");
    Check(CompileIt());
}

TEST_P(DiagnosticMapCompilerTest, AnErrorInThePrototypeIsLedBackToTheFunctionTwice) {
    AddFillers(1, 20);
    AddFunction("Wrong", "/* adds */\r\nvoid Wrong(\r\n    UND_type n)\r\n{\r\n}\r\n");
    const std::string output = Check(CompileIt());
    std::size_t count = 0;
    for (std::size_t at = output.find("Wrong:3: error"); at != output.npos;
         at = output.find("Wrong:3: error", at + 1)) {
        ++count;
    }
    EXPECT_EQ(count, 2U) << output;
}

TEST_P(DiagnosticMapCompilerTest, AnErrorInAnEventIsLedBack) {
    AddFillers(1, 40);
    mDocument.UpdateEventCodeByIndex(0, "void OnError(uchar channel, uchar error_type)\n{\n\n  UND_error;\n}");
    mDocument.UpdateEventCodeByIndex(8, "void OnMsg(char * string){ UND_msg; }");
    Check(CompileIt());
}

TEST_P(DiagnosticMapCompilerTest, EveryLineEndOfATextCounts) {
    AddFunction("Lf", "void Lf(int n)\n{\n\n  n = UND_lf;\n}\n");
    AddFunction("Cr", "void Cr(int n)\r{\r\r  n = UND_cr;\r}\r");
    AddFunction("Mixed", "void Mixed(int n)\n\r{\r\n\r\r  n = UND_mixed;\r\r\n\n\n}");
    AddFunction("Comment", "/* a\rb\nc\r\n*/ void Comment(int n) /* x */\r{\r  n = UND_comment;\r}");
    AddFunction("Macro",
                "#define ADD(x) \\\r\n  ((x) + \\\r\n 1)\r\nvoid Macro(int n)\r\n{\r\n  n = ADD(2) + UND_macro; }");
    Check(CompileIt());
}

TEST_P(DiagnosticMapCompilerTest, AOneLineFunctionHasOneLine) {
    AddFillers(1, 3);
    AddFunction("One", "int One(void) { return UND_one; }");
    AddFunction("Two", "int Two(void) { return UND_two; }\r\n");
    Check(CompileIt());
}

TEST_P(DiagnosticMapCompilerTest, TextsInTheCodePageAreNoHindrance) {
    AddFunction("Gr\xC3\xBC\xC3\x9F"
                "e",
                "/* \xC3\xA4\xC3\xB6\xC3\xBC \xE2\x82\xAC */\r\nvoid Gruesse(const char *n)\r\n{\r\n"
                "    n = \"\xC3\xBC\"; n = UND_u;\r\n}\r\n");
    Check(CompileIt());
}

TEST_P(DiagnosticMapCompilerTest, AWarningIsLedBack) {
    AddFillers(1, 7);
    AddFunction("Warn", "int Warn(int n)\r\n{\r\n\r\n    int UND_unused;\r\n    return n;\r\n}\r\n");
    const std::string output = Check(CompileIt());
    EXPECT_NE(output.find("Blink.PSF:functions/Warn:4: warning: unused variable"), std::string::npos) << output;
}

TEST_P(DiagnosticMapCompilerTest, ANoteIsLedBack) {
    AddFunction("Twice", "int Twice(int n)\r\n{\r\n  return n;\r\n}\r\n");
    mDocument.UpdateEventCodeByIndex(2, "void OnKey(char c)\n{\n}\nchar *Twice(int n) { return 0; }");
    const std::string output = Check(CompileIt());
    EXPECT_NE(output.find("Blink.PSF:events/OnKey:4: error: conflicting types for 'Twice'"), output.npos) << output;
    EXPECT_NE(output.find("Blink.PSF:functions/Twice:1: note: previous "), output.npos) << output;
}

TEST_P(DiagnosticMapCompilerTest, AnErrorInTheFrameStays) {
    AddFillers(1, 5);
    Write("tornem.h", "void initialize(int argc, char *argv[]);\n");
    const std::string output = CompileIt();
    EXPECT_NE(output.find("EventLoop"), std::string::npos);
    EXPECT_EQ(Rewrite(output), output);
}

TEST_P(DiagnosticMapCompilerTest, AnErrorInAnIncludedFileNamesTheLineThatIncludesIt) {
    AddFillers(1, 5);
    Write("own.h", "\nint x = UND_own;\n");
    mDocument.UpdateVarCode("/* mine */\r\n#include \"own.h\"\r\n");
    const std::string output = Rewrite(CompileIt());
    EXPECT_NE(output.find("In file included from Blink.PSF:references:2 (" + CFile()), std::string::npos) << output;
    EXPECT_NE(output.find("\n" + mFolder.string() + "/own.h"), std::string::npos) << output;
}

TEST_P(DiagnosticMapCompilerTest, AnyTextIsLedBackToItsLine) {
    constexpr std::string_view ends[] = {"\r\n", "\n", "\r", "\r\r\n", "\n\r", "\r\n\r\n", "\n\n", " "};
    std::mt19937 random(11);
    const auto end = [&] { return std::string(ends[random() % std::size(ends)]); };
    int number = 0;
    const auto body = [&](const std::string& head) {
        std::string text = "/* f" + end() + "*/" + head + end() + "{" + end();
        for (std::size_t i = random() % 4; i > 0; --i) {
            text += "n = UND_" + std::to_string(++number) + " ;" + end() + "/* " + end() + " */" + end();
        }
        return text + "}" + end();
    };
    for (int round = 0; round < 6; ++round) {
        ASSERT_EQ(mDocument.Init(), Status::Done);
        mDocument.UpdateVarCode(end() + "int r = UND_r ;" + end());
        for (int i = 0; i < 12; ++i) {
            const std::string name = "F" + std::to_string(10 + i);
            AddFunction(name, body("void " + name + "(int n)"));
        }
        mDocument.UpdateEventCodeByIndex(5, body("void OnTimer(int n)"));
        Check(CompileIt());
    }
}

class DiagnosticColumnTest : public DiagnosticMapWithCompiler, public testing::WithParamInterface<Compiler> {
protected:
    // Where in its text a marker is, as "member:line:column".
    std::string PlaceOf(const std::string& marker) const {
        for (const CCodeOrigin& member : AllMembers(mDocument)) {
            const std::string_view text = MemberText(mDocument, member);
            const std::size_t at = text.find(marker);
            if (at != std::string_view::npos) {
                const std::size_t begin = text.find_last_of("\r\n", at) + 1;
                return MemberName(mDocument, member) + ":" + std::to_string(LineAt(text, at, true)) + ":" +
                       std::to_string(EncodeUtf16(text.substr(begin, at - begin)).size() / 2 + 1);
            }
        }
        return "";
    }
};

INSTANTIATE_TEST_SUITE_P(Compilers, DiagnosticColumnTest,
                         testing::Values(Compiler{"Gcc", "gcc"},
                                         Compiler{"GccWithoutExcerpts", "gcc -fno-diagnostics-show-caret"},
                                         Compiler{"GccInBytes", "gcc -fdiagnostics-column-unit=byte"},
                                         Compiler{"GccInColours", "gcc -fdiagnostics-color=always"},
                                         Compiler{"Clang", "clang"},
                                         Compiler{"ClangInColours", "clang -fcolor-diagnostics"},
                                         Compiler{"ClangWithParentheses", "clang -fdiagnostics-format=msvc"}),
                         [](const auto& compiler) { return compiler.param.name; });

TEST_P(DiagnosticColumnTest, AColumnIsWhereTheNameStands) {
    AddFillers(1, 1); // few: gcc measures the widths in lines so many below
    AddFunction("Wrong", "/* \xC3\xA4 */ int Wrong(int n)\r\n{\r\n\tn = UND_1;\r\n    n = UND_2;\r\n"
                         "\t \tn = \"\xC3\xBC\xE2\x82\xAC\"[0] + UND_3;\n\t\t\t\t\tn = UND_4;\r"
                         "  /* \xF0\x9F\x98\x80 \xC3\x83\xC2\xA4 */ return UND_5;\r\n}\r\n");
    mDocument.UpdateEventCodeByIndex(8, "void OnMsg(char * string) { UND_6; }");
    const std::string output = Compile(GetParam().command + " -c '" + CFile() + "' -o gen.o");
    const std::vector<Diagnostic> diagnostics = ReadDiagnostics(Map(), output);
    int found = 0;
    for (const Diagnostic& each : diagnostics) {
        const std::size_t marker = each.text.find("UND_");
        if (each.kind == DiagnosticKind::Error && marker != std::string::npos) {
            ++found;
            EXPECT_EQ(each.member + ":" + std::to_string(each.line) + ":" + std::to_string(each.column),
                      PlaceOf(each.text.substr(marker, 5)))
                << output;
        }
    }
    EXPECT_EQ(found, 6) << output;
}

class DiagnosticMapLinkerTest : public DiagnosticMapWithCompiler, public testing::WithParamInterface<Compiler> {};

INSTANTIATE_TEST_SUITE_P(Linkers, DiagnosticMapLinkerTest,
                         testing::Values(Compiler{"Gcc", "gcc -g"}, Compiler{"GccOptimizing", "gcc -g -O2"},
                                         Compiler{"Clang", "clang -g"}),
                         [](const auto& compiler) { return compiler.param.name; });

TEST_P(DiagnosticMapLinkerTest, AMissingFunctionIsLedBackToItsCalls) {
    AddFillers(1, 30);
    mDocument.UpdateVarCode("extern int UND_link(void);\r\nextern int UND_event(void);\r\n");
    AddFunction("Call", "int Call(void)\r\n{\r\n\r\n    return UND_link() + 1;\r\n}\r\n");
    mDocument.UpdateEventCodeByIndex(2, "void OnKey(char c)\n{\n\n\n  UND_event();\n}");
    const std::string output = Rewrite(Compile(GetParam().command + " '" + CFile() + "' -o prog"));
    const std::string old = " (" + CFile() + ":";
    EXPECT_NE(output.find("Blink.PSF:functions/Call:4: undefined reference to `UND_link'" + old), output.npos)
        << output;
    EXPECT_NE(output.find("Blink.PSF:events/OnKey:5: undefined reference to `UND_event'" + old), output.npos) << output;
    EXPECT_NE(output.find("\n" + CFile() + ":"), output.npos) << "main stands in the frame\n" << output;
}

TEST_P(DiagnosticMapLinkerTest, ASecondDefinitionIsLedBackToTheFirst) {
    AddFillers(1, 30);
    AddFunction("Print", "int Print(int n)\r\n{\r\n    return n;\r\n}\r\n");
    Write("kit.c", "int Print(int n) { return n; }\nvoid initialize(void) {}\nvoid EventLoop(void) {}\n");
    const std::string output = Rewrite(Compile(GetParam().command + " '" + CFile() + "' kit.c -o prog"));
    EXPECT_NE(output.find(":Blink.PSF:functions/Print:"), std::string::npos) << output;
    EXPECT_NE(output.find("): first defined here"), std::string::npos) << output;
}

} // namespace
} // namespace tessaly
