// Whatever comes between two edits, the second one is asked about when the window closes.
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {
namespace {

TEST_P(ProgramScenario, WhatIsTypedAfterASaveIsAskedAbout) {
    BeginTyping();
    Choose("mnuSavePSF");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    TypeOn();
    EXPECT_NE(ReadFile(user->FilePath("a.PSF")).find("/* first *//* later */void One()"), std::string::npos);
}

TEST_P(ProgramScenario, WhatIsTypedAfterASaveByItsKeyIsAskedAbout) {
    BeginTyping();
    user->PressKey('S', 2);
    user->Settle();
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    EXPECT_EQ(Panel(2), "File was saved successfully!");
    TypeOn();
    EXPECT_NE(ReadFile(user->FilePath("a.PSF")).find("/* first *//* later */void One()"), std::string::npos);
}

TEST_P(ProgramScenario, WhatIsTypedAfterAnOpenByItsKeyThatIsCancelledIsAskedAbout) {
    BeginTyping();
    user->WillPress(MsgResult::Yes);
    user->WillCancelFileDialog();
    user->PressKey('O', 2);
    user->Settle();
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    TypeOn();
}

TEST_P(ProgramScenario, TheKeyForANewFileWorksInTheTreeToo) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    Click("One");
    user->PressKey('N', 2);
    user->Settle();
    EXPECT_EQ(FunctionItems(), Strings{});
    EXPECT_EQ(Panel(2), "File was created successfully!");
}

TEST_P(ProgramScenario, WhatIsTypedAfterASaveUnderAnotherNameIsAskedAbout) {
    BeginTyping();
    WriteFile(user->FilePath("there.PSF"), "");
    user->WillChooseFile(user->FilePath("there.PSF"));
    user->WillPress(MsgResult::Yes); // replace
    Choose("mnuSaveAsPSF");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    TypeOn();
    EXPECT_NE(ReadFile(user->FilePath("there.PSF")).find("/* first *//* later */"), std::string::npos);
}

TEST_P(ProgramScenario, WhatIsTypedAfterACancelledSaveIsAskedAbout) {
    BeginTyping();
    user->WillCancelFileDialog();
    Choose("mnuSaveAsPSF");
    TypeOn();
}

TEST_P(ProgramScenario, WhatIsTypedAfterABuildThatSavesIsAskedAbout) {
    BeginTyping();
    user->WillPress(MsgResult::Yes);
    user->PressKey(KeyF10, 0);
    user->Settle();
    EXPECT_TRUE(user->HasStarted(user->StartableCommand() + " \"" + user->FilePath("a.out") + "\"", 3));
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    LeaveMenuBar();
    TypeOn();
}

TEST_P(ProgramScenario, WhatIsTypedAfterACancelledOpenIsAskedAbout) {
    BeginTyping();
    user->WillPress(MsgResult::Yes);
    user->WillCancelFileDialog();
    Choose("mnuOpenPSF");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    TypeOn();
}

TEST_P(ProgramScenario, WhatIsTypedAfterADeclinedDeletionIsAskedAbout) {
    BeginTyping();
    Choose("mnuSavePSF");
    user->WillPress(MsgResult::No);
    user->PressButton(2);
    user->WillPress(MsgResult::No);
    user->PressKey(KeyF4, 0);
    TypeOn();
}

TEST_P(ProgramScenario, WhatIsTypedAfterANameThatWasNotGivenIsAskedAbout) {
    BeginTyping();
    Choose("mnuSavePSF");
    user->WillUseName([](NameWindowUser& dialog) { dialog.PressCancel(); });
    user->PressKey(KeyF5, 0);
    TypeOn();
}

TEST_P(ProgramScenario, WhatIsTypedAfterAFileThatCannotBeOpenedIsAskedAbout) {
    BeginTyping();
    Choose("mnuSavePSF");
    WriteFile(user->FilePath("bad.PSF"), "");
    user->WillPress(MsgResult::Ok);
    user->DropFile(user->FilePath("bad.PSF"));
    user->Settle();
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    TypeOn();
}

TEST_P(ProgramScenario, WhatIsTypedAfterMenusBoxesAndOtherWindowsIsAskedAbout) {
    BeginTyping();
    Choose("mnuSavePSF");
    LeaveMenuBar();
    Choose("mnuGerman");
    Choose("mnuEnglish");
    user->WillPress(MsgResult::Ok);
    Choose("mnuHelpHotKeys");
    user->WillUseSplash([](SplashWindowUser& splash) { splash.PressKey('A'); });
    Choose("mnuAbout");
    user->GoToAnotherWindow();
    user->ComeBack();
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    TypeOn();
}

TEST_P(ProgramScenario, WhatIsTypedWhereAKeyHasLedIsAskedAbout) {
    BeginFinding();
    Pane().Select({{2, 1}, {2, 1}});
    user->PressKey('D', Ctrl);
    ASSERT_EQ(CurrentKey(), "Two");
    user->Type("x");
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    user->PressKey('S', Ctrl);
    user->PressKey(KeyLeft, Alt);
    ASSERT_EQ(CurrentKey(), "One");
    ASSERT_FALSE(program->FuncBodyChangedFlag);
    user->Type("x");
    EXPECT_TRUE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, WhatACommandPutsIntoThePaneIsNoEdit) {
    BeginTyping();
    user->WillPress(MsgResult::No);
    Open("b.PSF", GoodPsf());
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    Choose("mnuNewPSF");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    EXPECT_EQ(program->FuncBodyChangeMode, 2) << "the pane still has the keyboard";
}

} // namespace
} // namespace tessaly
