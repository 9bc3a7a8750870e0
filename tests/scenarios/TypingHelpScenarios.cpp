// Names that are offered while the user types, and the parameters of calls, in the whole program.
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {
namespace {

TEST_P(ProgramScenario, ThreeLettersOfferWhatFits) {
    BeginBesideOthers();
    user->Type("Ca");
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    user->Type("l");
    EXPECT_EQ(user->NamesSuggested(), Strings{"Calculate|long Calculate(int value)*"});
    user->PressEnter();
    EXPECT_EQ(LineNow(), "Calculate");
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    user->Undo();
    EXPECT_EQ(LineNow(), "Cal") << "one step";
}

TEST_P(ProgramScenario, NamesComeFromTheReferencesTheirHeadersAndTheTextItself) {
    BeginBesideOthers();
    user->Type("amo");
    EXPECT_EQ(user->NamesSuggested(), Strings{"amount|int amount*"});
    user->Type(" mea");
    EXPECT_EQ(user->NamesSuggested(), Strings{"measured|long measured*"});
    user->Type(" Min");
    EXPECT_EQ(user->NamesSuggested(), Strings{"MineToSend|int MineToSend(int first, char* second)*"});
    user->Type(" retu");
    EXPECT_EQ(user->NamesSuggested(), Strings{"return|*"});
}

TEST_P(ProgramScenario, TheListNarrowsAndWidensWithTheWord) {
    BeginBesideOthers();
    user->Type("Sen");
    EXPECT_EQ(user->NamesSuggested(), Strings{"MineToSend|int MineToSend(int first, char* second)*"});
    user->Type("t");
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    user->Backspace();
    EXPECT_EQ(user->NamesSuggested(), Strings{}) << "what has gone stays away until it is asked for";
    user->PressKey(KeyBlank, 2);
    EXPECT_EQ(user->NamesSuggested().size(), 1U);
    user->Backspace();
    EXPECT_EQ(user->NamesSuggested().size(), 1U);
    user->Type("n;");
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    EXPECT_EQ(LineNow(), "Sen;");
}

TEST_P(ProgramScenario, CtrlAndBlankOfferWithoutALetterAndKeysChoose) {
    BeginBesideOthers();
    user->PressKey(KeyBlank, 2);
    EXPECT_EQ(LineNow(), "") << "no blank is typed";
    EXPECT_GT(user->NamesSuggested().size(), 30U);
    user->Type("me");
    user->Type("a");
    user->PressKey(KeyTab, 0);
    EXPECT_EQ(LineNow(), "measured");
    user->Type(" = c");
    user->PressKey(KeyBlank, 2);
    EXPECT_EQ(user->NamesSuggested().at(0), "case|*");
    user->PressKey(KeyDown, 0);
    EXPECT_EQ(user->NamesSuggested().at(1), "char|*");
    user->PressKey(KeyUp, 0);
    user->PressKey(KeyPageDown, 0);
    user->PressKey(KeyPageUp, 0);
    EXPECT_EQ(user->NamesSuggested().at(0), "case|*");
    user->PressKey(KeyEscape, 0);
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    EXPECT_EQ(LineNow(), "measured = c");
}

TEST_P(ProgramScenario, EnterBehindAWholeWordEndsTheLine) {
    BeginBesideOthers();
    user->PressKey(KeyBlank, 2);
    user->Type("do");
    EXPECT_EQ(user->NamesSuggested().at(0), "do|*");
    user->PressEnter();
    EXPECT_EQ(LineNow(), "do");
    EXPECT_EQ(Pane().Selected().caret, (Place{3, 0}));
    EXPECT_EQ(user->NamesSuggested(), Strings{});
}

TEST_P(ProgramScenario, ANameIsTakenByAClick) {
    BeginBesideOthers();
    user->Type("Cal");
    user->ClickSuggestion(0);
    user->Type("(");
    EXPECT_EQ(LineNow(), "Calculate(");
}

TEST_P(ProgramScenario, ABracketShowsTheParametersUntilItIsClosed) {
    BeginBesideOthers();
    user->Type("MineToSend");
    EXPECT_EQ(user->HintShown(), "");
    user->Type("(");
    EXPECT_EQ(user->HintShown(), "int MineToSend(int first, char* second)");
    user->Type("1, Calculate(");
    EXPECT_EQ(user->HintShown(), "long Calculate(int value)");
    user->Type("2)");
    EXPECT_EQ(user->HintShown(), "int MineToSend(int first, char* second)");
    user->Backspace();
    EXPECT_EQ(user->HintShown(), "long Calculate(int value)");
    user->Type("))");
    EXPECT_EQ(user->HintShown(), "");
    user->Type("; (");
    EXPECT_EQ(user->HintShown(), "");
}

TEST_P(ProgramScenario, EscapeTakesTheListAndThenTheParametersAway) {
    BeginBesideOthers();
    user->Type("Calculate(mea");
    EXPECT_EQ(user->NamesSuggested().size(), 1U);
    EXPECT_NE(user->HintShown(), "");
    user->PressKey(KeyEscape, 0);
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    EXPECT_NE(user->HintShown(), "");
    user->PressKey(KeyEscape, 0);
    EXPECT_EQ(user->HintShown(), "");
}

TEST_P(ProgramScenario, WhatIsShownBesideTheCaretGoesWithIt) {
    BeginBesideOthers();
    user->Type("Calculate(mea");
    user->PressKey(KeyF2, 0);
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    EXPECT_EQ(user->HintShown(), "");
    user->PressKey(KeyF3, 0);
    user->Type("s");
    user->PressKey(KeyBlank, 2);
    EXPECT_EQ(user->NamesSuggested().size(), 1U);
    user->PressKey(KeyEnd, 0);
    EXPECT_EQ(user->NamesSuggested(), Strings{});
}

TEST_P(ProgramScenario, ATipTellsWhatASaveMakesOfACharacter) {
    BeginBesideOthers();
    user->Paste("Calculate \xE4\xB8\xAD\xF0\x9F\x98\x80");
    for (const std::size_t column : {std::size_t{10}, std::size_t{11}}) {
        EXPECT_EQ(user->TipShown({2, column}), "The file cannot hold this character. It is saved as: ?") << column;
    }
    EXPECT_EQ(user->TipShown({2, 4}), "long Calculate(int value)");
    Choose("mnuGerman");
    EXPECT_EQ(user->TipShown({2, 10}), "Die Datei kann dieses Zeichen nicht aufnehmen. Gespeichert wird: ?");
}

TEST_P(ProgramScenario, ATipSaysWhatMarksSayAndBelowItWhatANameStandsFor) {
    BeginBesideOthers();
    user->Paste("Calculate");
    RichTextBox& pane = TheDesktop().FuncBody();
    const std::size_t end = pane.CaretPosition();
    const auto mark = [&](const std::string& text) {
        pane.SetLineMarks(std::vector<LineMark>{{3, Mark::Error, end - 9, end, text}});
    };
    const std::string declaration = "\nlong Calculate(int value)";
    mark("Error: <b>");
    EXPECT_EQ(user->TipShown({2, 4}), "Error: <b>" + declaration);
    mark("a" + std::string(98, 'b') + " c");
    EXPECT_EQ(user->TipShown({2, 4}), "a" + std::string(98, 'b') + "\nc" + declaration);
    mark(std::string(1201, 'x'));
    std::string lines;
    for (int line = 0; line < 12; ++line) {
        lines += std::string(100, 'x') + "\n";
    }
    EXPECT_EQ(user->TipShown({2, 4}), lines + "\xE2\x80\xA6" + declaration);
}

TEST_P(ProgramScenario, NothingIsOfferedInCommentsAndLiterals) {
    BeginBesideOthers();
    user->Type("\"Calc\" // Calc");
    EXPECT_EQ(user->NamesSuggested(), Strings{});
    user->PressKey(KeyBlank, 2);
    EXPECT_EQ(user->NamesSuggested(), Strings{});
}

TEST_P(ProgramScenario, ATipTellsWhatANameIs) {
    BeginBesideOthers();
    user->Type("x = measured + 1;");
    EXPECT_EQ(user->TipShown({2, 15}), "");
    EXPECT_EQ(user->TipShown({2, 6}), "long measured");
    EXPECT_EQ(user->TipShown({0, 14}), "int amount");
}

} // namespace
} // namespace tessaly
