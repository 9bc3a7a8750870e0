// What is found in a C text without a compiler. Whole program blocks are in tests/cases/lint/.
#include "syntax/COutline.h"

#include "tests/unit/Each.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using Ends = std::vector<OpenEnd>;

Ends OpenEndsOf(std::string_view text) {
    return OutlineC(text).openEnds;
}

// "name:line" of every definition, with a "?" where it may be a macro and a "#" in a branch of the preprocessor.
std::string DefinitionsOf(std::string_view text) {
    std::string all;
    for (const CDefinition& definition : OutlineC(text).definitions) {
        all += (all.empty() ? "" : " ") + definition.name + ":" + std::to_string(definition.line) +
               (definition.hasType ? "" : "?") + (definition.isConditional ? "#" : "");
    }
    return all;
}

TEST(COutlineTest, EveryLineEndCounts) {
    for (const std::string end : {"\n", "\r", "\r\n"}) {
        EXPECT_EQ(OpenEndsOf("int a;" + end + end + "/*" + end), (Ends{{OpenEndKind::Comment, 3}}));
        EXPECT_EQ(OpenEndsOf(end + "\"" + end + "\""), (Ends{{OpenEndKind::Literal, 2}, {OpenEndKind::Literal, 3}}));
    }
    EXPECT_EQ(CLineAt("a\n\rb\r\nc", 7), 4U);
    EXPECT_EQ(CLineAt("a\r\nb", 2), 1U);
    EXPECT_EQ(CLineAt("a\r\nb", 3), 2U);
    EXPECT_EQ(CLineAt("a", 0), 1U);
}

TEST(COutlineTest, NothingIsOpenInAnEmptyText) {
    const COutline outline = OutlineC("");
    EXPECT_EQ(outline.openEnds, Ends{});
    EXPECT_EQ(outline.brace, COutline::None);
    EXPECT_EQ(outline.commentBrace, COutline::None);
}

TEST(COutlineTest, BehindAnOpenCommentOrLiteralBracesAreNotCounted) {
    EXPECT_EQ(OpenEndsOf("{ /* }"), (Ends{{OpenEndKind::Comment, 1}}));
    EXPECT_EQ(OpenEndsOf("{ \" }\n"), (Ends{{OpenEndKind::Literal, 1}}));
    EXPECT_EQ(OpenEndsOf("{ \"a\\"), (Ends{{OpenEndKind::Literal, 1}}));
}

TEST(COutlineTest, TheIndentationTellsWhichBraceIsMeant) {
    EXPECT_EQ(OpenEndsOf("{\n  {\n}\n"), (Ends{{OpenEndKind::Brace, 2}}));
    EXPECT_EQ(OpenEndsOf("{\n\t{\n    {\n\t}\n}\n"), (Ends{{OpenEndKind::Brace, 2}}));
    EXPECT_EQ(OpenEndsOf("{\n  }\n}\n"), (Ends{{OpenEndKind::StrayBrace, 2}}));
    EXPECT_EQ(OpenEndsOf("{\n{\n}\n"), (Ends{{OpenEndKind::Brace, 1}}));
}

TEST(COutlineTest, AConditionWithoutItsEndIsOpenAndBracesAreNotToldThen) {
    EXPECT_EQ(OpenEndsOf("int a;\n#if A\n{\n#if B\n#endif\n"), (Ends{{OpenEndKind::Conditional, 2}}));
    EXPECT_EQ(OpenEndsOf("#if A \\\n && B\n"), (Ends{{OpenEndKind::Conditional, 1}}));
    EXPECT_EQ(OpenEndsOf("#if A\n/*"), (Ends{{OpenEndKind::Comment, 2}}));
}

TEST(COutlineTest, ADeclarationIsOpenWithoutASemicolonOrABody) {
    const auto open = [](std::size_t line) { return Ends{{OpenEndKind::Declaration, line}}; };
    EXPECT_EQ(OpenEndsOf("int a;\nint b\n\n"), open(2));
    EXPECT_EQ(OpenEndsOf("struct S\n{\n  int x;\n}\n// }"), open(4));
    EXPECT_EQ(OpenEndsOf("int a[] = { 1, { 2 } }"), open(1));
    EXPECT_EQ(OpenEndsOf("void Foo(int n)\n"), open(1));
    EXPECT_EQ(OpenEndsOf("void F(int n) {}\nstatic"), open(2));
    EXPECT_EQ(OpenEndsOf("x = (1\n+ \"2\""), open(2));
    for (const char* text : {"", "x", "F(int)", "int F(void) {}", "struct S F(void) {}", "int a;;",
                             "int F(n) int n; {}", "#define A int a", "static LOCK(a)", "void F(int n\n{\n}",
                             "extern \"C\" {\nint a;\n}", "#if 0\nint a\n#endif", "int a\n#if A\n;\n#endif"}) {
        EXPECT_EQ(OpenEndsOf(text), Ends{}) << text;
    }
}

TEST(COutlineTest, BranchesOfThePreprocessorStandForOneAnother) {
    EXPECT_EQ(OpenEndsOf("#if A\n{\n#else\n{\n#endif\n}"), Ends{});
    EXPECT_EQ(OpenEndsOf("#if A\n{\n#elif B\n{\n#else\n{\n#endif\n"), (Ends{{OpenEndKind::Brace, 2}}));
    EXPECT_EQ(OpenEndsOf("#if 0\n{\n#else\n}\n#endif\n"), (Ends{{OpenEndKind::StrayBrace, 4}}));
    EXPECT_EQ(OpenEndsOf("#if 1\n{\n#else\n}\n#endif\n"), (Ends{{OpenEndKind::Brace, 2}}));
    EXPECT_EQ(OpenEndsOf("#if 0\n#if A\n{\n#else\n{\n#endif\n{\n#endif\n"), Ends{});
    EXPECT_EQ(OpenEndsOf("#else\n#endif\n#endif\n{}"), Ends{});
}

TEST(COutlineTest, FunctionsWithABodyAreDefinitions) {
    ExpectEach(DefinitionsOf, {{"void f(void) {}", "f:1"},
                               {"int\n*f(int (*g)(int))\n{ h(); if (a) {} }\nint k(void){}", "f:2 k:4"},
                               {"int f(a, b) int a; int b; {}", "f:1"},
                               {"f() {}", "f:1?"},
                               {"int f(void) __attribute__((cold)) {}", "f:1"},
                               {"#ifdef A\nint f(void) {}\n#endif\nint g(void) {}", "f:2# g:4"},
                               {"MODULE(x)\nint f(void) {}", "f:2"},
                               {"int f(int a {}", "f:1"}});
}

TEST(COutlineTest, WhatHasNoBodyIsNoDefinition) {
    for (const char* text : {"int f(void);", "int a = f(1);", "int a[] = {f(1)};", "struct f {int a;};", "int f;",
                             "/* int f(void) {} */", "#define f(a) {}\n", "#if 0\nint f(void) {}\n#endif",
                             "int f(void) __attribute__((cold)); struct s {int a;};", "int (*f)(void) = {0};"}) {
        EXPECT_EQ(DefinitionsOf(text), "") << text;
    }
}

TEST(COutlineTest, TheFirstBraceAndWhatStandsInFrontOfItAreKnown) {
    const COutline body = OutlineC("int f(void) // {\n{ {");
    EXPECT_EQ(body.commentBrace, 15U);
    EXPECT_EQ(body.brace, 17U);
    EXPECT_EQ(body.braceLine, 2U);
    EXPECT_TRUE(body.isBody);
    EXPECT_EQ(body.lastComment, 12U);
    EXPECT_EQ(body.lastCommentLine, 1U);
    EXPECT_TRUE(body.lastCommentIsLine);
    EXPECT_EQ(OutlineC("// x\nint f(void)\n{").lastComment, COutline::None);
    EXPECT_TRUE(OutlineC("int f(a) int a; {").isBody);
    EXPECT_TRUE(OutlineC("int f(void) COLD {").isBody);
    for (const char* text : {"int a[] = {", "struct {", "struct s {", "enum {", "union u {"}) {
        EXPECT_FALSE(OutlineC(text).isBody) << text;
    }
}

TEST(COutlineTest, DirectivesThatHideSomethingAreKnown) {
    EXPECT_TRUE(OutlineC("#define BEGIN {\n").hasBraceMacro);
    EXPECT_TRUE(OutlineC("#define A \\\n {").hasBraceMacro);
    EXPECT_FALSE(OutlineC("#define A { } \n#define B '{'\n#define C /* { */ 1").hasBraceMacro);
    EXPECT_TRUE(OutlineC("#include \"my.h\"").mayDefineMore);
    EXPECT_FALSE(OutlineC("#include <stdio.h>\n#pragma once").mayDefineMore);
}

} // namespace
} // namespace tessaly
