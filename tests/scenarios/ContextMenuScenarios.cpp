// The menus of the pane and the tree, the click with Ctrl, and the zoom, in the whole program.
#include "tests/scenarios/ProgramScenario.h"

#include <algorithm>

namespace tessaly {
namespace {

// Rows of the menu of the pane.
constexpr std::size_t UndoRow = 0;
constexpr std::size_t RedoRow = 1;
constexpr std::size_t CutRow = 3;
constexpr std::size_t CopyRow = 4;
constexpr std::size_t PasteRow = 5;
constexpr std::size_t DeleteRow = 6;
constexpr std::size_t SelectAllRow = 8;
constexpr std::size_t FindRow = 10;
constexpr std::size_t LineRow = 11;
constexpr std::size_t CommentRow = 12;
constexpr std::size_t MessagesRow = 14;

// And of the tree.
constexpr std::size_t AddRow = 0;
constexpr std::size_t DeleteItemRow = 1;
constexpr std::size_t FirstMessageRow = 3;

constexpr Selection FirstWord = {{0, 0}, {0, 4}};

TEST_P(ProgramScenario, TheMenuOfThePaneNamesItsKeys) {
    BeginEditing({});
    user->UseMenuByKey(KeyMenu, 0, std::nullopt);
    EXPECT_EQ(user->MenuSeen(), (Strings{"(&Undo|Ctrl+Z)", "(&Redo|Ctrl+Y)", "-", "(Cu&t|Ctrl+X)", "(&Copy|Ctrl+C)",
                                         "&Paste|Ctrl+V", "(&Delete|Del)", "-", "Select &all|Ctrl+A", "-",
                                         "&Find|Ctrl+F", "&Go to line|Ctrl+G", "Toggle co&mment|Ctrl+/"}));
    Choose("mnuGerman");
    user->Type("x");
    Pane().Select(FirstWord);
    user->UseMenuOfPane(1, std::nullopt);
    EXPECT_EQ(user->MenuSeen(), (Strings{"&R\xC3\xBC\x63kg\xC3\xA4ngig|Strg+Z", "(&Wiederherstellen|Strg+Y)", "-",
                                         "&Ausschneiden|Strg+X", "&Kopieren|Strg+C", "&Einf\xC3\xBCgen|Strg+V",
                                         "&L\xC3\xB6schen|Entf", "-", "Alles mark&ieren|Strg+A", "-", "&Suchen|Strg+F",
                                         "&Gehe zu Zeile|Strg+G", "K&ommentar umschalten|Strg+/"}));
}

TEST_P(ProgramScenario, TheMenuOfThePaneCutsAndPastes) {
    BeginEditing(FirstWord);
    user->UseMenuOfPane(1, CutRow);
    EXPECT_EQ(Pane().Text(), " One()\r\n{\r\n}\r\n");
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    user->UseMenuOfPane(0, PasteRow);
    EXPECT_EQ(Pane().Text(), OneBody);
    Pane().Select({{0, 5}, {0, 8}});
    user->UseMenuOfPane(6, CopyRow);
    user->UseMenuOfPane(0, PasteRow);
    EXPECT_EQ(Pane().Text(), "One" + std::string(OneBody));
    user->Type("x");
    EXPECT_EQ(Pane().Text(), "Onex" + std::string(OneBody)) << "the pane has the keyboard";
}

TEST_P(ProgramScenario, TheMenuOfThePaneDeletes) {
    BeginEditing(FirstWord);
    user->UseMenuOfPane(1, DeleteRow);
    ExpectOneEdit(" One()\r\n{\r\n}\r\n");
}

TEST_P(ProgramScenario, TheMenuOfThePaneMakesComments) {
    BeginEditing({});
    user->UseMenuOfPane(0, CommentRow);
    ExpectOneEdit("// " + std::string(OneBody));
}

TEST_P(ProgramScenario, TheMenuOfThePaneUndoesAndDoesAgain) {
    BeginEditing({});
    user->Type("x");
    Choose("mnuSavePSF");
    ASSERT_FALSE(program->FuncBodyChangedFlag);
    user->UseMenuOfPane(0, UndoRow);
    EXPECT_EQ(Pane().Text(), OneBody);
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    user->UseMenuOfPane(0, RedoRow);
    EXPECT_EQ(Pane().Text(), "x" + std::string(OneBody));
}

TEST_P(ProgramScenario, TheMenuOfThePaneSelectsAll) {
    BeginEditing({});
    user->UseMenuOfPane(0, SelectAllRow);
    EXPECT_EQ(Pane().Selected(), (Selection{{0, 0}, {3, 0}}));
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    user->Type("x");
    EXPECT_EQ(Pane().Text(), "x");
}

TEST_P(ProgramScenario, TheMenuOfThePaneOpensTheBar) {
    BeginFinding();
    user->UseMenuOfPane(0, FindRow);
    EXPECT_TRUE(user->IsSeen(Bar().wanted));
    user->Type("Two");
    EXPECT_EQ(user->WordsOn(Bar().wanted), "Two");
    EXPECT_EQ(Pane().Text(), FindText);
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    user->PressKey(KeyEscape, 0);
    user->UseMenuByKey(KeyMenu, 0, LineRow);
    EXPECT_EQ(user->WordsOn(Bar().wanted), "3");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, TheMenuOfThePaneBringsTheMessagesBack) {
    StartProgram();
    OpenWrong();
    Choose("mnuBuildExe");
    Print("a.c:1:1: error: elsewhere\n");
    ASSERT_TRUE(WaitForRows(1));
    user->PressKeyInMessages(KeyEscape, 0);
    user->Settle();
    ASSERT_FALSE(Seen().isVisible);
    Click("Two");
    user->ClickPane();
    user->UseMenuOfPane(0, MessagesRow);
    EXPECT_EQ(user->MenuSeen().back(), "&Show messages|Ctrl+J");
    EXPECT_TRUE(Seen().isVisible);
    EXPECT_FALSE(Seen().hasKeyboard);
    EXPECT_EQ(CurrentKey(), "Two");
}

TEST_P(ProgramScenario, TheMenuOfTheTreeAddsAndDeletesAsTheToolBarDoes) {
    BeginTyping();
    user->WillUseName([](NameWindowUser& dialog) {
        dialog.Type("Three");
        dialog.PressOk();
    });
    user->UseMenuOfItem(Tree().Find("One"), AddRow);
    user->Settle();
    EXPECT_EQ(user->MenuSeen(), (Strings{"&Add function|F5", "&Delete function|F4", "-", "(&Go to first message|)"}));
    EXPECT_EQ(FunctionItems(), (Strings{"One", "Two", "Three"}));
    EXPECT_EQ(CurrentKey(), "Three");
    Click("One");
    EXPECT_TRUE(user->PaneShown().starts_with("/* first */")) << "it was stored first";
    user->WillPress(MsgResult::Yes);
    user->UseMenuOfItem(Tree().Find("Three"), DeleteItemRow);
    user->Settle();
    EXPECT_EQ(user->MessageBoxes().back().text, "Delete Three ?");
    EXPECT_EQ(FunctionItems(), (Strings{"One", "Two"}));
    EXPECT_EQ(CurrentKey(), "_0f");
}

TEST_P(ProgramScenario, TheMenuOfTheTreeOffersWhatTheToolBarHas) {
    StartProgram(1);
    Open("a.PSF", GoodPsf());
    user->UseMenuOfItem(Tree().Find("_0v"), std::nullopt);
    EXPECT_EQ(user->MenuSeen(), (Strings{"(Funktion &hinzuf\xC3\xBCgen|F5)", "(Funktion &l\xC3\xB6schen|F4)", "-",
                                         "(&Gehe zur ersten Meldung|)"}));
    EXPECT_EQ(CurrentKey(), "_0v");
    user->UseMenuOfItem(Tree().Find("_0f"), std::nullopt);
    EXPECT_EQ(user->MenuSeen(), (Strings{"Funktion &hinzuf\xC3\xBCgen|F5", "(Funktion &l\xC3\xB6schen|F4)", "-",
                                         "(&Gehe zur ersten Meldung|)"}));
}

TEST_P(ProgramScenario, TheMenuOfTheTreeGoesToTheFirstMessageOfItsItem) {
    StartProgram();
    OpenWrong();
    Choose("mnuBuildExe");
    const std::string code = ReadFile(CFile());
    const std::size_t end = code.find("int a = ") + 8;
    const auto line = 1 + std::count(code.begin(), code.begin() + static_cast<std::ptrdiff_t>(end), '\n');
    const std::size_t column = end - code.rfind('\n', end);
    Print("kit.h:1:1: error: elsewhere\n" + CFile() + ":" + std::to_string(line) + ":" + std::to_string(column) +
          ": error: a value\n");
    ASSERT_TRUE(WaitForRows(2));
    user->UseMenuOfItem(Tree().Find("One"), FirstMessageRow);
    user->Settle();
    EXPECT_EQ(Seen().rows.at(1), "Error|One|3|a value*");
    user->Type("1");
    EXPECT_NE(user->PaneShown().find("\tint a = 1;\n"), std::string::npos) << user->PaneShown();
    EXPECT_TRUE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, AClickWithCtrlGoesToTheFunctionThere) {
    BeginFinding();
    user->CtrlClickPane(FindText.find("Two();") - 2); // where a break is one character
    user->Settle();
    EXPECT_EQ(CurrentKey(), "Two");
    user->Type("x");
    EXPECT_TRUE(user->PaneShown().starts_with("xvoid Two()")) << user->PaneShown();
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    user->PressKey(KeyLeft, Alt);
    EXPECT_EQ(CurrentKey(), "One");
    EXPECT_EQ(Pane().Selected().caret.line, 2U);
    user->CtrlClickPane(0); // nothing is called "void"
    user->Settle();
    EXPECT_EQ(CurrentKey(), "One");
}

TEST_P(ProgramScenario, KeysAndTheWheelZoomThePaneForTheRun) {
    BeginEditing({});
    user->PressKey(KeyPlus, Ctrl);
    user->PressKey(KeyAdd, Ctrl);
    EXPECT_EQ(Pane().Zoom(), 120);
    user->PressKey(KeyMinus, Ctrl);
    EXPECT_EQ(Pane().Zoom(), 110);
    user->TurnCtrlWheel(240);
    EXPECT_EQ(Pane().Zoom(), 130);
    Click("Two");
    Choose("mnuNewPSF");
    EXPECT_EQ(Pane().Zoom(), 130);
    user->PressKey('0', Ctrl);
    EXPECT_EQ(Pane().Zoom(), 100);
    user->TurnCtrlWheel(-120);
    EXPECT_EQ(Pane().Zoom(), 90);
    EXPECT_FALSE(program->FuncBodyChangedFlag);
}

} // namespace
} // namespace tessaly
