// The pane as who writes a handler meets it: keys that indent, comment out and move lines, in the whole program.
#include "tests/scenarios/ProgramScenario.h"

namespace tessaly {
namespace {

TEST_P(ProgramScenario, EnterBehindABraceGoesOneStepIn) {
    BeginEditing({{1, 1}, {1, 1}});
    user->PressEnter();
    user->Type("x;");
    user->PressEnter();
    user->Type("y;");
    EXPECT_EQ(Pane().Text(), "void One()\r\n{\r\n\tx;\r\n\ty;\r\n}\r\n");
    EXPECT_TRUE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, AClosingBraceGoesBackToItsPartner) {
    BeginEditing({{1, 1}, {1, 1}});
    user->PressEnter();
    user->Type("if (x) {");
    user->PressEnter();
    user->Type("}");
    EXPECT_EQ(Pane().Text(), "void One()\r\n{\r\n\tif (x) {\r\n\t}\r\n}\r\n");
}

TEST_P(ProgramScenario, TheTabKeyMovesSelectedLinesAndElseInsertsATab) {
    BeginEditing({{0, 0}, {1, 1}});
    user->PressKey(KeyTab, 0);
    EXPECT_EQ(Pane().Text(), "\tvoid One()\r\n\t{\r\n}\r\n");
    user->PressKey(KeyTab, 1);
    EXPECT_EQ(Pane().Text(), OneBody);
    user->Undo();
    ExpectOneEdit("\tvoid One()\r\n\t{\r\n}\r\n");
    Pane().Select({{0, 0}, {0, 4}});
    user->PressKey(KeyTab, 0);
    ExpectOneEdit("\t One()\r\n{\r\n}\r\n");
}

TEST_P(ProgramScenario, BackspaceGoesBackToTheTabStop) {
    BeginEditing({{1, 0}, {1, 0}});
    user->Paste("      ");
    user->Backspace();
    EXPECT_EQ(Pane().Line(1), u"    {");
    user->Backspace();
    EXPECT_EQ(Pane().Line(1), u"{");
}

TEST_P(ProgramScenario, APasteKeepsItsText) {
    BeginEditing({{1, 1}, {1, 1}});
    user->Paste("\n  a {\nb\n}");
    EXPECT_EQ(Pane().Text(), "void One()\r\n{\r\n  a {\r\nb\r\n}\r\n}\r\n");
}

TEST_P(ProgramScenario, LinesBecomeCommentsAndCodeAgain) {
    BeginEditing({{0, 0}, {1, 1}});
    user->PressKey(KeySlash, 2);
    EXPECT_EQ(Pane().Text(), "// void One()\r\n// {\r\n}\r\n");
    user->PressKey(KeySlash, 2);
    EXPECT_EQ(Pane().Text(), OneBody);
    user->Undo();
    ExpectOneEdit("// void One()\r\n// {\r\n}\r\n");
}

TEST_P(ProgramScenario, LinesMoveUpAndDown) {
    BeginEditing({{1, 0}, {1, 0}});
    user->PressKey(KeyUp, 4);
    ExpectOneEdit("{\r\nvoid One()\r\n}\r\n");
    user->PressKey(KeyDown, 4);
    ExpectOneEdit("void One()\r\n}\r\n{\r\n");
    Pane().MoveCaret(0);
    user->PressKey(KeyUp, 4);
    EXPECT_EQ(Pane().Text(), OneBody);
}

TEST_P(ProgramScenario, LinesAreDoubledAndDeleted) {
    BeginEditing({{1, 0}, {1, 0}});
    user->PressKey('D', 3);
    ExpectOneEdit("void One()\r\n{\r\n{\r\n}\r\n");
    user->PressKey('K', 3);
    ExpectOneEdit("void One()\r\n}\r\n");
}

TEST_P(ProgramScenario, RedoHasBothOfItsKeys) {
    BeginEditing({{1, 0}, {1, 0}});
    for (const auto& [key, shift] : {std::pair('Y', 2), std::pair('Z', 3)}) {
        user->PressKey('K', 3);
        user->Undo();
        user->PressKey(key, shift);
        ExpectOneEdit("void One()\r\n}\r\n");
    }
}

TEST_P(ProgramScenario, WhatTheFileCannotHoldIsSetApartAsSoonAsItIsPasted) {
    BeginEditing({{2, 0}, {2, 0}});
    user->Paste("// \xC3\xA4 \xE2\x82\xAC \xCE\xB1\n");
    const std::size_t start = user->PaneShown().find("//");
    const std::size_t lost = user->PaneShown().find("\xCE\xB1");
    EXPECT_NE(user->ColourBehind(lost), user->ColourBehind(start));
    for (const std::string_view kept : {"\xC3\xA4", "\xE2\x82\xAC"}) {
        EXPECT_EQ(user->ColourBehind(user->PaneShown().find(kept)), user->ColourBehind(start)) << kept;
    }
}

TEST_P(ProgramScenario, WhoComesBackToAnItemFindsTheCaretAndUndoesWhatWasDone) {
    BeginEditing({{1, 1}, {1, 1}});
    user->PressEnter();
    user->Type("x;");
    Click("Two");
    EXPECT_EQ(Pane().Selected(), Selection{});
    EXPECT_FALSE(Pane().CanUndo());
    user->ClickPane();
    user->SetCaret(0);
    user->Type("y");
    Click("_0f");
    Click("One");
    EXPECT_EQ(Pane().Selected(), (Selection{{2, 3}, {2, 3}}));
    user->PressKey(KeyF3, 0);
    user->Undo();
    user->Undo();
    EXPECT_EQ(Pane().Text(), OneBody);
    EXPECT_FALSE(Pane().CanUndo());
    Click("Two");
    EXPECT_EQ(Pane().CaretPosition(), 1U);
    EXPECT_TRUE(Pane().Undo());
    EXPECT_EQ(Pane().Text(), "void Two()\r\n{\r\n}\r\n");
    Click("One");
    EXPECT_TRUE(Pane().CanRedo());
}

TEST_P(ProgramScenario, AnItemThatIsSelectedAgainKeepsItsCaret) {
    BeginEditing({{1, 1}, {1, 1}});
    Click("One");
    Tree().Select(Tree().Find("One"));
    program->CodeTree_NodeClick(Tree().Find("One"));
    EXPECT_EQ(Pane().Selected(), (Selection{{1, 1}, {1, 1}}));
}

TEST_P(ProgramScenario, AnotherDocumentBeginsAtTheTopWithNothingToUndo) {
    BeginEditing({{1, 1}, {1, 1}});
    user->Type("x");
    Choose("mnuSavePSF");
    Open("b.PSF", GoodPsf());
    Click("One");
    EXPECT_EQ(Pane().CaretPosition(), 0U);
    EXPECT_FALSE(Pane().CanUndo());
}

TEST_P(ProgramScenario, AFunctionThatIsDeletedAndAddedAgainIsANewOne) {
    BeginEditing({{1, 1}, {1, 1}});
    user->Type("x");
    user->WillPress(MsgResult::Yes);
    user->PressKey(KeyF4, 0);
    AddFunction("One");
    Click("Two");
    Click("One");
    EXPECT_EQ(Pane().CaretPosition(), 0U);
    EXPECT_FALSE(Pane().CanUndo());
}

TEST_P(ProgramScenario, WhatAKeyDidIsSaved) {
    BeginEditing({{0, 0}, {0, 0}});
    user->PressKey(KeySlash, 2);
    Choose("mnuSavePSF");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    EXPECT_NE(ReadFile(user->FilePath("a.PSF")).find("// void One()"), std::string::npos);
}

} // namespace
} // namespace tessaly
