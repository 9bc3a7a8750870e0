// A position in a text as it was built, in the text as it is now.
#include "diagnostics/NearestLines.h"

#include <gtest/gtest.h>

namespace tessaly {

void PrintTo(const TextPosition& position, std::ostream* stream) {
    *stream << position.line << ":" << position.column;
}

namespace {

std::size_t Nearest(std::string_view before, std::string_view now, std::size_t line) {
    return NearestLines(before, now).Find(line);
}

TextPosition Nearest(std::string_view before, std::string_view now, TextPosition position) {
    return NearestLines(before, now).Find(position);
}

constexpr std::string_view Text = "void F(int n)\n{\n    n = 1;\n    n = two;\n}";

TEST(NearestLinesTest, AnUnchangedTextKeepsItsLines) {
    for (std::size_t line = 1; line <= 5; ++line) {
        EXPECT_EQ(Nearest(Text, Text, line), line);
    }
    EXPECT_EQ(Nearest(Text, Text, TextPosition{4, 9}), (TextPosition{4, 9}));
}

TEST(NearestLinesTest, LinesInFrontMoveIt) {
    EXPECT_EQ(Nearest(Text, "/* new */\r\n\r\nvoid F(int n)\r\n{\r\n    n = 1;\r\n    n = two;\r\n}\r\n\r\n", 4), 6U);
    EXPECT_EQ(Nearest(Text, "void F(int n)\n{\n    n = two;\n}", 4), 3U);
    EXPECT_EQ(Nearest("a\rb\r\nc\nd", "x\na\nb\nc\nd", 4), 5U);
}

TEST(NearestLinesTest, AChangedLineIsTheMostAlike) {
    EXPECT_EQ(Nearest(Text, "void F(int n)\n{\n    n = 1;\n    m = 7 + 1;\n    n = twelve;\n}", 4), 5U);
    EXPECT_EQ(Nearest(Text, "void F(int n)\n{\n    n = 1;\n    call();\n    other();\n}", 4), 4U);
}

TEST(NearestLinesTest, ALineThatIsGoneIsTheNext) {
    EXPECT_EQ(Nearest(Text, "void F(int n)\n{\n    n = 1;\n}", 4), 4U);
    EXPECT_EQ(Nearest("a\nb\nc", "a\nb", 3), 2U);
    EXPECT_EQ(Nearest("a\nb\nc", "", 2), 1U);
    EXPECT_EQ(Nearest("", "a\nb", 1), 1U);
}

TEST(NearestLinesTest, LinesThatDoNotExistAreTheFirstOrTheLast) {
    EXPECT_EQ(Nearest(Text, Text, 0), 1U);
    EXPECT_EQ(Nearest(Text, Text, 99), 5U);
    EXPECT_EQ(Nearest(Text, Text, TextPosition{99, 3}), (TextPosition{5, 0}));
}

TEST(NearestLinesTest, AColumnGoesWithItsText) {
    EXPECT_EQ(Nearest("  n = two;", "\tn = two;", TextPosition{1, 7}), (TextPosition{1, 6}));
    EXPECT_EQ(Nearest("n = two; // x", "n = two; // other", TextPosition{1, 5}), (TextPosition{1, 5}));
    EXPECT_EQ(Nearest("int n = two;", "/* \xF0\x9F\x98\x80\xC3\xA4 */ int n = two;", TextPosition{1, 9}),
              (TextPosition{1, 19}));
    EXPECT_EQ(Nearest("\xF0\x9F\x98\x80 n;", "  \xF0\x9F\x98\x80 n;", TextPosition{1, 4}), (TextPosition{1, 6}));
    EXPECT_EQ(Nearest("aaaaaaaaab", "xaaay", TextPosition{1, 9}), (TextPosition{1, 6}));
    EXPECT_EQ(Nearest(Text, "void F(int n)\n{\n    n = 1;\n    n = two;\n}", TextPosition{4, 0}), (TextPosition{4, 0}));
}

TEST(NearestLinesTest, LongTextsThatHaveLittleInCommonTakeNoTime) {
    std::string before;
    std::string now;
    for (int i = 0; i < 60000; ++i) {
        before += std::to_string(i % 997) + "\n";
        now += std::to_string(i * 7 % 991) + "\n";
    }
    const NearestLines lines(before, now);
    for (std::size_t line = 1; line <= 60000; ++line) {
        EXPECT_LE(lines.Find(line), 60001U);
    }
}

} // namespace
} // namespace tessaly
