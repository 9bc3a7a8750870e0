// The marks of lines, by themselves: each case is a text with a mark on each line, and an edit of it.
#include "platform/desktop/LineMarks.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

std::size_t Breaks(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

LineSpan SpanOf(const std::string& text, std::size_t line) {
    std::size_t begin = 0;
    for (; line > 1; --line) {
        begin = text.find('\n', begin) + 1;
    }
    return {begin, std::min(text.find('\n', begin), text.size())};
}

class LineMarksTest : public testing::Test {
protected:
    explicit LineMarksTest() { Begin("ab\ncd\n\nef"); }

    // Every line of the text is marked with an error, and all of it is underlined.
    void Begin(const std::string& text) {
        mText = text;
        std::vector<LineMark> all;
        for (std::size_t line = 1; line <= Breaks(text) + 1; ++line) {
            const LineSpan span = SpanOf(text, line);
            all.push_back({line, Mark::Error, span.begin, span.end});
        }
        marks.Set(all, all.size(), [this](std::size_t line) { return SpanOf(mText, line); });
    }

    bool Edit(std::size_t start, std::size_t removed, const std::string& added) {
        const TextEdit edit = {start,
                               removed,
                               added.size(),
                               Breaks(mText.substr(0, start)) + 1,
                               Breaks(mText.substr(start, removed)),
                               Breaks(added)};
        mText.replace(start, removed, added);
        return marks.Follow(edit, [this](std::size_t line) { return SpanOf(mText, line); });
    }

    // "1:ab" for a mark on line 1 under "ab".
    std::string Left() const {
        std::string left;
        for (const LineMark& mark : marks.All()) {
            left += std::to_string(mark.line) + ":" + mText.substr(mark.begin, mark.end - mark.begin) + " ";
        }
        return left;
    }

    LineMarks marks;

private:
    std::string mText;
};

TEST_F(LineMarksTest, AnEditInALineTakesOnlyItsUnderline) {
    EXPECT_TRUE(Edit(4, 0, "x"));
    EXPECT_EQ(Left(), "1:ab 2: 3: 4:ef ");
    EXPECT_FALSE(Edit(4, 1, ""));
    EXPECT_EQ(Left(), "1:ab 2: 3: 4:ef ");
}

TEST_F(LineMarksTest, AnEditAtAnEdgeOfALineIsOneOfTheLine) {
    Edit(3, 0, "x");
    EXPECT_EQ(Left(), "1:ab 2: 3: 4:ef ");
    Edit(10, 0, "x");
    EXPECT_EQ(Left(), "1:ab 2: 3: 4: ");
}

TEST_F(LineMarksTest, ANewLineBehindAWholeOneLeavesItAlone) {
    EXPECT_FALSE(Edit(2, 0, "\n"));
    EXPECT_EQ(Left(), "1:ab 3:cd 4: 5:ef ");
    EXPECT_FALSE(Edit(6, 0, "\nxy"));
    EXPECT_EQ(Left(), "1:ab 3:cd 5: 6:ef ");
}

TEST_F(LineMarksTest, ANewLineInFrontOfAWholeOneMovesIt) {
    EXPECT_FALSE(Edit(3, 0, "xy\n\n"));
    EXPECT_EQ(Left(), "1:ab 4:cd 5: 6:ef ");
    EXPECT_FALSE(Edit(0, 0, "\n"));
    EXPECT_EQ(Left(), "2:ab 5:cd 6: 7:ef ");
}

TEST_F(LineMarksTest, OfALineThatIsBrokenTheMarkGoesWithWhatWasUnderlined) {
    marks.Set(std::vector<LineMark>{{2, Mark::Error, 4, 5}, {1, Mark::Error, 0, 1}}, 4,
              [](std::size_t line) { return SpanOf("ab\ncd\n\nef", line); });
    Edit(4, 0, "\n");
    EXPECT_EQ(Left(), "3: 1:a ");
    Edit(1, 0, "\n");
    EXPECT_EQ(Left(), "4: 1: ");
}

TEST_F(LineMarksTest, ALineThatIsGoneHasNoMark) {
    EXPECT_TRUE(Edit(3, 3, "")); // from its beginning to that of the next one
    EXPECT_EQ(Left(), "1:ab 2: 3:ef ");
    Begin("ab\ncd\nef");
    EXPECT_TRUE(Edit(2, 3, "")); // from the end of the one before to its own
    EXPECT_EQ(Left(), "1:ab 2:ef ");
    Begin("ab\ncd\nef");
    EXPECT_TRUE(Edit(1, 6, "x"));
    EXPECT_EQ(Left(), "1: 1: ");
}

TEST_F(LineMarksTest, LinesThatAreJoinedKeepTheirMarksWithoutUnderlines) {
    EXPECT_TRUE(Edit(2, 1, ""));
    EXPECT_EQ(Left(), "1: 1: 2: 3:ef ");
}

TEST_F(LineMarksTest, AnEmptyLineThatIsJoinedLeavesTheOtherWhole) {
    Begin("ab\n\ncd");
    Edit(3, 1, "");
    EXPECT_EQ(Left(), "1:ab 2:cd ");
}

TEST_F(LineMarksTest, AllThatIsReplacedIsGone) {
    EXPECT_TRUE(Edit(0, 9, "x\ny"));
    EXPECT_EQ(Left(), "");
    EXPECT_FALSE(Edit(0, 0, "z"));
}

TEST_F(LineMarksTest, AnEditOfNothingChangesNothing) {
    EXPECT_FALSE(Edit(4, 0, ""));
    EXPECT_EQ(Left(), "1:ab 2:cd 3: 4:ef ");
}

TEST_F(LineMarksTest, TheGravestMarkOfALineCounts) {
    const auto find = [](std::size_t line) { return SpanOf("a\nb", line); };
    marks.Set(std::vector<LineMark>{{1, Mark::Warning, 0, 0}, {1, Mark::Error, 0, 0}, {2, Mark::Warning, 0, 0}}, 2,
              find);
    EXPECT_EQ(marks.On(1), Mark::Error);
    EXPECT_EQ(marks.On(2), Mark::Warning);
    EXPECT_EQ(marks.On(3), Mark::None);
}

TEST_F(LineMarksTest, WhatDoesNotFitIsCutOff) {
    const auto find = [](std::size_t line) { return SpanOf("ab\ncd", line); };
    marks.Set(std::vector<LineMark>{{0, Mark::Error, 0, 1},
                                    {1, Mark::Error, 1, 5},
                                    {2, Mark::Error, 0, 100},
                                    {2, Mark::Error, 5, 4},
                                    {2, Mark::None, 3, 4},
                                    {3, Mark::Error, 3, 4}},
              2, find);
    EXPECT_EQ(marks.All(),
              (std::vector<LineMark>{{1, Mark::Error, 1, 2}, {2, Mark::Error, 3, 5}, {2, Mark::Error, 5, 5}}));
}

} // namespace
} // namespace tessaly
