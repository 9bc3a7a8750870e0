#include "editing/Find.h"

#include "tests/unit/editing/TextModel.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

// The places as "LINE:COLUMN+LENGTH", counted from 0.
std::string Found(std::string_view text, std::string_view pattern, FindOptions options = {}) {
    std::string all;
    for (const Match& match : FindAll(text, pattern, options)) {
        all += (all.empty() ? "" : " ") + std::to_string(match.begin.line) + ":" + std::to_string(match.begin.column) +
               "+" + std::to_string(match.length);
    }
    return all;
}

TEST(FindTest, CaseMattersOnlyWhereItIsAskedFor) {
    EXPECT_EQ(Found("Can can CAN", "can"), "0:0+3 0:4+3 0:8+3");
    EXPECT_EQ(Found("Can can CAN", "can", {.isCaseSensitive = true}), "0:4+3");
    EXPECT_EQ(Found("ÄRGER Ärger", "ärger"), "0:0+5 0:6+5");
    EXPECT_EQ(Found("ÄRGER Ärger", "Ärger", {.isCaseSensitive = true}), "0:6+5");
}

TEST(FindTest, EachKindOfBreakEndsALine) {
    EXPECT_EQ(Found("a\nba\r\na\rxa\n\na", "a"), "0:0+1 1:1+1 2:0+1 3:1+1 5:0+1");
}

TEST(FindTest, ColumnsAndLengthsCountUnits) {
    EXPECT_EQ(Found("ä😀x😀x", "x"), "0:3+1 0:6+1");
    EXPECT_EQ(Found("ä😀x", "😀X"), "0:1+3");
}

TEST(FindTest, AWholeWordHasNoneOfItsOwnBesideIt) {
    EXPECT_EQ(Found("can _can can1 (can) ücan can", "can", {.isWholeWord = true}), "0:0+3 0:15+3 0:25+3");
    EXPECT_EQ(Found("aa aaa aa", "aa", {.isWholeWord = true}), "0:0+2 0:7+2");
    EXPECT_EQ(Found("a->b", "->", {.isWholeWord = true}), "") << "letters stand beside it";
}

TEST(FindTest, MatchesDoNotOverlap) {
    EXPECT_EQ(Found("aaaaa", "aa"), "0:0+2 0:2+2");
}

TEST(FindTest, NothingIsNotFound) {
    EXPECT_EQ(Found("abc", ""), "");
    EXPECT_EQ(Found("", "a"), "");
    EXPECT_EQ(Found("a\nb", "a\nb"), "") << "a match is in one line";
}

TEST(FindTest, TheNextOneIsAroundTheEndsOfTheText) {
    const std::vector<Match> matches = FindAll("x.x\nx", "x", {});
    EXPECT_EQ(NextMatch(matches, {0, 0}, true), 0U);
    EXPECT_EQ(NextMatch(matches, {0, 1}, true), 1U);
    EXPECT_EQ(NextMatch(matches, {0, 3}, true), 2U);
    EXPECT_EQ(NextMatch(matches, {1, 1}, true), 0U);
    EXPECT_EQ(NextMatch(matches, {1, 0}, false), 1U);
    EXPECT_EQ(NextMatch(matches, {0, 2}, false), 0U);
    EXPECT_EQ(NextMatch(matches, {0, 0}, false), 2U);
}

TEST(FindTest, AllAreReplacedAndTheLastOneIsSelected) {
    TextModel text("a▮ bb a\na");
    text.Do(ReplaceAll(FindAll(text.Text(), "a", {}), u"long"));
    EXPECT_EQ(text.Written(), "long bb long\n▯long▮");
    text.Do(ReplaceAll(FindAll(text.Text(), "long bb", {}), u""));
    EXPECT_EQ(text.Written(), "▮ long\nlong");
    TextModel beside("aba▮");
    beside.Do(ReplaceAll(FindAll("aba", "a", {}), u"xy"));
    EXPECT_EQ(beside.Written(), "xyb▯xy▮");
}

} // namespace
} // namespace tessaly
