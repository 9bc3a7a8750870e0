// The small text tools: case folding, keys, numbers, UTF-8, new functions.
#include "document/NewFunction.h"
#include "document/TextValue.h"
#include "platform/text/Ascii.h"
#include "platform/text/CaseFold.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"
#include "tests/unit/Each.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(CaseFoldTest, AsciiAndUmlautsMeetTheirSmallLetters) {
    ExpectEach(FoldCase, {{"OnTick_9[]", "ontick_9[]"},
                          {"ABYZ@[`{", "abyz@[`{"},
                          {"ÄÖÜ äöü", "äöü äöü"},
                          {"ŠŒŽŸ", "šœžÿ"},
                          {"ΑΒΓΩ ЖЯ", "αβγω жя"}});
}

TEST(CaseFoldTest, LettersWithoutAOneToOnePairStayThemselves) {
    for (const char* letter : {"ß", "ẞ", "ı", "İ", "µ", "ς", "ſ", "\u212A", "\u2126", "\u01C5", "ª", "×", "÷"}) {
        EXPECT_EQ(FoldCase(letter), letter);
    }
}

TEST(CaseFoldTest, WhatIsNoTextStaysAsItIs) {
    EXPECT_EQ(FoldCase("A\xFFZ\xC3"), "a\xFFz\xC3");
}

TEST(CaseFoldTest, FoldingTwiceChangesNothingMore) {
    for (char32_t character = 1; character <= 0x10FFFF; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF) {
            continue;
        }
        std::string text;
        AppendUtf8(character, text);
        const std::string folded = FoldCase(text);
        ASSERT_EQ(FoldCase(folded), folded) << static_cast<unsigned>(character);
    }
}

TEST(CaseFoldTest, AKeyIsFoundAnywhereWithoutRegardToCase) {
    for (const char* line : {"NumFuncs=", "numfuncs= 3", "x NUMFUNCS=", "=NumFuncs=", "NumFuncs==", "äNumFuncs=ä"}) {
        EXPECT_TRUE(ContainsKey(line, "NumFuncs=")) << line;
    }
    for (const char* line : {"", "=", "NumFuncs", "NumFuncs =", "umFuncs=", "NumFunc=s", "Num=Funcs="}) {
        EXPECT_FALSE(ContainsKey(line, "NumFuncs=")) << line;
    }
}

TEST(NumberTextTest, NumbersAreTakenWithBlanksSignFractionAndExponent) {
    const std::pair<const char*, std::int32_t> numbers[] = {
        {"0", 0},
        {" 2", 2},
        {"\t2 \t", 2},
        {"+2", 2},
        {"-2", -2},
        {"007", 7},
        {"2.", 2},
        {".5", 0},
        {"2.4", 2},
        {"2.6", 3},
        {"1e3", 1000},
        {"1E+3", 1000},
        {"12e-1", 1},
        {"0e99999999999", 0},
        {"1e-99999999999", 0},
        {"-0", 0},
        {"0.00002e5", 2},
        {"2147483647", 2147483647},
        {"2147483647.4", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"-2147483648.5", -2147483647 - 1},
        {"000000000000000000001", 1},
    };
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(ToInteger(text), number) << text;
    }
}

TEST(NumberTextTest, AHalfIsRoundedToTheEvenNeighbour) {
    const std::pair<const char*, std::int32_t> numbers[] = {{"0.5", 0},
                                                            {"1.5", 2},
                                                            {"2.5", 2},
                                                            {"3.5", 4},
                                                            {"-0.5", 0},
                                                            {"-1.5", -2},
                                                            {"-2.5", -2},
                                                            {"2.50", 2},
                                                            {"2.51", 3},
                                                            {"2.5000000000000000000000001", 3},
                                                            {"2.4999999999999999999999999", 2},
                                                            {"25e-1", 2},
                                                            {"0.05e1", 0},
                                                            {"0.05", 0}};
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(ToInteger(text), number) << text;
    }
}

TEST(NumberTextTest, AnythingElseIsNoNumber) {
    for (const char* text : {"",
                             " ",
                             "+",
                             "-",
                             ".",
                             "e5",
                             "1e",
                             "1e+",
                             "1 2",
                             "1x",
                             "x1",
                             "0x10",
                             "&H10",
                             "1,000",
                             "1.2.3",
                             "--1",
                             "- 1",
                             "1-",
                             "(1)",
                             "\n1",
                             "1\r",
                             "\xC2\xA0"
                             "1",
                             "1d3",
                             "inf",
                             "nan"}) {
        EXPECT_EQ(ToInteger(text), std::nullopt) << text;
    }
}

TEST(NumberTextTest, ANumberBeyondThirtyTwoBitsIsNoNumber) {
    for (const char* text : {"2147483648", "2147483647.5", "-2147483649", "-2147483648.6", "1e10",
                             "1e99999999999999999999", "99999999999999999999999999"}) {
        EXPECT_EQ(ToInteger(text), std::nullopt) << text;
    }
}

TEST(Utf8Test, OnlyTheFormsOfTheStandardAreValid) {
    for (const char* text : {"", "abc", "ä€😀", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(IsUtf8(text)) << text;
    }
    for (const char* text : {"\x80", "\xC3", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
                             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF",
                             "a\xC3"
                             "b",
                             "\xE2\x82"}) {
        EXPECT_FALSE(IsUtf8(text)) << text;
    }
}

TEST(Utf8Test, EveryCharacterIsReadBackAsItWasAppended) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (character < 0xD800 || character > 0xDFFF) {
            std::string text;
            AppendUtf8(character, text);
            std::size_t position = 0;
            ASSERT_EQ(ReadUtf8(text, position), character);
            ASSERT_EQ(position, text.size());
        }
    }
}

TEST(Utf8Test, AsciiPrefixStopsAtTheFirstOtherByteWhereverItStands) {
    for (std::size_t size : {0U, 1U, 63U, 64U, 65U, 200U}) {
        EXPECT_EQ(AsciiPrefix(std::string(size, 'a')), size);
        EXPECT_EQ(AsciiPrefix(std::string(size, 'a') + "\x80" + std::string(100, 'a')), size);
    }
}

TEST(Utf8Test, PositionsCountCharacters) {
    EXPECT_EQ(Utf8Position("aä€b", 0), 0U);
    EXPECT_EQ(Utf8Position("aä€b", 2), 3U);
    EXPECT_EQ(Utf8Position("aä€b", 3), 6U);
    EXPECT_EQ(Utf8Position("aä€b", 9), 7U);
}

TEST(NewFunctionTest, NamesOfLettersAndDigitsAreAccepted) {
    for (const char* name : {"ABC123", "abc", "Z", "z9", "A0", ""}) {
        EXPECT_EQ(CheckFunctionName(name), NameCheck::Accepted) << name;
    }
}

TEST(NewFunctionTest, ALeadingDigitComesBeforeABadCharacter) {
    for (const char* name : {"1abc", "0", "9_", "5 "}) {
        EXPECT_EQ(CheckFunctionName(name), NameCheck::BeginsWithDigit) << name;
    }
}

TEST(NewFunctionTest, AnyOtherCharacterIsBad) {
    for (const char* name : {"abc_1", "a b", "Größe", "_", " a", "a,b", "a@", "a[", "a`", "a{", "a/", "a:", "a\n"}) {
        EXPECT_EQ(CheckFunctionName(name), NameCheck::BadCharacter) << name;
    }
}

TEST(NewFunctionTest, ANewFunctionHasOneEmptyLineBetweenItsBraces) {
    EXPECT_EQ(NewFunctionText("Blink"), "void Blink(void)\n{\n\n}");
}

TEST(AsciiTest, OnlyLettersChangeTheirCase) {
    EXPECT_EQ(SmallLetters("AZ az @[`{ 09 \xC3\x84"), "az az @[`{ 09 \xC3\x84");
    EXPECT_EQ(CapitalLetters("AZ az @[`{ 09 \xC3\xA4"), "AZ AZ @[`{ 09 \xC3\xA4");
    EXPECT_TRUE(EqualsIgnoringCase("aBc", "AbC"));
    EXPECT_FALSE(EqualsIgnoringCase("ab", "abc"));
    EXPECT_FALSE(EqualsIgnoringCase("@", "`"));
}

TEST(AsciiTest, WhatIsThereIsTakenOffTheFront) {
    std::string_view text = "-+012x";
    EXPECT_FALSE(Take(text, "+"));
    EXPECT_TRUE(TakeMinus(text));
    EXPECT_FALSE(TakeMinus(text));
    EXPECT_EQ(TakeDigits(text), "012");
    EXPECT_EQ(TakeDigits(text), "");
    EXPECT_EQ(text, "x");
}

TEST(Utf16Test, WhatIsEncodedIsDecodedAgain) {
    const std::string text = "a\xC3\xA4\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    const std::string bytes("a\0\xE4\0\xFF\xFF\0\xD8\0\xDC\xFF\xDB\xFF\xDF", 14);
    EXPECT_EQ(EncodeUtf16(text), bytes);
    EXPECT_EQ(DecodeUtf16(bytes), text);
    EXPECT_EQ(EncodeUtf16("\xFFx\xC3"), std::string("\xFD\xFFx\0\xFD\xFF", 6)) << "two bytes for each that is broken";
}

} // namespace
} // namespace tessaly
