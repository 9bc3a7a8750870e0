// Numbers as the program reads them from texts, and the rounding half to even.
#include "app/LenientNumber.h"

#include "tests/unit/Each.h"

#include <cfenv>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <stdexcept>
#include <string>

namespace tessaly {
namespace {

TEST(LenientNumberTest, TheNumberAtTheFrontCounts) {
    ExpectEach(LenientValue, {{"12abc", 12}, {"12,5", 12}, {"12-5", 12}, {"1.2.3", 1.2}, {"007", 7}});
    EXPECT_EQ(LenientValue("1\r2"), 1) << "a carriage return is not skipped";
    EXPECT_EQ(LenientValue(std::string("1\0002", 3)), 1);
}

TEST(LenientNumberTest, ATextWithoutANumberIsZero) {
    for (const char* text : {"",   " ", "abc", "-",  "+",   ".",   "-.",   "e5",  ".e5", "--5",  "+-5",     "-+5",
                             "$5", "&", "&H",  "&O", "&X1", "H10", "&H-1", "inf", "nan", "0x10", "\xC3\xBC"}) {
        EXPECT_EQ(LenientValue(text), 0) << text;
    }
}

TEST(LenientNumberTest, SignsAndFractionsAreTaken) {
    ExpectEach(LenientValue,
               {{"-12", -12}, {"+12", 12}, {"2.5", 2.5}, {".5", 0.5}, {"-.5", -0.5}, {"5.", 5}, {"0.1", 0.1}});
}

TEST(LenientNumberTest, BlanksTabsAndLineFeedsAreSkippedAnywhere) {
    ExpectEach(LenientValue, {{" \t\n12", 12},
                              {"1 2\t3\n4", 1234},
                              {"- 1 . 5 e 1", -15},
                              {"& H 1 0", 16},
                              {"  1615 198th Street", 1615198}});
}

TEST(LenientNumberTest, AnExponentIsMarkedByEOrD) {
    ExpectEach(
        LenientValue,
        {{"1e3", 1000}, {"1E3", 1000}, {"1d3", 1000}, {"1D+3", 1000}, {"25e-1", 2.5}, {"5.e1", 50}, {".5d1x", 5}});
}

TEST(LenientNumberTest, AnExponentWithoutDigitsDoesNotBelongToTheNumber) {
    ExpectEach(LenientValue, {{"7e", 7}, {"7e+", 7}, {"7days", 7}, {"7ee2", 7}});
}

TEST(LenientNumberTest, HexadecimalAndOctalNumbersDoNotWrap) {
    ExpectEach(LenientValue,
               {{"&H1F", 31}, {"&h1fg", 31}, {"&HFFFF", 65535}, {"&HFFFFFFFF", 4294967295.0}, {"&H1.8", 1}});
    EXPECT_EQ(LenientValue("&H1E2"), 0x1E2) << "no exponent";
    EXPECT_EQ(LenientValue("&O17"), 15);
    EXPECT_EQ(LenientValue("&o178"), 15);
    EXPECT_EQ(LenientValue("-&H10"), -16);
}

TEST(LenientNumberTest, ANumberThatIsTooLargeIsTheLargestOne) {
    constexpr double largest = std::numeric_limits<double>::max();
    ExpectEach(LenientValue, {{"1e400", largest},
                              {"-1e400", -largest},
                              {"1e99999999999999999999", largest},
                              {std::string(400, '9'), largest},
                              {std::string(400, '9') + "e-20", largest},
                              {"0." + std::string(50, '0') + "1e400", largest},
                              {"&H" + std::string(400, 'F'), largest}});
}

TEST(LenientNumberTest, ANumberThatIsTooSmallIsZero) {
    ExpectEach(LenientValue, {{"1e-400", 0},
                              {"1e-99999999999999999999", 0},
                              {"0e400", 0},
                              {"0." + std::string(400, '0') + "1", 0},
                              {"0." + std::string(400, '0') + "1e20", 0},
                              {std::string(50, '9') + "e-400", 0}});
}

class CommaForPoint : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(LenientNumberTest, TheLocaleDoesNotCount) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaForPoint));
    const double number = LenientValue("1234.5");
    std::locale::global(before);
    EXPECT_EQ(number, 1234.5);
}

TEST(RoundToIntegerTest, HalvesGoToTheEvenNumber) {
    ExpectEach(RoundToInteger, {{0.5, 0}, {1.5, 2}, {2.5, 2}, {3.5, 4}, {-0.5, 0}, {-1.5, -2}, {-2.5, -2}});
}

TEST(RoundToIntegerTest, OtherFractionsGoToTheNearestNumber) {
    ExpectEach(RoundToInteger,
               {{2.4999999999999996, 2}, {2.5000000000000004, 3}, {0.49999999999999994, 0}, {-2.6, -3}, {1e-320, 0}});
}

TEST(RoundToIntegerTest, TheRoundingModeDoesNotCount) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        const int before = std::fegetround();
        ASSERT_EQ(std::fesetround(mode), 0);
        const std::int32_t half = RoundToInteger(2.5);
        const std::int32_t more = RoundToInteger(2.75);
        const std::int32_t minus = RoundToInteger(-2.75);
        std::fesetround(before);
        EXPECT_EQ(half, 2) << mode;
        EXPECT_EQ(more, 3) << mode;
        EXPECT_EQ(minus, -3) << mode;
    }
}

TEST(RoundToIntegerTest, ThirtyTwoBitsAreTheLimit) {
    EXPECT_EQ(RoundToInteger(2147483647.0), 2147483647);
    EXPECT_EQ(RoundToInteger(2147483647.4), 2147483647);
    EXPECT_EQ(RoundToInteger(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(RoundToInteger(-2147483648.5), std::numeric_limits<std::int32_t>::min()) << "to the even one";
    for (const double number :
         {2147483647.5, 2147483648.0, -2147483648.6, -2147483649.0, 1e300, -1e300, std::numeric_limits<double>::max(),
          std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_THROW(RoundToInteger(number), std::range_error) << number;
    }
}

TEST(ToByteTest, ByteNumbersAreTaken) {
    ExpectEach(ToByte, {{"0", 0}, {"1", 1}, {"255", 255}, {" \t1 ", 1}, {"+2.5e1", 25}, {"-0", 0}});
}

TEST(ToByteTest, FractionsAreRoundedHalfToEven) {
    ExpectEach(ToByte, {{"0.5", 0}, {"1.5", 2}, {"2.5", 2}, {"254.5", 254}, {"255.4", 255}, {"-0.5", 0}});
}

TEST(ToByteTest, OtherNumbersAreOutOfRange) {
    for (const char* text : {"256", "255.5", "-1", "-0.6", "2147483647", "-2147483648"}) {
        EXPECT_THROW(ToByte(text), std::range_error) << text;
    }
}

TEST(ToByteTest, WhatIsNoNumberThroughoutIsNotTaken) {
    for (const char* text : {"", " ", "abc", "1abc", "1 2", "&H1", "1,5", "1e", "99999999999"}) {
        EXPECT_THROW(ToByte(text), std::invalid_argument) << text;
    }
}

} // namespace
} // namespace tessaly
