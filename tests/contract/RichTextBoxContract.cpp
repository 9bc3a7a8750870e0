// The pane. The texts are edited only where the touched line break is unmistakable.
#include "tests/contract/DesktopContract.h"
#include "tests/contract/ShortOfMemory.h"

#include <new>
#include <stdexcept>

namespace tessaly {
namespace {

TEST_P(DesktopContract, ATextComesBackWithTheLineBreaksThatWerePutIn) {
    for (const std::string_view text :
         {"", "a", "a\nb", "a\r\nb", "a\rb", "\n", "\r\n", "\r", "\n\r", "\r\r\n", "\r\n\n",
          "a\r\nb\nc\rd\n\n\r\r\n\r\n", "\xC3\xA4\n\xE2\x82\xAC\r\n\xF0\x9F\x98\x80\t"}) {
        Pane().SetText(text);
        EXPECT_EQ(Pane().Text(), text);
    }
}

TEST_P(DesktopContract, ShowingAndFocusingLeaveTheTextAlone) {
    Edit("a\nb\r\nc\rd", 3);
    EXPECT_EQ(Pane().Text(), "a\nb\r\nc\rd");
    EXPECT_EQ(user->PaneShown(), "a\nb\nc\nd");
}

TEST_P(DesktopContract, TextOfManyLinesComesBack) {
    std::string text;
    for (int line = 0; line < 10000; ++line) {
        text += "line " + std::to_string(line) + (line % 3 == 0 ? "\n" : line % 3 == 1 ? "\r\n" : "\r");
    }
    Pane().SetText(text);
    EXPECT_EQ(Pane().Text(), text);
}

TEST_P(DesktopContract, AnEditInTheMiddleKeepsAllBreaks) {
    Edit("a\nb\r\nc\rd", 2);
    user->Type("xy");
    EXPECT_EQ(Pane().Text(), "a\nxyb\r\nc\rd");
    EXPECT_EQ(user->PaneShown(), "a\nxyb\nc\nd");
}

TEST_P(DesktopContract, ATypedBreakIsCrLf) {
    Edit("a\nbc\rd", 3);
    user->PressEnter();
    EXPECT_EQ(Pane().Text(), "a\nb\r\nc\rd");
}

TEST_P(DesktopContract, APastedBreakIsCrLf) {
    Edit("a\nbc\rd", 3);
    user->Paste("1\n2\r3\r\n4");
    EXPECT_EQ(Pane().Text(), "a\nb1\r\n2\r\n3\r\n4c\rd");
}

TEST_P(DesktopContract, PastingOverEverythingLeavesNoOldBreak) {
    Edit("a\nb", 0);
    user->SelectAll();
    user->Paste("1\n2\r3");
    EXPECT_EQ(Pane().Text(), "1\r\n2\r\n3");
}

TEST_P(DesktopContract, SeveralEditsInDifferentPlacesKeepTheOtherBreaks) {
    Edit("a\nb\rc\nd\r\ne", 0);
    user->SetCaret(7);
    user->Type("D");
    user->SetCaret(0);
    user->Type("A");
    user->SetCaret(5);
    user->PressEnter();
    user->Type("C");
    EXPECT_EQ(Pane().Text(), "Aa\nb\r\r\nCc\nd"
                             "D\r\ne");
}

TEST_P(DesktopContract, ADeletedBreakJoinsLinesAndLeavesTheOthers) {
    Edit("a\nb\rc\nd", 4);
    user->Backspace();
    EXPECT_EQ(Pane().Text(), "a\nbc\nd");
}

TEST_P(DesktopContract, BackspaceTakesAWholeCharacter) {
    Edit("\xC3\xA4\xE2\x82\xACz", 5);
    user->Backspace();
    EXPECT_EQ(Pane().Text(), "\xC3\xA4z");
}

TEST_P(DesktopContract, TypedTextStandsAtTheCaret) {
    Edit("ad", 1);
    user->Type("b\xC3\xA4");
    user->Type("c");
    EXPECT_EQ(Pane().Text(), "ab\xC3\xA4"
                             "cd");
}

TEST_P(DesktopContract, ANewTextForgetsTheBreaksOfTheOldOne) {
    Edit("a\rb", 3);
    Pane().SetText("c\nd");
    user->SetCaret(0);
    user->Type("x");
    EXPECT_EQ(Pane().Text(), "xc\nd");
}

TEST_P(DesktopContract, ANewTextCannotBeUndone) {
    Edit("old", 3);
    user->Type("er");
    Pane().SetText("new");
    Record();
    user->Undo();
    EXPECT_EQ(Pane().Text(), "new");
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, ATextThatThereIsNoMemoryForLeavesWhatWasThere) {
    if (!ShortOfMemory::IsPossible) {
        GTEST_SKIP();
    }
    std::string large;
    while (large.size() < 64U << 20U) {
        large += "int value;\n";
    }
    Edit("a\rb\r\nc", 1);
    user->Type("x");
    Record();
    {
        const ShortOfMemory room(8U << 20U);
        EXPECT_THROW(Pane().SetText(large), std::bad_alloc);
    }
    EXPECT_EQ(events, Strings{});
    EXPECT_EQ(Pane().Text(), "ax\rb\r\nc");
    EXPECT_EQ(user->PaneShown(), "ax\nb\nc");
    EXPECT_TRUE(Pane().FuncBodyAvailable());
    user->Undo();
    EXPECT_EQ(Pane().Text(), "a\rb\r\nc");
    user->Type("y");
    EXPECT_EQ(Pane().Text(), "ay\rb\r\nc");
}

TEST_P(DesktopContract, EveryChangeRaisesOneEvent) {
    Edit("ab", 1);
    Record();
    user->Type("x");
    EXPECT_EQ(events, Strings{"change"});
    user->PressEnter();
    EXPECT_EQ(events.size(), 2U);
    user->Backspace();
    EXPECT_EQ(events.size(), 3U);
    user->Paste("1\n2");
    EXPECT_EQ(events.size(), 4U);
    user->Type("yz");
    EXPECT_EQ(events.size(), 6U);
}

TEST_P(DesktopContract, TheEventComesWhenTheTextHasChanged) {
    Edit("ab", 1);
    std::string seen;
    Pane().onChange = [&] { seen = Pane().Text(); };
    user->Type("x");
    EXPECT_EQ(seen, "axb");
    Pane().SetText("c\nd");
    EXPECT_EQ(seen, "c\nd");
}

TEST_P(DesktopContract, SetTextRaisesTheChangeEventEvenForTheSameText) {
    Record();
    Pane().SetText("a");
    EXPECT_EQ(events, Strings{"change"});
    Pane().SetText("a");
    EXPECT_EQ(events, (Strings{"change", "change"}));
    Pane().SetText("");
    Pane().SetText("");
    EXPECT_EQ(events.size(), 4U);
}

TEST_P(DesktopContract, SetTextMovesNoFocus) {
    MainWindow().Show();
    Tree().SetFocus();
    Record();
    Pane().SetText("a");
    user->Type("b");
    EXPECT_EQ(Pane().Text(), "a");
    EXPECT_EQ(events, Strings{"change"});
}

TEST_P(DesktopContract, APaneIsAvailableAtFirst) {
    EXPECT_TRUE(Pane().FuncBodyAvailable());
    Pane().SetFuncBodyAvailable(false);
    EXPECT_FALSE(Pane().FuncBodyAvailable());
    Pane().SetFuncBodyAvailable(true);
    EXPECT_TRUE(Pane().FuncBodyAvailable());
}

TEST_P(DesktopContract, AnUnavailablePaneRefusesTheFocus) {
    MainWindow().Show();
    Tree().SetFocus();
    Pane().SetFuncBodyAvailable(false);
    Record();
    EXPECT_THROW(Pane().SetFocus(), std::runtime_error);
    user->ClickPane();
    user->Type("a");
    EXPECT_EQ(events, Strings{});
    Pane().SetFuncBodyAvailable(true);
    Pane().SetFocus();
    EXPECT_EQ(events, Strings{"got focus"});
}

TEST_P(DesktopContract, APaneThatBecomesUnavailableKeepsTheFocusAndTakesNoInput) {
    Edit("ab", 1);
    Record();
    Pane().SetFuncBodyAvailable(false);
    user->Type("x");
    user->PressEnter();
    user->Backspace();
    user->Paste("y");
    EXPECT_EQ(Pane().Text(), "ab");
    EXPECT_EQ(events, Strings{});
    Pane().SetFuncBodyAvailable(true);
    user->Type("x");
    EXPECT_EQ(Pane().Text(), "axb");
    EXPECT_EQ(events, Strings{"change"});
}

TEST_P(DesktopContract, AnUnavailablePaneStillTakesTextFromTheProgram) {
    Pane().SetFuncBodyAvailable(false);
    Record();
    Pane().SetText("a\rb");
    EXPECT_EQ(Pane().Text(), "a\rb");
    EXPECT_EQ(events, Strings{"change"});
}

TEST_P(DesktopContract, TabStopsLeaveTheTextAlone) {
    Edit("a\tb\nc", 0);
    Record();
    Pane().SetTabStops({0, 360.5F, 721});
    Pane().SetTabStops({});
    Pane().SetTabStops({1.1F});
    EXPECT_EQ(Pane().Text(), "a\tb\nc");
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, TheCaretIsToldInUnitsOfUtf16AndEachBreakIsOne) {
    Edit("a\r\n\xF0\x9F\x98\x80\xC3\xA4", 6); // behind a character of two units
    EXPECT_EQ(Pane().CaretPosition(), 4U);
    user->Type("b");
    EXPECT_EQ(Pane().CaretPosition(), 5U);
    Pane().SetText("other");
    EXPECT_EQ(Pane().CaretPosition(), 0U);
}

TEST_P(DesktopContract, ACaretThatIsMovedIsWhereTheUserTypes) {
    Edit("a\r\n\xF0\x9F\x98\x80"
         "b",
         0);
    user->SelectAll();
    Pane().MoveCaret(4);
    EXPECT_EQ(Pane().CaretPosition(), 4U);
    user->Type("x");
    EXPECT_EQ(user->PaneShown(), "a\n\xF0\x9F\x98\x80xb");
    Pane().MoveCaret(1000);
    EXPECT_EQ(Pane().CaretPosition(), 6U);
    user->Type("y");
    EXPECT_EQ(user->PaneShown(), "a\n\xF0\x9F\x98\x80xby");
}

} // namespace
} // namespace tessaly
