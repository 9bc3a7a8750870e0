#include "syntax/CDeclarations.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

// One line each: the kind's letter, "l" for a local one, the name, its declaration and, of a field, its owner.
std::string Names(std::string_view text) {
    std::string all;
    for (const CName& name : DeclaredNames(text)) {
        all += std::string(1, "FVTCMf"[static_cast<std::size_t>(name.kind)]) + (name.isLocal ? "l " : " ") + name.name +
               ": " + name.declaration + (name.owner.empty() ? "" : " of " + name.owner) + "\n";
        EXPECT_TRUE(name.kind == CNameKind::Macro || text.substr(name.position).starts_with(name.name));
    }
    return all;
}

TEST(CDeclarationsTest, VariablesHaveTheirTypeAndNoValue) {
    EXPECT_EQ(Names("static int count = 0, *p, table[4] = {1, (2)};"), "V count: static int count\n"
                                                                       "V p: static int *p\n"
                                                                       "V table: static int table[4]\n");
    EXPECT_EQ(Names("char* text;void (*handler)(int x) = 0;"), "V text: char* text\n"
                                                               "V handler: void (*handler)(int x)\n");
}

TEST(CDeclarationsTest, FunctionsHaveTheirParametersInOneLine) {
    EXPECT_EQ(Names("int  Send(const Frame* frame, /* 0-255 */\n         int channel);"),
              "F Send: int Send(const Frame* frame, int channel)\n");
    EXPECT_EQ(Names("extern void *copy (void *to) __THROW __nonnull ((1));"), "F copy: extern void *copy (void *to)\n");
    EXPECT_EQ(Names("__attribute__((noreturn)) void Stop(void);"), "F Stop: void Stop(void)\n");
    EXPECT_EQ(Names("#define CHECKED\nCHECKED int Print(const char* f, ...);"),
              "F Print: int Print(const char* f, ...)\n");
    EXPECT_EQ(Names("extern \"C\" {\nint f(void);\n}"), "F f: int f(void)\n");
}

TEST(CDeclarationsTest, ABodysNamesAreLocal) {
    EXPECT_EQ(Names("long Work(const char *text, int)\n"
                    "{\n"
                    "    int i, n = strlen(text);\n"
                    "    for (uint k = 0; k < 3; k++) { Frame inner; f(k); }\n"
                    "    if (n) return 3;\n"
                    "again: n = i * 2; else_ = 3; goto again;\n"
                    "    while (1) { double d; }\n"
                    "}\n"
                    "int after;"),
              "F Work: long Work(const char *text, int)\n"
              "Vl text: const char *text\n"
              "Vl i: int i\n"
              "Vl n: int n\n"
              "Vl k: uint k\n"
              "Vl inner: Frame inner\n"
              "Vl d: double d\n"
              "V after: int after\n");
}

// Where the local name `wanted` ends, or npos.
std::size_t EndOf(std::string_view text, std::string_view wanted) {
    for (const CName& name : DeclaredNames(text)) {
        if (name.name == wanted) {
            return name.end;
        }
    }
    ADD_FAILURE() << wanted << " is not declared";
    return 0;
}

TEST(CDeclarationsTest, OneBranchOfAnIfAloneClosesABlock) {
    const auto endsBehind = [](const std::string& block) {
        const std::string text = "void Run(void)\n{\n    int count;\n" + block + "    count = 1;\n}\nint after;\n";
        return EndOf(text, "count") == text.find("\nint after") - 1 && EndOf(text, "after") == std::string::npos;
    };
    EXPECT_TRUE(endsBehind("    if (a) {\n#if A\n    }\n#else\n    }\n#endif\n"));
    EXPECT_TRUE(endsBehind("#ifdef A\n    if (a) {\n#elif B\n    while (b) {\n#else\n    {\n#endif\n    }\n"));
    EXPECT_TRUE(endsBehind("#if 0\n    if (a) {\n#else\n    if (b) {\n#endif\n    }\n"));
    EXPECT_TRUE(endsBehind("#if 0 /* not yet */\n    }\n#endif\n"));
    EXPECT_TRUE(endsBehind("#if A\n#if B\n    {\n#else\n    {\n#endif\n#else\n#ifndef B\n    {\n#else\n    "
                           "{\n#endif\n#endif\n    }\n"));
    EXPECT_TRUE(endsBehind("#if A\n    { int inner; }\n#else\n    { int other; }\n#endif\n"));
    EXPECT_TRUE(endsBehind("#else\n#endif\n    {\n    }\n"));
}

TEST(CDeclarationsTest, TypesHaveTheirFieldsAndConstants) {
    EXPECT_EQ(Names("typedef unsigned int uint;\n"
                    "typedef struct Frame { uint id : 29; uchar data[8]; } Frame;\n"
                    "typedef struct { int a; struct In { char c; } in; } Pair;\n"
                    "struct Tag { long t; };\n"
                    "enum Mode { Off, On = (2, 3), Auto };"),
              "T uint: typedef unsigned int uint\n"
              "T Frame: struct Frame\n"
              "f id: uint id : 29 of Frame\n"
              "f data: uchar data[8] of Frame\n"
              "T Frame: typedef struct Frame {} Frame\n"
              "f a: int a of Pair\n"
              "T In: struct In\n"
              "f c: char c of In\n"
              "f in: struct In {} in of Pair\n"
              "T Pair: typedef struct {} Pair\n"
              "T Tag: struct Tag\n"
              "f t: long t of Tag\n"
              "T Mode: enum Mode\n"
              "C Off: enum Off\n"
              "C On: enum On\n"
              "C Auto: enum Auto\n");
}

TEST(CDeclarationsTest, MacrosHaveTheirValue) {
    EXPECT_EQ(Names("#ifndef ONCE\n#define ONCE\n#  define MOST  65535 /* bytes */\n#define TWICE(a) do { a; \\\n a; } "
                    "while (0)\n#endif"),
              "M MOST: #define MOST 65535\n"
              "M TWICE: #define TWICE(a) do { a; a; } while (0)\n");
}

TEST(CDeclarationsTest, CommentsLiteralsAndHalfTextsDeclareNothing) {
    EXPECT_EQ(Names("// int a;\n/* int b;\n int c; */ char* d = \"int e;\"; f('}');"), "V d: char* d\n");
    for (const char* const text : {"int", "int (", "struct {", "\"", "/*", "#", "#define", "}", "})(", "for (int"}) {
        EXPECT_EQ(Names(text), "") << text;
    }
    EXPECT_EQ(Names(std::string(100'000, '{')), "") << "as deep as it may be";
}

TEST(CDeclarationsTest, ABracketThatIsNotClosedEndsWithItsStatement) {
    EXPECT_EQ(Names("void f(void) { g(1; int a; if (b { int c; } }\nint d;"),
              "F f: void f(void)\nVl a: int a\nVl c: int c\nV d: int d\n");
    EXPECT_EQ(Names("void f(void) { g((P){1, 2}); for (int i = 0; i < 3; ++i) {} int a; }"),
              "F f: void f(void)\nVl i: int i\nVl a: int a\n");
}

TEST(CDeclarationsTest, IncludedFilesAreNamedAsTheyStand) {
    EXPECT_EQ(IncludedNames("#include <stdio.h>\n # include \"own.h\" // mine\n#include OTHER\n// #include <no.h>\n"),
              (std::vector<std::string>{"<stdio.h>", "\"own.h\""}));
}

} // namespace
} // namespace tessaly
