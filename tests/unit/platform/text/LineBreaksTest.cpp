// Line breaks of a text that a user edits.
#include "platform/text/LineBreaks.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {
namespace {

TEST(BreakListTest, ATextThatWasNotEditedComesBack) {
    for (const std::string_view text : {"", "a", "\n", "\r", "\r\n", "\n\r", "\r\r\n\n", "a\nb\r\nc\rd", "a\r\n\r\n"}) {
        BreakList breaks;
        EXPECT_EQ(breaks.Apply(breaks.Set(text)), text);
    }
}

TEST(BreakListTest, EveryBreakIsShownAsOneLineFeed) {
    BreakList breaks;
    EXPECT_EQ(breaks.Set("a\nb\r\nc\rd\r\r\n"), "a\nb\nc\nd\n\n");
    EXPECT_EQ(breaks.Set("\n\r\n\r"), "\n\n\n") << "a carriage return belongs to the line feed behind it";
}

TEST(BreakListTest, ANulByteIsText) {
    BreakList breaks;
    EXPECT_EQ(breaks.Apply(breaks.Set(std::string_view("a\0\nb", 4))), std::string_view("a\0\nb", 4));
}

TEST(BreakListTest, SetForgetsWhatWasThere) {
    BreakList breaks;
    breaks.Set("a\rb\rc");
    EXPECT_EQ(breaks.Apply(breaks.Set("x\n")), "x\n");
}

TEST(BreakListTest, ALoneCarriageReturnAndALoneLineFeedBroughtTogetherStayTwoBreaks) {
    BreakList breaks;
    breaks.Set("a\rX\nb");
    EXPECT_EQ(breaks.Apply("a\n\nb"), "a\r\r\nb");
    EXPECT_EQ(breaks.Set("a\r\r\nb"), "a\n\nb");
}

TEST(BreakListTest, SomeOfTheBreaksAreTold) {
    BreakList breaks;
    breaks.Set("a\nb\r\nc\rd");
    EXPECT_EQ(breaks.Some(1, 2), (std::vector{LineBreak::CrLf, LineBreak::Cr}));
    EXPECT_TRUE(breaks.Some(3, 0).empty());
}

TEST(BreakListTest, WhatTheUserDidNotTouchKeepsItsBreaks) {
    BreakList breaks;
    EXPECT_EQ(breaks.Set("a\nb\rc\r\nd"), "a\nb\nc\nd");
    EXPECT_EQ(breaks.Apply("a\nb\nc\nd"), "a\nb\rc\r\nd");
    EXPECT_TRUE(breaks.Replace(1, 0, {LineBreak::CrLf, LineBreak::CrLf}).empty());
    EXPECT_EQ(breaks.Apply("a\n1\n2\nb\nc\nd"), "a\n1\r\n2\r\nb\rc\r\nd");
    EXPECT_EQ(breaks.Replace(0, 4, {LineBreak::CrLf}),
              (std::vector{LineBreak::Lf, LineBreak::CrLf, LineBreak::CrLf, LineBreak::Cr}));
    EXPECT_EQ(breaks.Apply("x\nc\nd"), "x\r\nc\r\nd");
}

TEST(BreakListTest, WhatReachesBeyondTheLastBreakIsLeftOut) {
    BreakList breaks;
    breaks.Set("a\nb");
    breaks.Replace(5, 3, {LineBreak::CrLf});
    EXPECT_EQ(breaks.Apply("a\nb\nc"), "a\nb\r\nc");
    breaks.Replace(1, 9, {});
    EXPECT_EQ(breaks.Apply("a\nb"), "a\nb");
}

TEST(BreakListTest, ATextOfFewerBreaksIsNotReadBeyondItsEnd) {
    BreakList breaks;
    breaks.Set("a\nb\nc");
    EXPECT_EQ(breaks.Apply("a"), "a\n\n") << "every break is kept";
}

} // namespace
} // namespace tessaly
