// The margin of the pane, and the marks on its lines and on items of the tree.
#include "tests/contract/DesktopContract.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {
namespace {

constexpr std::string_view Poem = "one\r\ntwo\nthree\rfour\n";

// An error on "two", of which "wo" is underlined, and a warning on all of "four".
const std::vector<LineMark> OnPoem = {{2, Mark::Error, 5, 7}, {4, Mark::Warning, 14, 18}};

TEST_P(DesktopContract, TheMarginNumbersLinesAsEachKindOfBreakEndsThem) {
    Edit("", 0);
    EXPECT_EQ(user->MarginShown(), Strings{"1"});
    Pane().SetText("a\nb\r\nc\rd\n\re");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3", "4", "5", "6"}));
    Pane().SetText("a\r\r\n\n");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3", "4"}));
}

TEST_P(DesktopContract, ALongLineHasOneNumber) {
    Edit(std::string(3000, 'x') + "\n" + std::string(3000, ' ') + "y", 0);
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2"}));
}

TEST_P(DesktopContract, OtherSeparatorsOfLinesHaveNoNumber) {
    Edit("a\f\vb\xE2\x80\xA8"
         "c\xE2\x80\xA9"
         "d\nx",
         0);
    const Strings margin = user->MarginShown();
    EXPECT_EQ(margin.back(), "2");
}

TEST_P(DesktopContract, TheNumbersFollowWhatTheUserTypes) {
    Edit("a\nb", 1);
    user->PressEnter();
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3"}));
    user->Paste("x\r\ny\nz");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3", "4", "5"}));
    user->Undo();
    user->Backspace();
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2"}));
}

TEST_P(DesktopContract, TheNumbersFollowTheView) {
    std::string text;
    for (int line = 1; line <= 1200; ++line) {
        text += "line\n";
    }
    Edit(text, 0);
    EXPECT_EQ(user->MarginShown().front(), "1");
    Pane().MoveCaret(text.size());
    EXPECT_EQ(user->MarginShown().back(), "1201");
    const Strings margin = user->MarginShown();
    const int first = std::stoi(margin.front());
    for (std::size_t line = 0; line < margin.size(); ++line) {
        EXPECT_EQ(margin[line], std::to_string(first + static_cast<int>(line)));
    }
}

TEST_P(DesktopContract, AnUnavailablePaneHasNeitherNumbersNorMarksAndKeepsThem) {
    Edit(Poem, 0);
    Pane().SetLineMarks(OnPoem);
    Pane().SetFuncBodyAvailable(false);
    EXPECT_EQ(user->MarginShown(), Strings{});
    EXPECT_EQ(user->Underlined(), Strings{});
    Pane().SetFuncBodyAvailable(true);
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2 error", "3", "4 warning", "5"}));
    EXPECT_EQ(user->Underlined(), (Strings{"wo", "four"}));
}

TEST_P(DesktopContract, MarksStandInTheMarginAndUnderTheText) {
    Edit(Poem, 0);
    EXPECT_EQ(user->Underlined(), Strings{});
    Pane().SetLineMarks(OnPoem);
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2 error", "3", "4 warning", "5"}));
    EXPECT_EQ(user->Underlined(), (Strings{"wo", "four"}));
    Pane().SetLineMarks(std::vector<LineMark>{{3, Mark::Warning, 8, 8}});
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3 warning", "4", "5"}));
    EXPECT_EQ(user->Underlined(), Strings{});
    Pane().SetLineMarks({});
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3", "4", "5"}));
}

TEST_P(DesktopContract, OfSeveralMarksTheMarginShowsTheGravest) {
    Edit("ab\ncd", 0);
    Pane().SetLineMarks(std::vector<LineMark>{{1, Mark::Error, 0, 1}, {1, Mark::Warning, 1, 2}});
    EXPECT_EQ(user->MarginShown(), (Strings{"1 error", "2"}));
}

TEST_P(DesktopContract, AMarkThatDoesNotFitIsCutOff) {
    Edit("ab\ncd", 0);
    Pane().SetLineMarks(
        std::vector<LineMark>{{1, Mark::Error, 1, 100}, {3, Mark::Error, 6, 7}, {0, Mark::Error, 0, 1}});
    EXPECT_EQ(user->MarginShown(), (Strings{"1 error", "2"}));
    EXPECT_EQ(user->Underlined(), Strings{"b"});
}

TEST_P(DesktopContract, MarksAreNoChangeOfTheText) {
    Edit(Poem, 3);
    user->Type("x");
    Record();
    Pane().SetLineMarks(OnPoem);
    user->Settle();
    EXPECT_EQ(events, Strings{});
    EXPECT_EQ(Pane().CaretPosition(), 4U);
    EXPECT_EQ(Pane().Text(), "onex\r\ntwo\nthree\rfour\n");
    user->Undo();
    EXPECT_EQ(events, Strings{"change"});
    EXPECT_EQ(Pane().Text(), Poem);
    user->Undo();
    EXPECT_EQ(events, Strings{"change"});
}

TEST_P(DesktopContract, AnEditOfAMarkedLineTakesItsUnderlineAwayAndLeavesTheMark) {
    Edit(Poem, 6);
    Pane().SetLineMarks(OnPoem);
    user->Type("x");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2 error", "3", "4 warning", "5"}));
    EXPECT_EQ(user->Underlined(), Strings{"four"});
    EXPECT_EQ(Pane().Text(), "one\r\ntwxo\nthree\rfour\n");
}

TEST_P(DesktopContract, MarksGoWithTheirLines) {
    Edit(Poem, 3);
    Pane().SetLineMarks(OnPoem);
    user->PressEnter();
    user->Type("1\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3 error", "4", "5 warning", "6"}));
    EXPECT_EQ(user->Underlined(), (Strings{"wo", "four"}));
    for (int times = 0; times < 4; ++times) {
        user->Backspace();
    }
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2 error", "3", "4 warning", "5"}));
    EXPECT_EQ(user->Underlined(), (Strings{"wo", "four"}));
}

TEST_P(DesktopContract, WhatIsTypedBehindAMarkedLineIsNotUnderlined) {
    Edit(Poem, 7);
    Pane().SetLineMarks(OnPoem);
    user->PressEnter();
    user->Type("x");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2 error", "3", "4", "5 warning", "6"}));
    EXPECT_EQ(user->Underlined(), (Strings{"wo", "four"}));
}

TEST_P(DesktopContract, AMarkGoesAwayWithAllOfItsLine) {
    Edit(Poem, 0);
    Pane().SetLineMarks(OnPoem);
    user->SelectAll();
    user->Paste("new\nlines");
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2"}));
    EXPECT_EQ(user->Underlined(), Strings{});
}

TEST_P(DesktopContract, ANewTextHasNoMarks) {
    Edit(Poem, 0);
    Pane().SetLineMarks(OnPoem);
    Pane().SetText(Poem);
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2", "3", "4", "5"}));
    EXPECT_EQ(user->Underlined(), Strings{});
}

TEST_P(DesktopContract, MarksSayTheirTextsForTheLineAndWhereTheWavyLineIs) {
    Edit(Poem, 0);
    Pane().SetLineMarks(std::vector<LineMark>{{2, Mark::Error, 5, 6, "one"}, {2, Mark::Warning, 6, 7, "two"}});
    const std::size_t begin = 4; // of the line
    EXPECT_EQ(Pane().MarksSay(1), (Strings{"one", "two"}));
    EXPECT_EQ(Pane().MarksSay(0), Strings{});
    EXPECT_EQ(Pane().MarksSay(1, 4 - begin), Strings{});
    EXPECT_EQ(Pane().MarksSay(1, 5 - begin), Strings{"one"});
    EXPECT_EQ(Pane().MarksSay(1, 6 - begin), (Strings{"one", "two"}));
    EXPECT_EQ(Pane().MarksSay(1, 7 - begin), Strings{"two"}) << "what is nearest to the last character";
    user->SetCaret(4);
    user->Type("x");
    EXPECT_EQ(Pane().MarksSay(1, 6 - begin), Strings{}) << "where it was is not known any more";
    EXPECT_EQ(Pane().MarksSay(1), (Strings{"one", "two"}));
}

TEST_P(DesktopContract, AScreenReaderIsToldWhatTheMarksOfTheCaretsLineSay) {
    Edit(Poem, 5);
    EXPECT_EQ(user->PaneSaid(), "");
    Pane().SetLineMarks(std::vector<LineMark>{{2, Mark::Error, 5, 7, "Error: \xC3\xA4"},
                                              {2, Mark::Warning, 4, 5, "Warning: b"},
                                              {4, Mark::Warning, 14, 18, "Warning: c"}});
    EXPECT_EQ(user->PaneSaid(), "Error: \xC3\xA4; Warning: b");
    Pane().MoveCaret(0);
    EXPECT_EQ(user->PaneSaid(), "");
    user->SetCaret(14);
    user->Type("x");
    EXPECT_EQ(user->PaneSaid(), "Warning: c") << "where it was is not known any more, but still what";
    Pane().SetFuncBodyAvailable(false);
    EXPECT_EQ(user->PaneSaid(), "");
    Pane().SetFuncBodyAvailable(true);
    EXPECT_EQ(user->PaneSaid(), "Warning: c");
    Pane().SetText(Poem);
    EXPECT_EQ(user->PaneSaid(), "");
}

TEST_P(DesktopContract, AClickIntoTheMarginIsOneIntoThePaneAndMovesNothing) {
    Edit(Poem, 0);
    user->SelectAll();
    Tree().SetFocus();
    Record();
    user->ClickMargin();
    user->Settle();
    EXPECT_EQ(events, Strings{"got focus"});
    user->Type("x");
    EXPECT_EQ(Pane().Text(), "x");
}

TEST_P(DesktopContract, AClickIntoTheMarginOfAnUnavailablePaneDoesNothing) {
    MainWindow().Show();
    Tree().SetFocus();
    Pane().SetFuncBodyAvailable(false);
    Record();
    user->ClickMargin();
    user->Settle();
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, AnItemShowsItsMarkBesideItsText) {
    const TreeItem above = Tree().Add(TreeItem::None, "a", "A");
    const TreeItem item = Tree().Add(above, "b", "B");
    Tree().Expand(above);
    MainWindow().Show();
    Record();
    EXPECT_EQ(user->MarkShown(item), "");
    Tree().SetMark(item, Mark::Error, "2 \xC3\xA4rrors & 1 warning");
    EXPECT_EQ(user->MarkShown(item), "error: 2 \xC3\xA4rrors & 1 warning");
    EXPECT_EQ(user->MarkShown(above), "");
    EXPECT_EQ(Tree().Text(item), "B");
    EXPECT_EQ(user->TreeShown(), (Strings{"A", "  B"}));
    Tree().SetMark(item, Mark::Warning, "1 warning");
    EXPECT_EQ(user->MarkShown(item), "warning: 1 warning");
    Tree().SetText(item, "C");
    EXPECT_EQ(user->MarkShown(item), "warning: 1 warning");
    Tree().SetMark(item, Mark::None, "");
    EXPECT_EQ(user->MarkShown(item), "");
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, AMarkThatNothingIsSaidOfIsShown) {
    const TreeItem item = Tree().Add(TreeItem::None, "a", "A");
    MainWindow().Show();
    Tree().SetMark(item, Mark::Error, "");
    EXPECT_EQ(user->MarkShown(item), LookShown(Mark::Error, false, ""));
}

TEST_P(DesktopContract, AnItemInItalicsSaysWhyBehindItsMark) {
    const TreeItem item = Tree().Add(TreeItem::None, "a", "A");
    MainWindow().Show();
    Record();
    Tree().SetItalic(item, true, "ch\xC3\xA4nged");
    EXPECT_EQ(user->MarkShown(item), "italic: ch\xC3\xA4nged");
    Tree().SetMark(item, Mark::Error, "2 errors");
    EXPECT_EQ(user->MarkShown(item), "error italic: 2 errors, ch\xC3\xA4nged");
    Tree().SetItalic(item, true, "edited");
    Tree().SetText(item, "B");
    EXPECT_EQ(user->MarkShown(item), "error italic: 2 errors, edited");
    Tree().SetMark(item, Mark::None, "");
    EXPECT_EQ(user->MarkShown(item), "italic: edited");
    Tree().SetItalic(item, false, "edited");
    EXPECT_EQ(user->MarkShown(item), "");
    EXPECT_EQ(user->TreeShown(), Strings{"B"});
    EXPECT_EQ(events, Strings{});
    EXPECT_THROW(Tree().SetItalic(TreeItem::None, true, ""), std::out_of_range);
}

TEST_P(DesktopContract, AnItemThatIsNotInTheTreeCannotBeMarked) {
    EXPECT_THROW(Tree().SetMark(TreeItem::None, Mark::Error, ""), std::out_of_range);
}

TEST_P(DesktopContract, AMarkedItemCanBeSelectedAndRemoved) {
    const TreeItem item = Tree().Add(TreeItem::None, "a", "A");
    MainWindow().Show();
    Tree().SetMark(item, Mark::Error, "1 error");
    Record();
    user->ClickItem(item);
    EXPECT_EQ(events, Strings{"click a"});
    EXPECT_EQ(Selected(), "A");
    Tree().Remove(1);
    const TreeItem next = Tree().Add(TreeItem::None, "a", "A");
    EXPECT_EQ(user->MarkShown(next), "");
}

} // namespace
} // namespace tessaly
