// What the program does in the pane: it reads lines, selects, edits as the user would, and hears of keys first.
#include "tests/contract/DesktopContract.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {
namespace {

constexpr std::string_view Mixed = "one\ntwo\r\nthree\rfour";

// Puts ">" in front of the first three lines.
const Edit Quoted = {{{{0, 0}, {0, 0}, u">"}, {{1, 0}, {1, 0}, u">"}, {{2, 0}, {2, 0}, u">"}}, {{0, 1}, {2, 6}}};

TEST_P(DesktopContract, ThePaneTellsItsLines) {
    Edit("a\n\xF0\x9F\x98\x80\xC3\xA4\r\n/* \f\r*/\n", 0);
    ASSERT_EQ(Pane().Count(), 5U);
    EXPECT_EQ(Pane().Line(0), u"a");
    EXPECT_EQ(Pane().Line(1), u"\U0001F600\u00E4");
    EXPECT_EQ(Pane().Line(2), u"/* \f");
    EXPECT_EQ(Pane().Line(4), u"");
    EXPECT_EQ(Pane().StateBefore(2), CLineState::Code);
    EXPECT_EQ(Pane().StateBefore(3), CLineState::BlockComment);
    EXPECT_EQ(Pane().StateBefore(4), CLineState::Code);
    user->Type("/*");
    EXPECT_EQ(Pane().Line(0), u"/*a");
    EXPECT_EQ(Pane().StateBefore(1), CLineState::BlockComment);
    Pane().SetText("");
    EXPECT_EQ(Pane().Count(), 1U);
    EXPECT_EQ(Pane().Line(0), u"");
}

TEST_P(DesktopContract, AnUnavailablePaneTellsItsLines) {
    Edit("a\nb", 0);
    Pane().SetFuncBodyAvailable(false);
    EXPECT_EQ(Pane().Count(), 2U);
    EXPECT_EQ(Pane().Line(1), u"b");
    EXPECT_EQ(Pane().StateBefore(1), CLineState::Code);
}

TEST_P(DesktopContract, TheUsersSelectionIsTold) {
    Edit("ab\r\ncd", 1);
    EXPECT_EQ(Pane().Selected(), (Selection{{0, 1}, {0, 1}}));
    user->SelectAll();
    EXPECT_EQ(Pane().Selected(), (Selection{{0, 0}, {1, 2}}));
    EXPECT_EQ(Pane().TextBetween({0, 1}, {1, 1}), u"b\nc");
}

TEST_P(DesktopContract, WhatTheProgramSelectsTheUserTypesOver) {
    Edit("ab\r\ncd", 0);
    Record();
    for (const Selection& selection : {Selection{{0, 1}, {1, 1}}, Selection{{1, 1}, {0, 1}}}) {
        Pane().Select(selection);
        EXPECT_EQ(Pane().Selected(), selection);
        EXPECT_EQ(Pane().CaretPosition(), selection.caret.line == 1 ? 4U : 1U);
    }
    EXPECT_EQ(events, Strings{});
    user->Type("x");
    EXPECT_EQ(Pane().Text(), "axd");
    Pane().Select({{0, 9}, {7, 0}});
    EXPECT_EQ(Pane().Selected(), (Selection{{0, 3}, {0, 3}})) << "the nearest places that are there";
    Pane().SelectAll();
    EXPECT_EQ(Pane().Selected(), (Selection{{0, 0}, {0, 3}}));
}

TEST_P(DesktopContract, AnEditOfSeveralPlacesIsOneStepToUndo) {
    Edit(Mixed, 2);
    Record();
    Pane().Do(Quoted);
    EXPECT_EQ(Pane().Text(), ">one\n>two\r\n>three\rfour");
    EXPECT_EQ(user->PaneShown(), ">one\n>two\n>three\nfour");
    EXPECT_EQ(Pane().Selected(), Quoted.after);
    EXPECT_EQ(events, Strings{"change"});
    user->Undo();
    EXPECT_EQ(Pane().Text(), Mixed);
    EXPECT_EQ(user->PaneShown(), "one\ntwo\nthree\nfour");
    EXPECT_EQ(Pane().CaretPosition(), 2U);
    EXPECT_EQ(events, (Strings{"change", "change"}));
    EXPECT_FALSE(Pane().Undo());
    EXPECT_TRUE(Pane().Redo());
    EXPECT_EQ(Pane().Text(), ">one\n>two\r\n>three\rfour");
    EXPECT_EQ(Pane().Selected(), Quoted.after);
    EXPECT_EQ(events.size(), 3U);
    EXPECT_FALSE(Pane().Redo());
    EXPECT_EQ(events.size(), 3U);
}

TEST_P(DesktopContract, AnEditTakesLineBreaksAwayAndItsOwnAreCrLf) {
    Edit(Mixed, 0);
    Pane().Do({{{{0, 3}, {1, 0}, u" "}, {{2, 5}, {2, 5}, u"\n\f\u00E4\n"}}, {{0, 4}, {0, 4}}});
    EXPECT_EQ(Pane().Text(), "one two\r\nthree\r\n\f\xC3\xA4\r\n\rfour");
    EXPECT_EQ(Pane().Line(2), u"\f\u00E4");
    user->Type("-");
    EXPECT_EQ(Pane().Line(0), u"one -two");
    user->Undo();
    user->Undo();
    EXPECT_EQ(Pane().Text(), Mixed);
}

TEST_P(DesktopContract, UndoBringsBackTheLineBreaksThatWere) {
    Edit(Mixed, 9);
    user->Type("x");
    user->SelectAll();
    user->Paste("new\ntext");
    user->Backspace();
    user->PressEnter();
    const std::string after = Pane().Text();
    int steps = 0;
    while (Pane().CanUndo()) {
        user->Undo();
        ++steps;
    }
    EXPECT_EQ(Pane().Text(), Mixed);
    EXPECT_EQ(steps, 4);
    while (Pane().CanRedo()) {
        user->PressKey('Y', 2);
    }
    EXPECT_EQ(Pane().Text(), after);
}

TEST_P(DesktopContract, CharactersTypedOneBehindTheOtherAreOneStep) {
    Edit("ab", 1);
    user->Type("xyz");
    user->Backspace();
    user->Backspace();
    user->Undo();
    EXPECT_EQ(Pane().Text(), "axyzb");
    user->Undo();
    EXPECT_EQ(Pane().Text(), "ab");
    EXPECT_EQ(Pane().CaretPosition(), 1U);
    EXPECT_FALSE(Pane().CanUndo());
}

TEST_P(DesktopContract, TheKeysThatUndoAndRedoAreThoseOfEverySystem) {
    Edit("b", 0);
    user->Type("a");
    user->PressKey(KeyBackspace, 4);
    EXPECT_EQ(Pane().Text(), "b");
    user->PressKey('Z', 3);
    EXPECT_EQ(Pane().Text(), "ab");
    user->PressKey('Z', 2);
    EXPECT_EQ(Pane().Text(), "b");
    user->PressKey('Y', 2);
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, WhatIsDoneAfterAnUndoForgetsWhatWasUndone) {
    Edit("", 0);
    user->Type("a");
    user->Undo();
    user->Type("b");
    EXPECT_FALSE(Pane().CanRedo());
    user->PressKey('Y', 2);
    EXPECT_EQ(Pane().Text(), "b");
}

TEST_P(DesktopContract, AnUnavailablePaneTakesNoEdit) {
    Edit("ab", 0);
    user->Type("x");
    Pane().SetFuncBodyAvailable(false);
    Record();
    Pane().Do({{{{0, 0}, {0, 0}, u"y"}}, {}});
    EXPECT_FALSE(Pane().Undo());
    EXPECT_EQ(Pane().Text(), "xab");
    EXPECT_EQ(events, Strings{});
    Pane().SetFuncBodyAvailable(true);
    EXPECT_TRUE(Pane().Undo());
    EXPECT_EQ(Pane().Text(), "ab");
}

TEST_P(DesktopContract, AnEditLeavesTheMarkOfALineThatItChangesAndThoseOfOthers) {
    Edit(Mixed, 0);
    Pane().SetLineMarks(std::vector<LineMark>{{2, Mark::Error, 4, 7}, {4, Mark::Warning, 14, 18}});
    Pane().Do(Quoted);
    EXPECT_EQ(user->MarginShown(), (Strings{"1", "2 error", "3", "4 warning"}));
    EXPECT_EQ(user->Underlined(), Strings{"four"});
}

TEST_P(DesktopContract, AnEditInALongTextBringsTheCaretIntoView) {
    std::string text;
    for (int line = 1; line <= 2000; ++line) {
        text += "line\n";
    }
    Edit(text, 0);
    Pane().Do({{{{1990, 0}, {1990, 4}, u"other"}}, {{1990, 5}, {1990, 5}}});
    const Strings margin = user->MarginShown();
    EXPECT_NE(std::find(margin.begin(), margin.end(), "1991"), margin.end());
    user->Type("!");
    EXPECT_EQ(Pane().Line(1990), u"other!");
}

TEST_P(DesktopContract, ATextThatComesBackIsSeenAsItWasAndUndoneAsIfItHadStayed) {
    std::string text;
    for (int line = 1; line <= 300; ++line) {
        text += line % 2 == 0 ? "line\n" : "line\r";
    }
    Edit(text, 0);
    Pane().MoveCaret(1000);
    user->Type("x");
    Pane().Select({{201, 2}, {203, 0}});
    const std::string left = Pane().Text();
    const std::string first = user->MarginShown().front();
    PaneSight sight = Pane().TakeSight();
    Pane().SetText("other");
    EXPECT_FALSE(Pane().CanUndo());
    Pane().SetText(left);
    Record();
    Pane().GiveSight(std::move(sight));
    EXPECT_EQ(Pane().Selected(), (Selection{{201, 2}, {203, 0}}));
    EXPECT_EQ(user->MarginShown().front(), first);
    EXPECT_EQ(events, Strings{});
    user->Undo();
    EXPECT_EQ(Pane().Text(), text);
    EXPECT_TRUE(Pane().Redo());
    EXPECT_EQ(Pane().Text(), left);
}

TEST_P(DesktopContract, ATextThatComesBackIsAsFarToTheLeftAsItWas) {
    const std::string text = "short\n" + std::string(2000, 'y') + "\nshort";
    Edit(text, 0);
    Pane().MoveCaret(1500);
    Pane().MoveCaret(1490);
    const float left = user->LeftOf(1490);
    PaneSight sight = Pane().TakeSight();
    Pane().SetText("other");
    Pane().SetText(text);
    Pane().GiveSight(std::move(sight));
    EXPECT_EQ(user->LeftOf(1490), left);
}

TEST_P(DesktopContract, WhatWasSeenOfALongerTextIsTheEndOfAShortOne) {
    Edit("one\ntwo\nthree", 13);
    PaneSight sight = Pane().TakeSight();
    Pane().SetText("a\nb");
    sight.history = {};
    Pane().GiveSight(std::move(sight));
    EXPECT_EQ(Pane().CaretPosition(), 3U);
    EXPECT_FALSE(Pane().CanUndo());
}

// The keys that the pane tells of, as "key 13+0" and "char x".
std::string Told(const PaneKey& key) {
    return key.keyCode != 0 ? "key " + std::to_string(key.keyCode) + "+" + std::to_string(key.shift)
                            : std::string("char ") + static_cast<char>(key.character);
}

TEST_P(DesktopContract, AKeyThatIsDealtWithDoesNothingElse) {
    Edit("  ab", 2);
    Pane().onKey = [this](const PaneKey& key) {
        if (!IsModifierKey(key.keyCode)) {
            events.push_back(Told(key));
        }
        return true;
    };
    user->PressEnter();
    user->Backspace();
    user->PressKey(KeyTab, 0);
    user->PressKey(KeyTab, 1);
    user->Paste("x");
    user->Undo();
    user->PressKey(KeyUp, 4);
    user->PressKey('K', 3);
    EXPECT_EQ(Pane().Text(), "  ab");
    EXPECT_EQ(events,
              (Strings{"key 13+0", "key 8+0", "key 9+0", "key 9+1", "key 86+2", "key 90+2", "key 38+4", "key 75+3"}));
}

TEST_P(DesktopContract, ATypedCharacterIsToldBeforeItStandsThere) {
    Edit("ab", 1);
    Pane().onKey = [this](const PaneKey& key) {
        if (key.character != 0) {
            events.push_back(Told(key) + " in " + Pane().Text());
        }
        return key.character == u'}';
    };
    user->Type("x}y");
    EXPECT_EQ(events, (Strings{"char x in ab", "char } in axb", "char y in axb"}));
    EXPECT_EQ(Pane().Text(), "axyb");
}

TEST_P(DesktopContract, AKeyThatNobodyDealsWithDoesWhatItAlwaysDoes) {
    Edit("ab", 1);
    Pane().onKey = [](const PaneKey&) -> bool { throw std::runtime_error("a mistake"); };
    user->Type("x");
    user->PressEnter();
    user->PressKey(KeyTab, 0);
    EXPECT_EQ(Pane().Text(), "ax\r\n\tb");
}

TEST_P(DesktopContract, AnUnavailablePaneTellsOfNoKey) {
    Edit("ab", 1);
    Pane().SetFuncBodyAvailable(false);
    Pane().onKey = [this](const PaneKey& key) {
        events.push_back(Told(key));
        return false;
    };
    user->PressEnter();
    user->Type("x");
    EXPECT_EQ(events, Strings{});
}

TEST_P(DesktopContract, TheProgramCutsCopiesAndPastes) {
    Edit("ab\ncd", 0);
    Pane().Select({{0, 1}, {1, 1}});
    Record();
    Pane().Do(RichTextBox::Clip::Copy);
    EXPECT_EQ(events, Strings{});
    Pane().Do(RichTextBox::Clip::Cut);
    EXPECT_EQ(Pane().Text(), "ad");
    Pane().MoveCaret(2);
    Pane().Do(RichTextBox::Clip::Paste);
    EXPECT_EQ(Pane().Text(), "adb\r\nc");
    EXPECT_EQ(events, (Strings{"change", "change"}));
}

} // namespace
} // namespace tessaly
