// Selecting, editing, adding and deleting in the code tree.
#include "tests/unit/ui/MainWindow.h"

namespace tessaly {
namespace {

class CodeTreeTest : public MainWindow {
protected:
    void SetUp() override { Start(); }
};

TEST_F(CodeTreeTest, SelectingAnEventShowsItsText) {
    desktop.tree.Click("_0e3");
    EXPECT_EQ(desktop.pane.Text(), "void OnKey(char character)\n{\n\n}");
    EXPECT_TRUE(desktop.pane.FuncBodyAvailable());
    EXPECT_EQ(desktop.toolBar.ButtonCount(), 0);
    EXPECT_FALSE(window.FuncBodyChangedFlag);
}

TEST_F(CodeTreeTest, TheEightEventItemsShowEventsZeroToSeven) {
    for (int i = 1; i <= 8; ++i) {
        desktop.tree.Click("_0e" + std::to_string(i));
        EXPECT_EQ(desktop.pane.Text(), EventTable[static_cast<std::size_t>(i - 1)].defaultText);
    }
    EXPECT_EQ(desktop.tree.Count(), 11) << "OnMsg has no item";
}

TEST_F(CodeTreeTest, SelectingTheReferencesShowsThemUnderTheirCaption) {
    desktop.tree.Click("_0v");
    EXPECT_EQ(desktop.pane.Text(), "/* ... include ... */\n\n/* ... variables ...*/\n");
    EXPECT_EQ(desktop.paneLabel.Caption(), "Global References");
}

TEST_F(CodeTreeTest, SelectingAGroupStoresTheTextAndEmptiesThePane) {
    Edit("_0e1", "/* typed */");
    desktop.tree.Click("_0f");
    EXPECT_EQ(EventText(0).substr(0, 11), "/* typed */");
    EXPECT_EQ(desktop.pane.Text(), "");
    EXPECT_FALSE(desktop.pane.FuncBodyAvailable());
    EXPECT_EQ(desktop.paneLabel.Caption(), "Function Code");
    EXPECT_EQ(desktop.toolBar.ButtonCount(), 2);
    EXPECT_EQ(desktop.toolBar.ButtonTag(1), "Add");
    EXPECT_EQ(desktop.toolBar.ButtonTag(2), "Delete");
    desktop.tree.Click("_0e1");
    desktop.tree.Click("_0e");
    EXPECT_EQ(desktop.pane.Text(), "");
    EXPECT_FALSE(desktop.pane.FuncBodyAvailable());
    EXPECT_EQ(desktop.paneLabel.Caption(), "Event Code");
    EXPECT_EQ(desktop.toolBar.ButtonCount(), 0);
}

TEST_F(CodeTreeTest, EventsAndFunctionsLeaveTheCaptionOfThePaneAsItWas) {
    Open("a.PSF", GoodPsf());
    const std::pair<std::string_view, std::string_view> captions[] = {
        {"_0v", "Global References"}, {"_0e1", "Global References"}, {"One", "Global References"},
        {"_0f", "Function Code"},     {"_0e2", "Function Code"},     {"Two", "Function Code"},
        {"_0e", "Event Code"},        {"One", "Event Code"},         {"_0e3", "Event Code"},
    };
    for (const auto& [key, caption] : captions) {
        desktop.tree.Click(key);
        EXPECT_EQ(desktop.paneLabel.Caption(), caption) << key;
    }
}

TEST_F(CodeTreeTest, ASelectionByTheProgramIsNoEditEvenWhileThePaneHasTheFocus) {
    desktop.tree.Click("_0v");
    ASSERT_TRUE(desktop.pane.Click());
    ASSERT_EQ(window.FuncBodyChangeMode, 2);
    window.CodeTree_NodeClick(desktop.tree.Find("_0e1"));
    EXPECT_EQ(window.FuncBodyChangeMode, 1);
    EXPECT_FALSE(window.FuncBodyChangedFlag);
}

TEST_F(CodeTreeTest, TypingAloneDoesNotTouchTheDocument) {
    Edit("_0v", "typed");
    EXPECT_EQ(References().find("typed"), std::string::npos);
    EXPECT_TRUE(window.FuncBodyChangedFlag);
    EXPECT_EQ(window.FuncBodyChangeMode, 2);
}

TEST_F(CodeTreeTest, LineBreaksOfLinesThatWereNotTouchedStayAsTheyWere) {
    Edit("_0e1", "x");
    desktop.pane.PressEnter();
    desktop.tree.Click("_0e");
    EXPECT_EQ(EventText(0), "x\r\nvoid OnError(uchar channel, uchar error_type)\n{\n\n}");
}

TEST_F(CodeTreeTest, ASelectionClearsStatusPanelTwo) {
    for (const std::string_view key : {"_0v", "_0f", "_0e", "_0e1", "One"}) {
        Open("a.PSF", GoodPsf());
        EXPECT_NE(Panel(2), "");
        desktop.tree.Click(key);
        EXPECT_EQ(Panel(2), "") << key;
        EXPECT_EQ(window.StatusPanel2, "") << key;
    }
}

TEST_F(CodeTreeTest, StoringThePaneForgetsTheMessageInPanelTwoButLeavesItToBeRead) {
    for (const std::string_view key : {"_0e", "_0v"}) {
        desktop.tree.Click(key);
        desktop.status.SetPanelText(2, "File was opened successfully!");
        window.StatusPanel2 = "vornMainFrmPrmpt37";
        window.SaveCurrentNodeCode(window.mCurrentNode);
        EXPECT_EQ(window.StatusPanel2, "");
        EXPECT_EQ(Panel(2), "File was opened successfully!");
        Choose("mnuGerman");
        EXPECT_EQ(Panel(2), "");
    }
}

TEST_F(CodeTreeTest, TheLabelFollowsTheCurrentItemNotTheSelectedOne) {
    Edit("_0v", "x");
    desktop.msgBox.WillPress(MsgResult::Cancel);
    Choose("mnuNewPSF");
    ASSERT_EQ(SelectedKey(), "_0v");
    Choose("mnuGerman");
    EXPECT_EQ(desktop.paneLabel.Caption(), "Ereignisse");
    desktop.tree.Click("_0v");
    EXPECT_EQ(desktop.paneLabel.Caption(), "Globale Referenzen");
    Choose("mnuEnglish");
    EXPECT_EQ(desktop.paneLabel.Caption(), "Global References");
}

TEST_F(CodeTreeTest, BuildingTheTreeSetsCaptionAndTabStopsOfThePane) {
    const std::vector<float> stops = desktop.pane.TabStops();
    ASSERT_GT(stops.size(), 1U);
    desktop.tree.Click("_0f");
    desktop.pane.SetTabStops({});
    window.BuildCodeTree();
    EXPECT_EQ(desktop.paneLabel.Caption(), "Event Code");
    EXPECT_EQ(desktop.pane.TabStops(), stops);
}

TEST_F(CodeTreeTest, AddingAFunctionShowsItsTextAndSelectsIt) {
    desktop.tree.Click("_0e2");
    desktop.modal.WillUseName([](memory::NameWindow& dialog) {
        EXPECT_EQ(dialog.ShownCaption(), "Add Function");
        EXPECT_EQ(dialog.NameLabel(), "Please type in the name of the function you wish to add.");
        dialog.Type("Blink");
        dialog.PressOk();
    });
    desktop.window.PressKey(KeyF5);
    EXPECT_EQ(SelectedKey(), "Blink");
    EXPECT_EQ(CurrentKey(), "Blink");
    EXPECT_EQ(desktop.tree.Key(desktop.tree.Parent(window.mCurrentNode)), "_0f");
    EXPECT_EQ(desktop.pane.Text(), "void Blink(void)\n{\n\n}");
    EXPECT_TRUE(desktop.pane.FuncBodyAvailable());
    EXPECT_TRUE(window.FuncBodyChangedFlag);
    EXPECT_EQ(FunctionText("Blink"), "void Blink(void)\n{\n\n}");
    EXPECT_EQ(desktop.toolBar.ButtonCount(), 0) << "the tool bar is not touched";
    EXPECT_EQ(desktop.paneLabel.Caption(), "Event Code") << "nor is the caption";
}

TEST_F(CodeTreeTest, AnEmptyNameAndACancelledDialogAddNothing) {
    desktop.modal.WillUseName([](memory::NameWindow& dialog) { dialog.PressOk(); });
    desktop.window.PressKey(KeyF5);
    desktop.modal.WillUseName([](memory::NameWindow& dialog) {
        dialog.Type("Blink");
        dialog.PressCancel();
    });
    desktop.window.PressKey(KeyF5);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>());
    EXPECT_EQ(CurrentKey(), "_0e");
}

TEST_F(CodeTreeTest, AddingANameThatExistsShowsTheDuplicateMessageAndChangesNoItem) {
    AddFunction("Blink");
    desktop.tree.Click("_0e1");
    desktop.msgBox.WillPress(MsgResult::Ok);
    AddFunction("bli");
    EXPECT_EQ(LastBox(), (memory::MsgBox::Record{
                             "The function you are trying to enter already exists.\nPlease choose an alternate name.",
                             "Duplicate Function Error!", MsgButtons::Ok, MsgIcon::Stop}));
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"Blink"});
    EXPECT_EQ(CurrentKey(), "_0f") << "the group has become current already";
    EXPECT_EQ(SelectedKey(), "_0f");
    EXPECT_EQ(desktop.pane.Text(), EventTable[0].defaultText) << "the pane is left alone";
    EXPECT_TRUE(desktop.pane.FuncBodyAvailable());
    EXPECT_EQ(desktop.paneLabel.Caption(), "Event Code");
}

TEST_F(CodeTreeTest, AddingByKeyOverwritesUnstoredEditsAndByButtonStoresThemFirst) {
    AddFunction("One");
    ASSERT_TRUE(desktop.pane.Click());
    desktop.pane.Type("/* lost */");
    AddFunction("Two");
    EXPECT_EQ(FunctionText("One"), "void One(void)\n{\n\n}");
    desktop.tree.Click("One");
    ASSERT_TRUE(desktop.pane.Click());
    desktop.pane.SetCaret(0);
    desktop.pane.Type("/* kept */");
    desktop.modal.WillUseName([](memory::NameWindow& dialog) {
        dialog.Type("Three");
        dialog.PressOk();
    });
    desktop.toolBar.Press(1);
    EXPECT_EQ(FunctionText("One"), "/* kept */void One(void)\n{\n\n}");
}

TEST_F(CodeTreeTest, AStoredFunctionHasAnEmptyPrototype) {
    Open("a.PSF", Psf(" 1", "One", Lines({"[One]", "ProtoType=void One();", "FuncBody=void One(){}"})));
    Edit("One", "x");
    desktop.tree.Click("_0e");
    std::string prototype;
    std::string code;
    window.mSourceDoc->GetFunction("One", prototype, code);
    EXPECT_EQ(prototype, "");
    EXPECT_EQ(code, "xvoid One(){}\r\n");
}

TEST_F(CodeTreeTest, DeletingAsksAndRemovesItemAndFunction) {
    AddFunction("Foo");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.window.PressKey(KeyF4);
    EXPECT_EQ(LastBox(), (memory::MsgBox::Record{"Delete Foo ?", "Delete function", MsgButtons::YesNo, MsgIcon::None}));
    EXPECT_EQ(FunctionItems(), std::vector<std::string>());
    EXPECT_EQ(window.mSourceDoc->GetFunctionCount(), 0);
    EXPECT_EQ(CurrentKey(), "_0f");
    EXPECT_EQ(SelectedKey(), "_0f");
    EXPECT_EQ(desktop.pane.Text(), "");
    EXPECT_FALSE(desktop.pane.FuncBodyAvailable());
    EXPECT_TRUE(window.FuncBodyChangedFlag);
}

TEST_F(CodeTreeTest, DeletingFromAnUnchangedDocumentChangesIt) {
    Open("a.PSF", GoodPsf());
    desktop.tree.Click("Two");
    ASSERT_FALSE(window.FuncBodyChangedFlag);
    desktop.msgBox.WillPress(MsgResult::No);
    desktop.window.PressKey(KeyF4);
    EXPECT_FALSE(window.FuncBodyChangedFlag);
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.window.PressKey(KeyF4);
    EXPECT_TRUE(window.FuncBodyChangedFlag);
}

TEST_F(CodeTreeTest, DeletingAnsweredWithNoKeepsTheFunction) {
    AddFunction("Foo");
    desktop.msgBox.WillPress(MsgResult::No);
    desktop.window.PressKey(KeyF4);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"Foo"});
    EXPECT_EQ(window.mSourceDoc->GetFunctionCount(), 1);
}

TEST_F(CodeTreeTest, DeletingRemovesTheItemEvenWhenTheDocumentReportsAnError) {
    AddFunction("Foo");
    window.mSourceDoc->DeleteFunction("Foo");
    window.mSourceDoc->AddFunction("Bar", "", "");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.window.PressKey(KeyF4);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>());
    EXPECT_EQ(LastBox(), (memory::MsgBox::Record{"Error 4 has occurred! Please contact technical support!", "Error",
                                                 MsgButtons::Ok, MsgIcon::Stop}));
}

// After a failed load the tree shows functions that the document has not.
class RemovedItemTest : public CodeTreeTest {
protected:
    void SetUp() override {
        CodeTreeTest::SetUp();
        desktop.msgBox.decide = [](const memory::MsgBox::Record& box) {
            return box.buttons == MsgButtons::YesNo ? MsgResult::Yes : MsgResult::Ok;
        };
        Open("a.PSF", GoodPsf());
        desktop.tree.Click("One");
        Open("bad.PSF", "no program source");
        desktop.window.PressKey(KeyF4);
        ASSERT_EQ(LastBox().text, "Error 65535 has occurred! Please contact technical support!");
        ASSERT_EQ(FunctionItems(), std::vector<std::string>{"Two"});
    }
};

TEST_F(RemovedItemTest, TheLanguageIsAppliedToEverythingAndTheLabelIsEmpty) {
    Choose("mnuGerman");
    EXPECT_EQ(desktop.paneLabel.Caption(), "");
    EXPECT_EQ(desktop.treeLabel.Caption(), "Ereignistypauswahl");
    EXPECT_EQ(desktop.menus["mnuAbout"].Caption(), "&Info...");
    EXPECT_EQ(desktop.tree.Text(desktop.tree.Find("_0v")), "Referenzen");
    EXPECT_TRUE(desktop.menus["mnuGerman"].IsChecked());
    EXPECT_FALSE(desktop.menus["mnuEnglish"].IsChecked());
}

TEST_F(RemovedItemTest, FFiveAddsUnderTheFunctions) {
    const std::size_t boxes = Boxes();
    AddFunction("Three");
    EXPECT_EQ(Boxes(), boxes);
    EXPECT_EQ(FunctionItems(), (std::vector<std::string>{"Two", "Three"}));
    EXPECT_EQ(CurrentKey(), "Three");
    EXPECT_EQ(FunctionText("Three"), "void Three(void)\n{\n\n}");
}

TEST_F(RemovedItemTest, FFourDoesNothingAndWhatIsLeftInThePaneIsStoredNowhere) {
    const std::size_t boxes = Boxes();
    desktop.window.PressKey(KeyF4);
    EXPECT_EQ(Boxes(), boxes);
    ASSERT_TRUE(desktop.pane.Click());
    desktop.pane.Type("nobody's");
    desktop.tree.Click("_0v");
    EXPECT_EQ(FunctionNames(), std::vector<std::string>());
    EXPECT_EQ(References(), "");
}

TEST_F(CodeTreeTest, ATreeThatWasNotBuiltToItsEndHasNoCurrentItem) {
    desktop.msgBox.decide = [](const memory::MsgBox::Record&) { return MsgResult::Ok; };
    for (std::size_t number = 1; number <= 40; ++number) {
        Choose("mnuNewPSF");
        desktop.tree.Click("_0e1");
        desktop.faults.FailAt(number);
        Choose("mnuNewPSF");
        desktop.faults.Off();
        const std::size_t boxes = Boxes();
        desktop.window.PressKey(KeyF4);
        EXPECT_EQ(Boxes(), boxes) << "call " << number;
    }
}

TEST_F(CodeTreeTest, SelectingAFunctionItemWhileTheDocumentHasNoFunctionsLeavesThePaneEmpty) {
    AddFunction("Foo");
    window.mSourceDoc->DeleteFunction("Foo");
    desktop.tree.Click("_0e");
    desktop.tree.Click("Foo");
    EXPECT_EQ(desktop.pane.Text(), "");
    EXPECT_TRUE(desktop.pane.FuncBodyAvailable());
    EXPECT_EQ(Boxes(), 0U);
}

TEST_F(CodeTreeTest, FThreeMovesTheFocusOnlyToAnAvailablePane) {
    desktop.window.PressKey(KeyF3);
    EXPECT_EQ(window.FuncBodyChangeMode, 1);
    desktop.tree.Click("_0e1");
    desktop.window.PressKey(KeyF3);
    EXPECT_EQ(window.FuncBodyChangeMode, 2);
    desktop.window.PressKey(KeyF2);
    EXPECT_EQ(window.FuncBodyChangeMode, 1);
}

TEST_F(CodeTreeTest, FFourDoesNothingOnGroupsAndEvents) {
    for (const std::string_view key : {"_0e", "_0f", "_0v", "_0e1"}) {
        desktop.tree.Click(key);
        desktop.window.PressKey(KeyF4);
    }
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_EQ(desktop.tree.Count(), 11);
}

TEST_F(CodeTreeTest, TheToolBarButtonsAddAndDelete) {
    desktop.tree.Click("_0f");
    desktop.modal.WillUseName([](memory::NameWindow& dialog) {
        dialog.Type("Foo");
        dialog.PressEnter();
    });
    desktop.toolBar.Press(1);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"Foo"});
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.toolBar.Press(2);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>());
}

TEST_F(CodeTreeTest, NewAndOpenLeaveNoButtonsOfAFunctionBehind) {
    for (const std::string_view menu : {"mnuNewPSF", "mnuOpenPSF"}) {
        desktop.tree.Click("_0f");
        ASSERT_EQ(desktop.toolBar.ButtonCount(), 2);
        desktop.files.contents["a.PSF"] = GoodPsf();
        desktop.fileDialog.WillChoose("a.PSF");
        Choose(menu);
        EXPECT_EQ(SelectedKey(), "_0e");
        EXPECT_EQ(desktop.toolBar.ButtonCount(), 0) << menu;
    }
}

TEST_F(CodeTreeTest, TheButtonsStayFromFunctionToFunctionUnlessAnImageIsAnotherOne) {
    Open("a.PSF", GoodPsf());
    desktop.tree.Click("One");
    desktop.toolBar.SetButtonTip(1, "the same button");
    desktop.tree.Click("Two");
    EXPECT_EQ(desktop.toolBar.ButtonTip(1), "the same button");
    desktop.toolBar.images.tags = {"Add", "Other"};
    desktop.tree.Click("One");
    EXPECT_EQ(desktop.toolBar.ButtonTip(1), "Add Function");
    EXPECT_EQ(desktop.toolBar.ButtonTag(2), "Other");
}

TEST_F(CodeTreeTest, AClickOnAToolBarButtonEndsTheEditingAndStoresThePane) {
    desktop.toolBar.images.tags = {"Other", "Delete"}; // a button that shows no dialog
    Open("a.PSF", GoodPsf());
    Edit("Two", "x");
    ASSERT_EQ(window.FuncBodyChangeMode, 2);
    window.VornToolBar_ButtonClick(1);
    EXPECT_EQ(window.FuncBodyChangeMode, 1);
    EXPECT_TRUE(FunctionText("Two").starts_with("xvoid Two()"));
}

TEST_F(CodeTreeTest, AnUnknownToolBarKindShowsAnErrorAndLeavesTheBar) {
    desktop.tree.Click("_0f");
    desktop.msgBox.WillPress(MsgResult::Ok);
    window.SetUpToolBar("NoSuchTool");
    EXPECT_EQ(LastBox(), (memory::MsgBox::Record{"Unknown error!", "Error", MsgButtons::Ok, MsgIcon::Stop}));
    EXPECT_EQ(desktop.toolBar.ButtonCount(), 2);
}

// The name dialog

TEST_F(CodeTreeTest, ALeadingDigitGetsTheFirstCharacterMessageAndTheDialogStaysOpen) {
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.modal.WillUseName([this](memory::NameWindow& dialog) {
        dialog.Type("1abc");
        dialog.PressOk();
        EXPECT_TRUE(dialog.IsShown());
        EXPECT_EQ(LastBox(), (memory::MsgBox::Record{
                                 "Function names cannot have a number for the first character! Function add aborted!",
                                 "Function Name Error", MsgButtons::Ok, MsgIcon::Stop}));
        EXPECT_EQ(dialog.FuncVarName(), "1abc");
        dialog.EraseAll();
        dialog.Type("Größe");
        dialog.PressOk();
        EXPECT_EQ(LastBox(),
                  (memory::MsgBox::Record{"Function names must only contain letters or numbers! Function add aborted!",
                                          "Function Name Error", MsgButtons::Ok, MsgIcon::Stop}));
        EXPECT_TRUE(dialog.IsShown());
        dialog.PressCancel();
    });
    desktop.window.PressKey(KeyF5);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>()) << "Cancel counts after a failed OK";
}

TEST_F(CodeTreeTest, ACorrectedNameIsAccepted) {
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.modal.WillUseName([](memory::NameWindow& dialog) {
        dialog.Type("a_b");
        dialog.PressOk();
        dialog.EraseAll();
        dialog.Type("ABC123");
        dialog.PressOk();
        EXPECT_FALSE(dialog.IsShown());
    });
    desktop.window.PressKey(KeyF5);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"ABC123"});
}

} // namespace
} // namespace tessaly
