// What an editor colours in C.
#include "syntax/CSyntax.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace tessaly {
namespace {

// The tokens of a text, one letter a character: k keyword, t type, s string, c comment, n number, p preprocessor,
// blank for the rest. Lines are separated by "|" there and by LF in the text.
std::string Colours(std::u16string_view text, CLineState* last = nullptr) {
    std::string colours;
    CLineState state = CLineState::Code;
    std::vector<CToken> tokens;
    for (std::size_t start = 0;;) {
        const std::size_t end = std::min(text.find(u'\n', start), text.size());
        state = ScanCLine(text.substr(start, end - start), state, tokens);
        std::string line(end - start, ' ');
        for (const CToken& token : tokens) {
            line.replace(token.start, token.length, token.length, "ktscnp"[static_cast<std::size_t>(token.kind)]);
        }
        colours += line;
        if (end == text.size()) {
            break;
        }
        colours += '|';
        start = end + 1;
    }
    if (last != nullptr) {
        *last = state;
    }
    return colours;
}

CLineState StateBehind(std::u16string_view text) {
    CLineState state = CLineState::Code;
    Colours(text, &state);
    return state;
}

TEST(CSyntax, AFunctionHasItsKeywordsTypesAndNumbers) {
    EXPECT_EQ(Colours(u"int f(void)"), //
              "ttt   tttt ");
    EXPECT_EQ(Colours(u"return 12*x;"), //
              "kkkkkk nn   ");
    EXPECT_EQ(Colours(u"unsigned long long n = sizeof(uint8_t);"), //
              "tttttttt tttt tttt     kkkkkk ttttttt  ");
}

TEST(CSyntax, AWordThatOnlyHoldsAKeywordIsPlain) {
    EXPECT_EQ(Colours(u"integer int_ _int ifx If"), std::string(24, ' '));
    EXPECT_EQ(Colours(u"gr\u00f6\u00dfeint"), std::string(8, ' '));
}

TEST(CSyntax, NumbersTakeWhatAPreprocessingNumberTakes) {
    EXPECT_EQ(Colours(u"0x1Fu+1.5e-3f-.5L"), //
              "nnnnn nnnnnnn nnn");
    EXPECT_EQ(Colours(u"a.b x1 1.."), //
              "       nnn");
    EXPECT_EQ(Colours(u"0x1p+4"), "nnnnnn");
}

TEST(CSyntax, ALiteralEndsAtItsOwnQuote) {
    EXPECT_EQ(Colours(u"a=\"x\\\"y'\"+'\\''+L\"w\"+u8'c';"), //
              "  sssssss ssss ssss sssss ");
}

TEST(CSyntax, AnUnfinishedLiteralEndsWithItsLine) {
    EXPECT_EQ(Colours(u"\"open\nint"), "sssss|ttt");
    EXPECT_EQ(Colours(u"'\nint"), "s|ttt");
}

TEST(CSyntax, ABackslashAtTheEndCarriesALiteralOn) {
    EXPECT_EQ(Colours(u"\"a\\\nb\" int"), "sss|ss ttt");
    EXPECT_EQ(Colours(u"\"a\\\\\nb int"), "ssss|  ttt"); // an escaped one does not
    EXPECT_EQ(StateBehind(u"'\\"), CLineState::Character);
}

TEST(CSyntax, ABlockCommentGoesOverLines) {
    EXPECT_EQ(Colours(u"int/*a\n\nint*/int"), "tttccc||cccccttt");
    EXPECT_EQ(Colours(u"/*/ int */"), "cccccccccc");
    EXPECT_EQ(StateBehind(u"/* \"*"), CLineState::BlockComment);
}

TEST(CSyntax, ALineCommentGoesOnBehindABackslash) {
    EXPECT_EQ(Colours(u"// a\nint"), "cccc|ttt");
    EXPECT_EQ(Colours(u"// a\\\nint\nint"), "ccccc|ccc|ttt");
    EXPECT_EQ(Colours(u"x // \"/*\nint"), "  cccccc|ttt");
}

TEST(CSyntax, NoCommentBeginsInALiteral) {
    EXPECT_EQ(Colours(u"\"/*\" '//' int"), "ssss ssss ttt");
}

TEST(CSyntax, ADirectiveHasOneColourButForCommentsAndLiterals) {
    EXPECT_EQ(Colours(u"  #define X int 3 // c"), //
              "  ppppppppppppppppcccc");
    EXPECT_EQ(Colours(u"#include \"a.h\"\nint"), //
              "pppppppppsssss|ttt");
    EXPECT_EQ(Colours(u"/**/ # if 1"), "cccc pppppp");
}

TEST(CSyntax, AHashBehindCodeIsNoDirective) {
    EXPECT_EQ(Colours(u"x #define int"), "          ttt");
    EXPECT_EQ(Colours(u"\"\" # int"), "ss   ttt");
}

TEST(CSyntax, ADirectiveGoesOnBehindABackslash) {
    EXPECT_EQ(Colours(u"#define X \\\nint \\\nint\nint"), "ppppppppppp|ppppp|ppp|ttt");
}

TEST(CSyntax, ADirectiveGoesOnBehindACommentInIt) {
    EXPECT_EQ(Colours(u"#define X /*\n*/ int\nint"), "ppppppppppcc|ccpppp|ttt");
}

TEST(CSyntax, ALiteralCarriedOnInADirectiveEndsIntoTheDirective) {
    EXPECT_EQ(Colours(u"#define X \"a\\\nb\" int\nint"), "ppppppppppsss|sspppp|ttt");
    EXPECT_EQ(StateBehind(u"#define X '\\"), CLineState::PreprocessorCharacter);
}

TEST(CSyntax, ALineCommentCarriedOnEndsItsDirective) {
    EXPECT_EQ(Colours(u"#define X // a\\\nint\nint"), "ppppppppppccccc|ccc|ttt");
}

TEST(CSyntax, AnyTextGivesTokensInOrderWithinTheLine) {
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same texts in every run
    const std::u16string letters = u"/*\"'\\#intuL80.e+ \t\u00e4\xd800";
    std::vector<CToken> tokens;
    for (int i = 0; i < 20000; ++i) {
        std::u16string line(random() % 12, u' ');
        for (char16_t& character : line) {
            character = letters[random() % letters.size()];
        }
        for (int before = 0; before <= static_cast<int>(CLineState::PreprocessorCharacter); ++before) {
            ScanCLine(line, static_cast<CLineState>(before), tokens);
            std::size_t end = 0;
            for (const CToken& token : tokens) {
                ASSERT_GE(token.start, end);
                ASSERT_GT(token.length, 0U);
                end = token.start + token.length;
            }
            ASSERT_LE(end, line.size());
        }
    }
}

} // namespace
} // namespace tessaly
