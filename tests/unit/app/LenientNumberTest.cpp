// Numbers as the program reads them from texts, and the rounding half to even.
#include "app/LenientNumber.h"

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
    EXPECT_EQ(LenientValue("12abc"), 12);
    EXPECT_EQ(LenientValue("12,5"), 12);
    EXPECT_EQ(LenientValue("12-5"), 12);
    EXPECT_EQ(LenientValue("1.2.3"), 1.2);
    EXPECT_EQ(LenientValue("007"), 7);
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
    EXPECT_EQ(LenientValue("-12"), -12);
    EXPECT_EQ(LenientValue("+12"), 12);
    EXPECT_EQ(LenientValue("2.5"), 2.5);
    EXPECT_EQ(LenientValue(".5"), 0.5);
    EXPECT_EQ(LenientValue("-.5"), -0.5);
    EXPECT_EQ(LenientValue("5."), 5);
    EXPECT_EQ(LenientValue("0.1"), 0.1);
}

TEST(LenientNumberTest, BlanksTabsAndLineFeedsAreSkippedAnywhere) {
    EXPECT_EQ(LenientValue(" \t\n12"), 12);
    EXPECT_EQ(LenientValue("1 2\t3\n4"), 1234);
    EXPECT_EQ(LenientValue("- 1 . 5 e 1"), -15);
    EXPECT_EQ(LenientValue("& H 1 0"), 16);
    EXPECT_EQ(LenientValue("  1615 198th Street"), 1615198);
}

TEST(LenientNumberTest, AnExponentIsMarkedByEOrD) {
    EXPECT_EQ(LenientValue("1e3"), 1000);
    EXPECT_EQ(LenientValue("1E3"), 1000);
    EXPECT_EQ(LenientValue("1d3"), 1000);
    EXPECT_EQ(LenientValue("1D+3"), 1000);
    EXPECT_EQ(LenientValue("25e-1"), 2.5);
    EXPECT_EQ(LenientValue("5.e1"), 50);
    EXPECT_EQ(LenientValue(".5d1x"), 5);
}

TEST(LenientNumberTest, AnExponentWithoutDigitsDoesNotBelongToTheNumber) {
    EXPECT_EQ(LenientValue("7e"), 7);
    EXPECT_EQ(LenientValue("7e+"), 7);
    EXPECT_EQ(LenientValue("7days"), 7);
    EXPECT_EQ(LenientValue("7ee2"), 7);
}

TEST(LenientNumberTest, HexadecimalAndOctalNumbersDoNotWrap) {
    EXPECT_EQ(LenientValue("&H1F"), 31);
    EXPECT_EQ(LenientValue("&h1fg"), 31);
    EXPECT_EQ(LenientValue("&HFFFF"), 65535);
    EXPECT_EQ(LenientValue("&HFFFFFFFF"), 4294967295.0);
    EXPECT_EQ(LenientValue("&H1.8"), 1);
    EXPECT_EQ(LenientValue("&H1E2"), 0x1E2) << "no exponent";
    EXPECT_EQ(LenientValue("&O17"), 15);
    EXPECT_EQ(LenientValue("&o178"), 15);
    EXPECT_EQ(LenientValue("-&H10"), -16);
}

TEST(LenientNumberTest, ANumberThatIsTooLargeIsTheLargestOne) {
    constexpr double largest = std::numeric_limits<double>::max();
    EXPECT_EQ(LenientValue("1e400"), largest);
    EXPECT_EQ(LenientValue("-1e400"), -largest);
    EXPECT_EQ(LenientValue("1e99999999999999999999"), largest);
    EXPECT_EQ(LenientValue(std::string(400, '9')), largest);
    EXPECT_EQ(LenientValue(std::string(400, '9') + "e-20"), largest);
    EXPECT_EQ(LenientValue("0." + std::string(50, '0') + "1e400"), largest);
    EXPECT_EQ(LenientValue("&H" + std::string(400, 'F')), largest);
}

TEST(LenientNumberTest, ANumberThatIsTooSmallIsZero) {
    EXPECT_EQ(LenientValue("1e-400"), 0);
    EXPECT_EQ(LenientValue("1e-99999999999999999999"), 0);
    EXPECT_EQ(LenientValue("0e400"), 0);
    EXPECT_EQ(LenientValue("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(LenientValue("0." + std::string(400, '0') + "1e20"), 0);
    EXPECT_EQ(LenientValue(std::string(50, '9') + "e-400"), 0);
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
    EXPECT_EQ(RoundToInteger(0.5), 0);
    EXPECT_EQ(RoundToInteger(1.5), 2);
    EXPECT_EQ(RoundToInteger(2.5), 2);
    EXPECT_EQ(RoundToInteger(3.5), 4);
    EXPECT_EQ(RoundToInteger(-0.5), 0);
    EXPECT_EQ(RoundToInteger(-1.5), -2);
    EXPECT_EQ(RoundToInteger(-2.5), -2);
}

TEST(RoundToIntegerTest, OtherFractionsGoToTheNearestNumber) {
    EXPECT_EQ(RoundToInteger(2.4999999999999996), 2);
    EXPECT_EQ(RoundToInteger(2.5000000000000004), 3);
    EXPECT_EQ(RoundToInteger(0.49999999999999994), 0);
    EXPECT_EQ(RoundToInteger(-2.6), -3);
    EXPECT_EQ(RoundToInteger(1e-320), 0);
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
    EXPECT_EQ(ToByte("0"), 0);
    EXPECT_EQ(ToByte("1"), 1);
    EXPECT_EQ(ToByte("255"), 255);
    EXPECT_EQ(ToByte(" \t1 "), 1);
    EXPECT_EQ(ToByte("+2.5e1"), 25);
    EXPECT_EQ(ToByte("-0"), 0);
}

TEST(ToByteTest, FractionsAreRoundedHalfToEven) {
    EXPECT_EQ(ToByte("0.5"), 0);
    EXPECT_EQ(ToByte("1.5"), 2);
    EXPECT_EQ(ToByte("2.5"), 2);
    EXPECT_EQ(ToByte("254.5"), 254);
    EXPECT_EQ(ToByte("255.4"), 255);
    EXPECT_EQ(ToByte("-0.5"), 0);
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
