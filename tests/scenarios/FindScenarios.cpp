// Finding, replacing and going somewhere, as who has many handlers does it.
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {
namespace {

constexpr Selection FirstTwo = {{2, 1}, {2, 4}};
constexpr Selection SecondTwo = {{3, 1}, {3, 4}};

TEST_P(ProgramScenario, TheBarStandsOverTheUpperEdgeOfThePaneUntilEsc) {
    BeginFinding();
    for (const auto& [key, shift] :
         {std::pair('F', Ctrl), std::pair('H', Ctrl), std::pair('G', Ctrl), std::pair('F', CtrlWithShift)}) {
        const Extent before = Shown(Pane());
        const Extent set = Pane().GetExtent();
        user->PressKey(key, shift);
        EXPECT_TRUE(Bar().wanted.HasKeyboard());
        EXPECT_EQ(Pane().GetExtent(), set);
        EXPECT_LT(Shown(Pane()).height, before.height);
        for (Control* const control : Bar().All()) {
            if (control->IsVisible()) {
                const Extent place = Shown(*control);
                EXPECT_TRUE(user->IsSeen(*control));
                EXPECT_GT(place.width, 0);
                EXPECT_GE(place.left, before.left - OnePixel);
                EXPECT_LE(place.left + place.width, before.left + before.width + OnePixel);
                EXPECT_GE(place.top, before.top - OnePixel);
                EXPECT_LE(place.top + place.height, Shown(Pane()).top + OnePixel);
            }
        }
        ExpectNothingOverlaps();
        user->PressKey(KeyEscape, 0);
        EXPECT_FALSE(user->IsSeen(Bar().wanted));
        EXPECT_EQ(Shown(Pane()), before);
    }
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    user->Type("a");
    EXPECT_EQ(Pane().Text(), "a" + std::string(FindText));
}

TEST_P(ProgramScenario, TheBarFollowsThePane) {
    BeginFinding();
    user->PressKey('F', Ctrl);
    user->Resize(MainWindow().Width() * 0.8F, MainWindow().Height());
    EXPECT_NEAR(Shown(Bar().close).left + Shown(Bar().close).width, Shown(Pane()).left + Shown(Pane()).width,
                2 * OnePixel);
    EXPECT_GT(Shown(Bar().wanted).width, 0);
}

TEST_P(ProgramScenario, InANarrowWindowThereIsRoomToTypeOnTheBar) {
    BeginFinding(1);
    for (const float part : {0.9F, 0.8F, 0.7F, 0.55F, 0.45F, 0.8F}) {
        user->Resize(MainWindow().Width() * part, MainWindow().Height());
        for (const char key : {'F', 'H'}) {
            user->PressKey(key, Ctrl);
            ExpectNothingOverlaps();
            EXPECT_GE(Shown(Bar().wanted).width, 5 * Pane().CharacterWidth());
            EXPECT_TRUE(key == 'F' || Shown(Bar().replacement).width >= 5 * Pane().CharacterWidth());
        }
    }
}

TEST_P(ProgramScenario, WhatIsTypedIsFoundAtOnceAndEnterGoesOn) {
    BeginFinding();
    Find("two");
    EXPECT_EQ(Pane().Selected(), FirstTwo);
    EXPECT_EQ(Count(), "1 of 2");
    user->PressKey(KeyEnter, 0);
    EXPECT_EQ(Pane().Selected(), SecondTwo);
    EXPECT_EQ(Count(), "2 of 2");
    user->PressKey(KeyEnter, 0);
    EXPECT_EQ(Pane().Selected(), FirstTwo);
    user->PressKey(KeyEnter, Shift);
    EXPECT_EQ(Pane().Selected(), SecondTwo);
    user->Click(Bar().previous);
    EXPECT_EQ(Pane().Selected(), FirstTwo);
    user->Click(Bar().next);
    EXPECT_EQ(Pane().Selected(), SecondTwo);
    EXPECT_EQ(Pane().Text(), FindText);
    EXPECT_FALSE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, NothingStaysSelectedWhereNoMatchIs) {
    BeginFinding();
    Find("two");
    EXPECT_EQ(Pane().Selected(), FirstTwo);
    user->Type("x");
    EXPECT_EQ(Count(), "Nothing found");
    EXPECT_EQ(Pane().Selected(), (Selection{FirstTwo.anchor, FirstTwo.anchor}));
    user->PressKey('F', Ctrl);
    user->Type("two");
    EXPECT_EQ(Pane().Selected(), FirstTwo);
}

TEST_P(ProgramScenario, AllMatchesAreSetApartUntilTheBarGoes) {
    constexpr std::size_t match = 22; // the second one, which is not selected
    constexpr std::size_t beside = 26;
    BeginFinding();
    Find("two");
    EXPECT_NE(user->ColourBehind(match), user->ColourBehind(beside));
    user->PressKey(KeyEscape, 0);
    user->Settle();
    EXPECT_EQ(user->ColourBehind(match), user->ColourBehind(beside));
}

TEST_P(ProgramScenario, CaseAndWholeWordsCountWhereTheUserWantsIt) {
    BeginFinding();
    Find("two");
    user->Click(Bar().matchCase);
    EXPECT_EQ(Pane().Selected(), SecondTwo);
    EXPECT_EQ(Count(), "1 of 1");
    Find("tw");
    EXPECT_EQ(Count(), "1 of 1");
    user->Click(Bar().wholeWord);
    EXPECT_EQ(Count(), "Nothing found");
}

TEST_P(ProgramScenario, WhatIsSelectedIsLookedForFirst) {
    BeginFinding();
    Pane().Select(FirstTwo);
    user->PressKey('F', Ctrl);
    EXPECT_EQ(user->WordsOn(Bar().wanted), "Two");
    EXPECT_EQ(Count(), "1 of 2");
    user->PressKey(KeyEscape, 0);
    Pane().Select({});
    user->PressKey('F', Ctrl);
    EXPECT_EQ(user->WordsOn(Bar().wanted), "Two");
    EXPECT_EQ(Count(), "- of 2");
}

TEST_P(ProgramScenario, TheCountFollowsTheText) {
    BeginFinding();
    Find("two");
    user->ClickPane();
    Pane().Select({});
    user->Type("two ");
    user->Settle();
    EXPECT_EQ(Count(), "- of 3");
}

TEST_P(ProgramScenario, OneIsReplacedAndTheNextOneSelected) {
    BeginFinding();
    user->PressKey('H', Ctrl);
    user->Type("two");
    user->Click(Bar().replacement);
    user->Type("\xC3\xA4!");
    user->PressKey(KeyEnter, 0);
    EXPECT_EQ(Pane().Text(), "void One()\r\n{\r\n\t\xC3\xA4!();\r\n\ttwo = 2;\r\n}\r\n");
    EXPECT_EQ(Pane().Selected(), SecondTwo);
    EXPECT_EQ(Count(), "1 of 1");
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    EXPECT_TRUE(Pane().Undo());
    EXPECT_EQ(Pane().Text(), FindText);
}

TEST_P(ProgramScenario, AllAreReplacedInOneStep) {
    BeginFinding();
    user->PressKey('H', Ctrl);
    user->Type("two");
    user->Click(Bar().replacement);
    user->Type("three");
    user->Click(Bar().replaceAll);
    EXPECT_EQ(Pane().Text(), "void One()\r\n{\r\n\tthree();\r\n\tthree = 2;\r\n}\r\n");
    EXPECT_EQ(Count(), "2 replaced");
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    EXPECT_TRUE(Pane().Undo());
    EXPECT_EQ(Pane().Text(), FindText);
    EXPECT_FALSE(Pane().CanUndo());
}

TEST_P(ProgramScenario, CtrlGGoesToALine) {
    BeginFinding();
    Pane().Select(FirstTwo);
    user->PressKey('G', Ctrl);
    EXPECT_EQ(user->WordsOn(Bar().wanted), "3");
    EXPECT_FALSE(user->IsSeen(Bar().matchCase));
    user->Type("x");
    user->PressKey(KeyEnter, 0); // no number
    EXPECT_TRUE(user->IsSeen(Bar().wanted));
    user->PressKey('G', Ctrl);
    user->Type("4");
    user->PressKey(KeyEnter, 0);
    EXPECT_FALSE(user->IsSeen(Bar().wanted));
    EXPECT_EQ(Pane().Selected(), (Selection{{3, 0}, {3, 0}}));
    EXPECT_EQ(Pane().Text(), FindText);
    user->PressKey('G', Ctrl);
    user->Type("99999999999999999999999");
    user->PressKey(KeyEnter, 0);
    EXPECT_EQ(Pane().Selected().caret, (Place{5, 0}));
}

TEST_P(ProgramScenario, WhatToFindOutlivesTheWayToALine) {
    BeginFinding();
    Find("two");
    user->PressKey('G', Ctrl);
    user->PressKey(KeyEscape, 0);
    Pane().Select({});
    user->PressKey('F', Ctrl);
    EXPECT_EQ(user->WordsOn(Bar().wanted), "two");
}

TEST_P(ProgramScenario, AllPlacesOfTheDocumentAreListed) {
    BeginFinding();
    user->Type("two "); // not stored yet
    user->PressKey('F', CtrlWithShift);
    user->Type("two");
    user->PressKey(KeyEnter, 0);
    user->Settle();
    EXPECT_EQ(Seen().caption, "Places found");
    EXPECT_EQ(Count(), "4");
    EXPECT_EQ(Seen().rows, (Strings{"Found|One|1|two void One()*", "Found|One|3|Two();", "Found|One|4|two = 2;",
                                    "Found|Two|1|void Two()"}));
    user->DoubleClickMessage(3);
    EXPECT_EQ(Pane().Text(), "void Two()\r\n{\r\n}\r\n");
    EXPECT_EQ(Pane().Selected().caret, (Place{0, 5}));
    user->PressKey('J', CtrlWithShift);
    EXPECT_EQ(Pane().Selected().caret, (Place{3, 1}));
    EXPECT_TRUE(Pane().Text().starts_with("two void One()"));
    user->PressKey('F', CtrlWithShift);
    user->Type("nowhere");
    user->PressKey(KeyEnter, 0);
    user->Settle();
    EXPECT_EQ(Count(), "Nothing found");
    EXPECT_FALSE(Seen().isVisible);
}

TEST_P(ProgramScenario, APlaceIsCopiedAndPastedWhereItIs) {
    BeginFinding();
    user->PressKey('F', CtrlWithShift);
    user->Type("void Two");
    user->PressKey(KeyEnter, 0);
    user->PressKeyInMessages('C', Ctrl);
    user->PressKeyInMessages(KeyEnter, 0);
    Pane().Do(RichTextBox::Clip::Paste);
    EXPECT_NE(user->PaneShown().find("Found\tTwo\t1\tvoid Two()"), std::string::npos) << user->PaneShown();
}

TEST_P(ProgramScenario, TheMessagesOfABuildComeBackBehindThePlaces) {
    StartProgram();
    OpenWrong();
    user->PressKey(KeyF10, 0);
    Print(CFile() + ":1:1: error: odd\n");
    ASSERT_TRUE(WaitForRows(1));
    user->PressKey('F', CtrlWithShift);
    user->Type("void One(");
    user->PressKey(KeyEnter, 0);
    EXPECT_EQ(Seen().rows, Strings{"Found|One|1|void One()*"});
    Bar().wanted.SetText("");
    user->PressKey(KeyEnter, 0);
    user->Settle();
    EXPECT_TRUE(Seen().isVisible);
    EXPECT_EQ(Seen().caption, "Messages of the build");
    EXPECT_EQ(Seen().rows.size(), 1U);
}

TEST_P(ProgramScenario, CtrlDGoesToWhatTheCaretStandsOnAndAltLeftBack) {
    BeginFinding();
    Pane().Select({{2, 2}, {2, 2}});
    user->PressKey('D', Ctrl);
    EXPECT_EQ(Selected(), "Two");
    EXPECT_EQ(Pane().Text(), "void Two()\r\n{\r\n}\r\n");
    user->PressKey('D', Ctrl); // nothing is called "void"
    EXPECT_EQ(Selected(), "Two");
    user->PressKey(KeyLeft, Alt);
    EXPECT_EQ(Selected(), "One");
    EXPECT_EQ(Pane().Selected(), (Selection{{2, 2}, {2, 2}}));
    user->PressKey(KeyLeft, Alt); // there is no way back any more
    EXPECT_EQ(Selected(), "One");
    EXPECT_EQ(Pane().Text(), FindText);
    EXPECT_FALSE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, TheBarGoesWithTheText) {
    BeginFinding();
    user->PressKey('F', Ctrl);
    Click("_0f");
    EXPECT_FALSE(user->IsSeen(Bar().wanted));
    user->PressKey('F', Ctrl); // there is nothing to find in
    EXPECT_FALSE(user->IsSeen(Bar().wanted));
}

TEST_P(ProgramScenario, TheBarSpeaksTheLanguageOfTheWindow) {
    BeginFinding(1);
    Find("two");
    EXPECT_EQ(user->WordsOn(Bar().wantedLabel), "Suchen:");
    EXPECT_EQ(user->WordsOn(Bar().close), "Schlie\xC3\x9F"
                                          "en");
    EXPECT_EQ(Count(), "1 von 2");
    Choose("mnuEnglish");
    EXPECT_EQ(user->WordsOn(Bar().wantedLabel), "Find:");
    EXPECT_EQ(Count(), "1 of 2");
}

} // namespace
} // namespace tessaly
