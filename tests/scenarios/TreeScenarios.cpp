// The tree as who writes handlers meets it: what is edited and not saved, and how an item is found.
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {
namespace {

TEST_P(ProgramScenario, WhatIsEditedIsInItalicsUntilItIsSaved) {
    BeginEditing({{1, 1}, {1, 1}});
    EXPECT_EQ(user->MarkShown(Tree().Find("One")), "");
    user->Type("x");
    EXPECT_EQ(user->MarkShown(Tree().Find("One")), "italic: not saved");
    user->ClickItem(Tree().Find("Two"));
    EXPECT_EQ(user->MarkShown(Tree().Find("One")), "italic: not saved");
    EXPECT_EQ(user->MarkShown(Tree().Find("Two")), "");
    Choose("mnuGerman");
    EXPECT_EQ(user->MarkShown(Tree().Find("One")), "italic: nicht gespeichert");
    Choose("mnuSavePSF");
    EXPECT_EQ(user->MarkShown(Tree().Find("One")), "");
}

TEST_P(ProgramScenario, ANewFunctionIsNotSaved) {
    StartProgram();
    user->WillUseName([](NameWindowUser& dialog) {
        dialog.Type("Work");
        dialog.PressOk();
    });
    user->PressKey(KeyF5, 0);
    EXPECT_EQ(user->MarkShown(Tree().Find("Work")), "italic: not saved");
}

TEST_P(ProgramScenario, AnEventsTextCanBeEditedAndNotSaved) {
    BeginEditing({{0, 0}, {0, 0}});
    user->ClickItem(Tree().Find("_0e3"));
    user->ClickPane();
    user->Type("x");
    EXPECT_EQ(user->MarkShown(Tree().Find("_0e3")), "italic: not saved");
    user->WillPress(MsgResult::No);
    Choose("mnuNewPSF");
    EXPECT_EQ(user->MarkShown(Tree().Find("_0e3")), "");
}

TEST_P(ProgramScenario, LettersLeadToAFunction) {
    BeginEditing({{0, 0}, {0, 0}});
    user->PressKey(KeyF2, 0);
    user->Type("tw");
    EXPECT_EQ(Selected(), "Two");
    EXPECT_EQ(Pane().Text(), "void Two()\r\n{\r\n}\r\n");
}

} // namespace
} // namespace tessaly
