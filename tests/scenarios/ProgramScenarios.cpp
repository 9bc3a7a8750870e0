// Whole pieces of work, as a user does them on a desktop. What the program does in every detail is tested on the
// desktop in memory alone; here it has to get on with real controls.
#include "tests/scenarios/ProgramScenario.h"

#include <cmath>

namespace tessaly {
namespace {

TEST_P(ProgramScenario, AProgramBlockIsWrittenFromNothingAndBuilt) {
    StartProgram();
    Choose("mnuNewPSF");
    Write("_0v", "int count;");
    Click("_0f");
    user->WillUseName([](NameWindowUser& dialog) {
        dialog.Type("Blink");
        dialog.PressEnter();
    });
    user->PressButton(1);
    user->PressKey(KeyF3, 0);
    user->SetCaret(user->PaneShown().find('{') + 2);
    user->Type("    count++;");
    Write("_0e6", "/* on a timer */");
    user->WillPress(MsgResult::Yes);
    user->WillChooseFile(user->FilePath("Blink.PSF"));
    user->PressKey(KeyF10, 0);

    const std::string code = ReadFile(CFile());
    EXPECT_NE(code.find("int count;/* ... include ... */"), std::string::npos);
    EXPECT_NE(code.find("\r\nvoid Blink(void);\r\n"), std::string::npos);
    EXPECT_NE(code.find("{\n    count++;\n}\r\n"), std::string::npos);
    EXPECT_NE(code.find("/* on a timer */void OnTimer(uint timerid)\n"), std::string::npos);
    EXPECT_TRUE(user->HasStarted(user->StartableCommand() + " \"" + user->FilePath("Blink.out") + "\"", 3));
    EXPECT_EQ(Panel(2), "Compilation Complete!");
    EXPECT_FALSE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, TheToolBarHasButtonsOnlyWhileTheFunctionsOrOneOfThemAreSelected) {
    StartProgram();
    ToolBar& bar = TheDesktop().VornToolBar();
    Open("a.PSF", GoodPsf());
    Click("One");
    EXPECT_EQ(bar.ButtonCount(), 2);
    Choose("mnuNewPSF");
    EXPECT_EQ(bar.ButtonCount(), 0);
    Click("_0f");
    Open("a.PSF", GoodPsf());
    EXPECT_EQ(bar.ButtonCount(), 0);
    for (const std::string_view key : {"_0v", "_0e", "_0e3"}) {
        Click("Two");
        EXPECT_EQ(bar.ButtonCount(), 2);
        Click(key);
        EXPECT_EQ(bar.ButtonCount(), 0) << key;
    }
}

TEST_P(ProgramScenario, WhatWasSavedIsOpenedAgain) {
    StartProgram();
    Write("_0v", "int count;\tx");
    user->PressEnter();
    Click("_0f"); // or F5 would not store what was typed
    AddFunction("Blink");
    user->WillChooseFile(user->FilePath("a b.PSF"));
    Choose("mnuSaveAsPSF");
    Choose("mnuNewPSF");
    EXPECT_EQ(FunctionItems(), Strings{});
    user->WillChooseFile(user->FilePath("a b.PSF"));
    Choose("mnuOpenPSF");
    EXPECT_EQ(FunctionItems(), Strings{"Blink"});
    Click("Blink");
    EXPECT_EQ(Pane().Text(), "void Blink(void)\n{\n\n}\r\n");
    Click("_0v");
    EXPECT_TRUE(Pane().Text().starts_with("int count;\tx\r\n"));
}

TEST_P(ProgramScenario, ASecondFileIsOpenedAfterSavingTheFirst) {
    StartProgram();
    Open("first.PSF", GoodPsf());
    Write("One", "/* kept */");
    user->WillPress(MsgResult::Yes);
    Open("second.PSF", Psf(" 1", "Other", PsfFunction("Other", "void Other()\r\n{\r\n}")));
    EXPECT_NE(ReadFile(user->FilePath("first.PSF")).find("FuncBody=/* kept */void One()"), std::string::npos);
    EXPECT_EQ(FunctionItems(), Strings{"Other"});
    EXPECT_EQ(program->mLastOpenedFile, user->FilePath("second.PSF"));
}

TEST_P(ProgramScenario, OpeningASecondFileIsCancelledAtTheQuestion) {
    StartProgram();
    Open("first.PSF", GoodPsf());
    Write("One", "/* kept */");
    user->WillPress(MsgResult::Cancel);
    Choose("mnuOpenPSF");
    EXPECT_EQ(FunctionItems(), (Strings{"One", "Two"}));
    EXPECT_TRUE(program->FuncBodyChangedFlag);
    EXPECT_EQ(CurrentKey(), "One");
}

TEST_P(ProgramScenario, OnlyTheUsersEditsInThePaneCountAsEdits) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    for (const std::string_view key : {"_0v", "One", "_0e1", "_0e", "_0f", "Two"}) {
        Click(key);
    }
    user->PressKey(KeyF3, 0);
    user->PressKey(KeyF2, 0);
    EXPECT_FALSE(program->FuncBodyChangedFlag);
    user->PressKey(KeyF3, 0);
    user->Type("x");
    EXPECT_TRUE(program->FuncBodyChangedFlag);
}

TEST_P(ProgramScenario, FFourDeletesAndFFiveAddsFromEveryTreeItem) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    const Strings keys = {"_0v",  "_0f",  "_0e",  "_0e1", "_0e2", "_0e3", "_0e4",
                          "_0e5", "_0e6", "_0e7", "_0e8", "One",  "Two"};
    for (const std::string& key : keys) {
        SCOPED_TRACE(key);
        Click(key);
        const bool isFunction = key == "One" || key == "Two";
        if (isFunction) {
            user->WillPress(MsgResult::Yes);
        }
        const std::size_t boxes = user->MessageBoxes().size();
        user->PressKey(KeyF4, 0);
        EXPECT_EQ(user->MessageBoxes().size() - boxes, isFunction ? 1U : 0U);
        AddFunction("Added" + std::to_string(FunctionItems().size()) + key.substr(key.size() - 1) + "x");
        EXPECT_EQ(Tree().Key(Tree().Parent(program->mCurrentNode)), "_0f");
        EXPECT_EQ(Selected(), Tree().Text(program->mCurrentNode));
    }
    EXPECT_EQ(FunctionItems().size(), keys.size());
}

TEST_P(ProgramScenario, AFunctionDeletedFromTheTreeAloneIsNobodysItemAnyMore) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    Click("One");
    for (const MsgResult answer : {MsgResult::Ok, MsgResult::Yes, MsgResult::Ok}) {
        user->WillPress(answer); // the load failed; delete One?; the new document has no such function
    }
    Open("bad.PSF", "no program source");
    user->PressKey(KeyF4, 0);
    EXPECT_EQ(FunctionItems(), Strings{"Two"});
    Choose("mnuGerman");
    EXPECT_EQ(user->LabelText(TheDesktop().FuncLabel()), "");
    EXPECT_EQ(Tree().Text(Tree().Find("_0v")), "Referenzen");
    AddFunction("Three");
    EXPECT_EQ(FunctionItems(), (Strings{"Two", "Three"}));
    EXPECT_EQ(user->MessageBoxes().size(), 3U);
}

TEST_P(ProgramScenario, ABadNameKeepsTheDialogUntilItIsMended) {
    StartProgram();
    for (int box = 0; box < 2; ++box) {
        user->WillPress(MsgResult::Ok);
    }
    bool wasShownBetween = false;
    user->WillUseName([&](NameWindowUser& dialog) {
        dialog.Type("1");
        dialog.PressEnter();
        wasShownBetween = dialog.IsShown();
        dialog.PressOk();
        dialog.PressCancel();
    });
    user->PressKey(KeyF5, 0);
    EXPECT_TRUE(wasShownBetween);
    EXPECT_EQ(user->MessageBoxes().size(), 2U);
    EXPECT_EQ(user->MessageBoxes().back().caption, "Function Name Error");
    EXPECT_EQ(FunctionItems(), Strings{});
}

TEST_P(ProgramScenario, ClosingWithUnsavedEditsAsksOnceAndClosesWhateverIsAnswered) {
    for (const MsgResult answer : {MsgResult::Yes, MsgResult::No, MsgResult::Cancel}) {
        TearDown();
        Start({});
        StartProgram();
        Open("a.PSF", GoodPsf());
        Write("_0v", "/* edit */");
        user->WillPress(answer);
        user->CloseByUser();
        EXPECT_TRUE(user->HasEnded());
        EXPECT_EQ(user->MessageBoxes().size(), 1U);
        const bool isSaved = ReadFile(user->FilePath("a.PSF")).find("/* edit */int x;") != std::string::npos;
        EXPECT_EQ(isSaved, answer == MsgResult::Yes);
    }
}

TEST_P(ProgramScenario, ExitGoesOnOrStaysAsIsAnswered) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    Write("_0v", "/* edit */");
    user->WillPress(MsgResult::Cancel);
    Choose("mnuExit");
    EXPECT_FALSE(user->HasEnded());
    EXPECT_EQ(Panel(2), "Command canceled!");
    user->WillPress(MsgResult::No);
    Choose("mnuExit");
    EXPECT_TRUE(user->HasEnded());
    EXPECT_EQ(ReadFile(user->FilePath("a.PSF")), GoodPsf());
}

TEST_P(ProgramScenario, ABuildThatCannotBeStartedLeavesTheStatusBarAlone) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    program->mCompBat = user->UnstartableCommand();
    Choose("mnuBuildExe");
    EXPECT_EQ(Panel(2), "File was opened successfully!");
    EXPECT_TRUE(user->HasStartedNothing());
    EXPECT_TRUE(user->MessageBoxes().empty());
}

TEST_P(ProgramScenario, TheLanguageChangesEverythingAtOnce) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    Click("One");
    Choose("mnuGerman");
    EXPECT_EQ(user->LabelText(TheDesktop().FuncLabel()), "Funktionen");
    user->WillPress(MsgResult::Ok);
    Choose("mnuHelpHotKeys");
    EXPECT_TRUE(user->MessageBoxes().back().text.starts_with("<F2>\tCode Anzeige selektieren\n"));
    Choose("mnuEnglish");
    EXPECT_EQ(user->LabelText(TheDesktop().FuncLabel()), "Function Code");
}

TEST_P(ProgramScenario, AFileDialogIsCalledAsItsCommand) {
    StartProgram();
    for (const std::string_view command : {"mnuOpenPSF", "mnuSaveAsPSF", "mnuGerman", "mnuOpenPSF", "mnuSaveAsPSF"}) {
        if (command != "mnuGerman") {
            user->WillCancelFileDialog();
        }
        Choose(command);
    }
    Strings titles;
    for (const SeenFileDialog& dialog : user->FileDialogs()) {
        titles.push_back(dialog.title);
    }
    EXPECT_EQ(titles, (Strings{"Open Program Source File", "Save Program Source File As",
                               "Programmquelldatei \xC3\xB6"
                               "ffnen",
                               "Programmquelldatei speichern unter"}));
}

TEST_P(ProgramScenario, ButtonsSayWhatTheyDoInTheLanguageOfTheMoment) {
    StartProgram();
    Click("_0f");
    EXPECT_EQ(user->ButtonTip(1), "Add Function");
    EXPECT_EQ(user->ButtonTip(2), "Delete");
    Choose("mnuGerman");
    EXPECT_EQ(user->ButtonTip(1), "Funktion hinzuf\xC3\xBCgen");
    EXPECT_EQ(user->ButtonTip(2), "L\xC3\xB6schen");
    std::string cancel;
    const auto look = [&cancel](NameWindowUser& dialog) {
        cancel = dialog.CancelCaption();
        dialog.PressCancel();
    };
    user->WillUseName(look);
    user->PressButton(1);
    user->Settle();
    EXPECT_EQ(cancel, "Abbruch");
    Choose("mnuEnglish");
    EXPECT_EQ(user->ButtonTip(1), "Add Function");
    user->WillUseName(look);
    user->PressKey(KeyF5, 0);
    EXPECT_EQ(cancel, "Cancel");
}

TEST_P(ProgramScenario, AResizeStoresThePaneAndKeepsProportions) {
    StartProgram();
    Write("_0v", "x");
    const Extent before = Pane().GetExtent();
    const float width = MainWindow().Width();
    user->Resize(width - 1500, MainWindow().Height());
    EXPECT_TRUE(program->mSourceDoc->VarCode().starts_with("x"));
    EXPECT_FLOAT_EQ(Pane().GetExtent().width, before.width * (width - 1500) / width);
    EXPECT_EQ(Pane().GetExtent().height, before.height);
}

TEST_P(ProgramScenario, TheWindowBeginsWithoutEmptyBands) {
    StartProgram();
    const Extent tree = Shown(Tree());
    const Extent pane = Shown(Pane());
    const float margin = tree.left;
    const float statusTop = Shown(TheDesktop().StatusBar1()).top;
    EXPECT_GT(margin, 0);
    EXPECT_NEAR(pane.left, tree.left + tree.width + margin, OnePixel);
    EXPECT_NEAR(pane.left + pane.width, MainWindow().ClientWidth() - margin, OnePixel);
    EXPECT_NEAR(tree.top + tree.height, statusTop - margin, OnePixel);
    EXPECT_NEAR(pane.top + pane.height, statusTop - margin, OnePixel);
    const Extent label = Shown(TheDesktop().LblcodeTreeViewer());
    const Extent toolBar = Shown(TheDesktop().VornToolBar());
    EXPECT_NEAR(label.top, toolBar.top + toolBar.height, OnePixel);
    EXPECT_NEAR(label.height, TheDesktop().LblcodeTreeViewer().PreferredHeight(), OnePixel);
    EXPECT_LE(tree.top - label.top - label.height, margin);
}

TEST_P(ProgramScenario, NothingLiesOverAnythingInAnySize) {
    StartProgram();
    const float width = MainWindow().Width();
    const float height = MainWindow().Height();
    for (const float part : {0.0F, 0.6F, 0.8F, 0.95F, 1.0F, 1.15F, 0.0F, 1.0F}) {
        user->Resize(width * part, height * part);
        SCOPED_TRACE(part);
        ExpectNothingOverlaps();
    }
    EXPECT_GT(Shown(Pane()).height, 600);
}

TEST_P(ProgramScenario, AWindowThatGrowsHasBandsOfAFewPixelsOnly) {
    StartProgram();
    user->Resize(MainWindow().Width() / 0.85F,
                 MainWindow().Height() / 0.85F); // the whole screen, where it is not large
    const Extent pane = Shown(Pane());
    EXPECT_LT(Shown(TheDesktop().StatusBar1()).top - pane.top - pane.height, 40 * OnePixel);
    EXPECT_LT(MainWindow().ClientWidth() - pane.left - pane.width, 12 * OnePixel);
}

TEST_P(ProgramScenario, ATabIsAsWideAsFourCharactersAtFirst) {
    StartProgram();
    const float tab = 4 * Pane().CharacterWidth();
    const double stops = std::round(Pane().GetExtent().width / tab);
    EXPECT_NEAR(Pane().GetExtent().width / stops, tab, 0.01);
    EXPECT_GE(stops, 8);
}

TEST_P(ProgramScenario, TheAboutBoxGoesAtAKeyAndAtAClick) {
    StartProgram();
    for (int showing = 0; showing < 2; ++showing) {
        user->WillUseSplash([showing](SplashWindowUser& splash) {
            EXPECT_TRUE(splash.IsShown());
            showing == 0 ? splash.PressKey('A') : splash.ClickFrame();
            EXPECT_FALSE(splash.IsShown());
        });
        Choose("mnuAbout");
    }
}

TEST_P(ProgramScenario, TheHelpCommandOpensTheHelpOfTheSettings) {
    StartProgram();
    Choose("mnuOpenHelp");
    user->Settle();
    EXPECT_EQ(user->HelpOpened(1), Strings{user->FilePath("help")});
}

TEST_P(ProgramScenario, ADroppedFileIsOpened) {
    StartProgram();
    WriteFile(user->FilePath("dropped.PSF"), GoodPsf());
    user->DropFile(user->FilePath("dropped.PSF"));
    EXPECT_EQ(FunctionItems(), (Strings{"One", "Two"}));
    EXPECT_EQ(program->mLastOpenedFile, user->FilePath("dropped.PSF"));
}

TEST_P(ProgramScenario, AGroupThatIsCollapsedOverTheEditedFunctionStoresIt) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    Write("Two", "/* kept */");
    user->CollapseItem(Tree().Find("_0f"));
    EXPECT_EQ(CurrentKey(), "_0f");
    EXPECT_FALSE(Pane().FuncBodyAvailable());
    EXPECT_EQ(user->PaneShown(), "");
    Choose("mnuSavePSF");
    EXPECT_NE(ReadFile(user->FilePath("a.PSF")).find("FuncBody=/* kept */void Two()"), std::string::npos);
}

TEST_P(ProgramScenario, EditsInManyPlacesAreAllStored) {
    StartProgram();
    Open("a.PSF", GoodPsf());
    for (const std::string_view key : {"One", "_0e1", "Two", "_0v", "_0e8"}) {
        Write(key, "/*");
        user->Type(key);
        user->Type("*/");
    }
    Choose("mnuSavePSF");
    const std::string saved = ReadFile(user->FilePath("a.PSF"));
    for (const std::string text : {"/*One*/void One()\r\n{\r\n}\r\n", "/*_0e1*/OnError text", "/*Two*/void Two()",
                                   "[GVars]\r\n/*_0v*/int x;", "/*_0e8*/OnSerial text"}) {
        EXPECT_NE(saved.find(text), std::string::npos) << text;
    }
}

} // namespace
} // namespace tessaly
