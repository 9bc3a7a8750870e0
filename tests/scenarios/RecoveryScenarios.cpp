// What is not saved has a copy as soon as the program has nothing to do, and comes back at the next start.
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {
namespace {

TEST_P(ProgramScenario, WhatIsTypedIsInACopyWhenTheProgramHasNothingToDo) {
    if (GetParam().name == WithoutCopies) {
        GTEST_SKIP();
    }
    BeginTyping();
    user->Settle();
    EXPECT_TRUE(InCopy("One").starts_with("/* first */void One()")) << InCopy("One");
    user->Type("2");
    user->Settle();
    EXPECT_TRUE(InCopy("One").starts_with("/* first */2void One()")) << InCopy("One");
    Choose("mnuSavePSF");
    user->Settle();
    EXPECT_EQ(InCopy("One"), "none");
}

TEST_P(ProgramScenario, WhatIsTypedIsInACopyWhenTheUserHasGoneToAnotherProgram) {
    if (GetParam().name == WithoutCopies) {
        GTEST_SKIP();
    }
    BeginTyping();
    user->GoToAnotherProgram();
    EXPECT_TRUE(InCopy("One").starts_with("/* first */void One()")) << InCopy("One");
}

TEST_P(ProgramScenario, WhatWasLeftComesBackWithItsItemAndItsCaret) {
    if (GetParam().name == WithoutCopies) {
        GTEST_SKIP();
    }
    LeaveCopy("functions/Two", "void Two()\r\n{\r\n    typed\r\n}", 19); // behind "ty"
    user->WillPress(MsgResult::Yes);
    StartProgram();
    ASSERT_EQ(user->MessageBoxes().size(), 1U);
    EXPECT_EQ(user->MessageBoxes()[0].caption, "Recovery");
    EXPECT_EQ(user->PaneShown(), "void Two()\n{\n    typed\n}");
    EXPECT_EQ(Selected(), "Two");
    EXPECT_EQ(Panel(1), "File=" + user->FilePath("left.PSF"));
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    user->PressKey(KeyF3, 0);
    user->Type("X");
    EXPECT_EQ(user->PaneShown(), "void Two()\n{\n    tyXped\n}");
    Choose("mnuSavePSF");
    EXPECT_NE(ReadFile(user->FilePath("left.PSF")).find("    tyXped\r\n"), std::string::npos);
    EXPECT_EQ(InCopy("Two"), "none");
}

TEST_P(ProgramScenario, WhatIsNotWantedStaysInTheFolderOfKeptDocuments) {
    if (GetParam().name == WithoutCopies) {
        GTEST_SKIP();
    }
    LeaveCopy("references", "int typed;", 0);
    user->WillPress(MsgResult::No);
    StartProgram(1);
    EXPECT_EQ(user->MessageBoxes().at(0).caption, "Wiederherstellung");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    const std::vector<Copy> kept = RecoveryStore(Recovery()).KeptDocuments();
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].origin.reason, Reason::NotRecovered);
    EXPECT_NE(ReadFile(kept[0].path).find("int typed;"), std::string::npos);
}

} // namespace
} // namespace tessaly
