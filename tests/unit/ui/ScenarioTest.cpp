// Whole pieces of work, as a user does them.
#include "tests/unit/ui/MainWindow.h"
#include "ui/UserFuncVarFrm.h"

namespace tessaly {
namespace {

using Record = memory::MsgBox::Record;

class ScenarioTest : public MainWindow {
protected:
    void OpenSecondFile() {
        desktop.files.contents["second.PSF"] = Psf(" 1", "Other", PsfFunction("Other", "void Other()\r\n{\r\n}"));
        desktop.fileDialog.WillChoose("second.PSF");
        Choose("mnuOpenPSF");
    }
};

TEST_F(ScenarioTest, AProgramBlockIsWrittenFromNothingAndBuilt) {
    Start();
    Choose("mnuNewPSF");
    Edit("_0v", "int count;");
    desktop.tree.Click("_0f");
    desktop.modal.WillUseName([](memory::NameWindow& dialog) {
        dialog.Type("Blink");
        dialog.PressEnter();
    });
    desktop.toolBar.Press(1);
    desktop.window.PressKey(KeyF3);
    desktop.pane.SetCaret(desktop.pane.Shown().find('{') + 2);
    desktop.pane.Type("    count++;");
    Edit("_0e6", "/* on a timer */");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.fileDialog.WillChoose("C:\\blocks\\Blink.PSF");
    desktop.window.PressKey(KeyF10);

    const std::string code = desktop.files.contents["C:\\kit\\program.c"];
    EXPECT_NE(code.find("int count;/* ... include ... */"), std::string::npos);
    EXPECT_NE(code.find("\r\nvoid Blink(void);\r\n"), std::string::npos);
    EXPECT_NE(code.find("{\n    count++;\n}\r\n"), std::string::npos);
    EXPECT_NE(code.find("/* on a timer */void OnTimer(uint timerid)\n"), std::string::npos);
    ASSERT_EQ(desktop.app.starts.size(), 1U);
    EXPECT_EQ(desktop.app.starts[0].commandLine, "C:\\kit\\compile.bat \"C:\\blocks\\Blink.out\"");
    EXPECT_FALSE(window.FuncBodyChangedFlag);

    memory::Desktop later;
    later.files.contents = desktop.files.contents;
    later.registry.store = desktop.registry.store;
    later.app.commandLine = "C:\\blocks\\Blink.PSF";
    VornMainFrm again(later, RecoveryOn(later));
    again.Show();
    later.tree.Click("Blink");
    EXPECT_EQ(later.pane.Text(), "void Blink(void)\n{\n    count++;\n}\r\n");
}

TEST_F(ScenarioTest, ASecondFileIsOpenedAfterSavingTheFirst) {
    Start();
    Open("first.PSF", GoodPsf());
    Edit("One", "/* kept */");
    desktop.msgBox.WillPress(MsgResult::Yes);
    OpenSecondFile();
    EXPECT_NE(desktop.files.contents["first.PSF"].find("FuncBody=/* kept */void One()"), std::string::npos);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"Other"});
    EXPECT_EQ(window.mLastOpenedFile, "second.PSF");
}

TEST_F(ScenarioTest, ASecondFileIsOpenedAndTheEditsAreDropped) {
    Start();
    Open("first.PSF", GoodPsf());
    Edit("One", "/* lost */");
    desktop.msgBox.WillPress(MsgResult::No);
    OpenSecondFile();
    EXPECT_EQ(desktop.files.contents["first.PSF"], GoodPsf());
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"Other"});
    EXPECT_FALSE(window.FuncBodyChangedFlag);
}

TEST_F(ScenarioTest, OpeningASecondFileIsCancelledAtTheQuestion) {
    Start();
    Open("first.PSF", GoodPsf());
    Edit("One", "/* kept */");
    desktop.msgBox.WillPress(MsgResult::Cancel);
    Choose("mnuOpenPSF");
    EXPECT_EQ(desktop.fileDialog.records.size(), 1U) << "the dialog of the first file only";
    EXPECT_EQ(FunctionItems(), (std::vector<std::string>{"One", "Two"}));
    EXPECT_TRUE(window.FuncBodyChangedFlag);
    EXPECT_EQ(CurrentKey(), "One");
}

TEST_F(ScenarioTest, OpeningASecondFileStopsWhenTheSaveDialogOfTheFirstIsCancelled) {
    Start();
    Edit("_0v", "x");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.fileDialog.WillCancel();
    Choose("mnuOpenPSF");
    EXPECT_EQ(desktop.fileDialog.records.size(), 1U) << "no open dialog came up";
    EXPECT_TRUE(window.FuncBodyChangedFlag);
    EXPECT_NE(References().find("x/*"), std::string::npos);
}

TEST_F(ScenarioTest, AnEmptyNameFromTheOpenDialogStopsAndKeepsTheDocument) {
    Start();
    Open("first.PSF", GoodPsf());
    desktop.fileDialog.WillChoose("");
    Choose("mnuOpenPSF");
    EXPECT_EQ(FunctionNames(), (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(window.mLastOpenedFile, "first.PSF");
}

TEST_F(ScenarioTest, FFourAndFFiveDoTheirWorkFromEveryTreeItem) {
    Start();
    Open("a.PSF", GoodPsf());
    std::vector<std::string> keys;
    for (std::int32_t i = 1; i <= desktop.tree.Count(); ++i) {
        keys.push_back(desktop.tree.Key(desktop.tree.At(i)));
    }
    for (const std::string& key : keys) {
        SCOPED_TRACE(key);
        desktop.tree.Click(key);
        const bool isFunction = key == "One" || key == "Two";
        if (isFunction) {
            desktop.msgBox.WillPress(MsgResult::No);
        }
        const std::size_t boxes = Boxes();
        desktop.window.PressKey(KeyF4);
        EXPECT_EQ(Boxes() - boxes, isFunction ? 1U : 0U);
        AddFunction("Added" + std::to_string(FunctionItems().size()) + "x");
        EXPECT_EQ(desktop.tree.Key(desktop.tree.Parent(window.mCurrentNode)), "_0f");
        EXPECT_EQ(FunctionItems(), FunctionNames());
    }
    EXPECT_EQ(FunctionItems().size(), 2 + keys.size());
}

TEST_F(ScenarioTest, ClosingWithUnsavedEditsAndYesSavesThem) {
    Start();
    Open("a.PSF", GoodPsf());
    Edit("_0v", "/* kept */");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.window.CloseByUser();
    EXPECT_NE(desktop.files.contents["a.PSF"].find("[GVars]\r\n/* kept */int x;"), std::string::npos);
    EXPECT_TRUE(desktop.window.HasEnded());
}

TEST_F(ScenarioTest, ClosingWithUnsavedEditsAndNoDropsThem) {
    Start();
    Open("a.PSF", GoodPsf());
    Edit("_0v", "/* lost */");
    desktop.msgBox.WillPress(MsgResult::No);
    desktop.window.CloseByUser();
    EXPECT_EQ(desktop.files.contents["a.PSF"], GoodPsf());
    EXPECT_TRUE(desktop.window.HasEnded());
}

TEST_F(ScenarioTest, ARefusedWriteOfTheLanguageIsNotReported) {
    Start();
    Choose("mnuGerman");
    desktop.registry.FailAt(memory::Registry::Call::SetValue, 1, Registry::AccessDenied);
    desktop.window.CloseByUser();
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_TRUE(desktop.window.HasEnded());
}

TEST_F(ScenarioTest, ExitWithYesSavesAndCloses) {
    Start();
    Open("a.PSF", GoodPsf());
    Edit("_0v", "/* kept */");
    desktop.msgBox.WillPress(MsgResult::Yes);
    Choose("mnuExit");
    EXPECT_TRUE(desktop.window.HasEnded());
    EXPECT_NE(desktop.files.contents["a.PSF"].find("[GVars]\r\n/* kept */int x;"), std::string::npos);
    EXPECT_EQ(Boxes(), 1U);
}

TEST_F(ScenarioTest, ASaveThatFailsKeepsNewOpenAndExitFromGoingOn) {
    Start();
    Open("a.PSF", GoodPsf());
    Edit("_0v", "x");
    for (const std::string_view menu : {"mnuNewPSF", "mnuOpenPSF", "mnuExit"}) {
        SCOPED_TRACE(menu);
        desktop.msgBox.WillPress(MsgResult::Yes);
        desktop.msgBox.WillPress(MsgResult::Ok);
        desktop.files.FailAt(memory::SequentialFiles::Call::Open, 1);
        Choose(menu);
        EXPECT_EQ(LastBox().caption, "File write error!");
        EXPECT_TRUE(window.FuncBodyChangedFlag);
        EXPECT_EQ(window.mLastOpenedFile, "a.PSF");
        EXPECT_EQ(FunctionItems(), (std::vector<std::string>{"One", "Two"}));
        EXPECT_FALSE(desktop.window.HasEnded());
    }
}

TEST_F(ScenarioTest, ClosingANeverSavedDocumentWithYesAndACancelledDialogClosesAllTheSame) {
    Start();
    Edit("_0v", "x");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.fileDialog.WillCancel();
    desktop.window.CloseByUser();
    EXPECT_TRUE(desktop.window.HasEnded());
    EXPECT_EQ(UserFiles().size(), 0U);
}

TEST_F(ScenarioTest, ASaveBeforeABuildThatFailsEndsTheBuild) {
    Start();
    Open("a.PSF", GoodPsf());
    Edit("_0v", "x");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.files.FailAt(memory::SequentialFiles::Call::Write, 1);
    desktop.window.PressKey(KeyF10);
    EXPECT_EQ(LastBox().text, "Please restart the application!");
    EXPECT_EQ(desktop.app.starts.size(), 0U);
    EXPECT_TRUE(window.FuncBodyChangedFlag);
}

// Details that one sees from the tree, the bars and the dialogs

TEST_F(ScenarioTest, TheTreeHasItsGroupsAndItemsInOrderWithTheirTags) {
    Start();
    EXPECT_EQ(desktop.tree.Shown(),
              "References\nFunctions\nEvents*\n  OnError()\n  OnFrame()\n  OnKey()\n  OnStart()\n  OnStop()\n"
              "  OnTimer()\n  OnTrigger()\n  OnSerial()\n");
    EXPECT_EQ(desktop.tree.Tag(desktop.tree.Find("_0v")), "variable");
    EXPECT_EQ(desktop.tree.Tag(desktop.tree.Find("_0e")), "event");
    for (int i = 1; i <= 8; ++i) {
        EXPECT_EQ(desktop.tree.Index(desktop.tree.Find("_0e" + std::to_string(i))), 3 + i);
    }
}

TEST_F(ScenarioTest, NoControlStopsTheTabKeyAndTheStopsOfThePaneFollowItsWidth) {
    Start();
    EXPECT_FALSE(desktop.tree.IsTabStop());
    EXPECT_FALSE(desktop.pane.IsTabStop());
    EXPECT_FALSE(desktop.toolBar.IsTabStop());
    const std::vector<float> stops = desktop.pane.TabStops();
    const float interval = desktop.pane.GetExtent().width / static_cast<float>(stops.size());
    for (std::size_t i = 0; i < stops.size(); ++i) {
        EXPECT_EQ(stops[i], static_cast<float>(i) * interval);
    }
}

TEST_F(ScenarioTest, RenamingTheTagOfAnImageChangesWhatItsButtonDoes) {
    desktop.toolBar.images.tags = {"Delete", "Other"};
    Start();
    AddFunction("Foo");
    desktop.tree.Click("Foo");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.toolBar.Press(1);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>());
    desktop.tree.Click("_0f");
    desktop.toolBar.Press(2);
    EXPECT_EQ(Boxes(), 1U) << "the second button does nothing";
}

TEST_F(ScenarioTest, TheShiftStateOfAKeyIsIgnored) {
    Start();
    desktop.modal.WillUseName([](memory::NameWindow& dialog) {
        dialog.Type("Foo");
        dialog.PressOk();
    });
    desktop.window.PressKey(KeyF5, 7);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"Foo"});
}

TEST_F(ScenarioTest, BothFileDialogsGetTheSameSettings) {
    Start();
    Open("a.PSF", GoodPsf());
    desktop.fileDialog.WillCancel();
    Choose("mnuSaveAsPSF");
    for (const memory::FileDialog::Record& record : desktop.fileDialog.records) {
        EXPECT_TRUE(record.settings.cancelIsError);
        EXPECT_EQ(record.settings.flags, 4);
        EXPECT_EQ(record.settings.filter, "Program Source Files (*.PSF)|*.PSF");
        EXPECT_EQ(record.settings.filterIndex, 2);
    }
    EXPECT_EQ(desktop.fileDialog.records[0].settings.fileName, "");
    EXPECT_EQ(desktop.fileDialog.records[1].settings.fileName, "a.PSF");
}

TEST_F(ScenarioTest, InGermanTheQuestionsAndMessagesAreGerman) {
    Start(1);
    Edit("_0v", "x");
    desktop.msgBox.WillPress(MsgResult::Cancel);
    Choose("mnuNewPSF");
    EXPECT_EQ(LastBox(), (Record{"Wollen Sie die Daten speichern?", "Dialog speichern", MsgButtons::YesNoCancel,
                                 MsgIcon::Question}));
    EXPECT_EQ(Panel(2), "Befehl abbrechen!");
    desktop.msgBox.WillPress(MsgResult::No);
    Choose("mnuBuildExe");
    EXPECT_EQ(LastBox().text, "Vor der Compilierung muss der Programmquellcode in einer Datei gespeichert "
                              "werden.\nWollen Sie diesen jetzt tun?");
    EXPECT_EQ(LastBox().caption, "Speichern Unter..");
    AddFunction("Foo");
    desktop.msgBox.WillPress(MsgResult::No);
    desktop.window.PressKey(KeyF4);
    EXPECT_EQ(LastBox().text, "Löschen Foo ?");
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuHelpHotKeys");
    EXPECT_TRUE(LastBox().text.starts_with("<F2>\tCode Anzeige selektieren\n"));
    EXPECT_EQ(LastBox().caption, "Hot-Keys");
    desktop.fileDialog.WillCancel();
    Choose("mnuSaveAsPSF");
    EXPECT_EQ(desktop.fileDialog.records.back().filters, std::vector<std::string>{"Programmquelldateien (*.PSF)"});
}

TEST_F(ScenarioTest, AnErrorInAKeyOrARoutineOfItsOwnShowsItsBox) {
    Start();
    desktop.msgBox.decide = [](const Record&) { return MsgResult::Ok; };
    desktop.faults.FailAt(1);
    desktop.window.PressKey(KeyF2);
    EXPECT_EQ(LastBox(), (Record{"UnhandledError in Form_KeyDown!", "Tessaly", MsgButtons::Ok, MsgIcon::None}));
    Open("a.PSF", GoodPsf());
    desktop.tree.Click("One");
    desktop.faults.FailAt(1);
    window.Form_DeleteFunction();
    EXPECT_EQ(LastBox(), (Record{"UnhandledError in Form_DeleteFunction!", "Tessaly", MsgButtons::Ok, MsgIcon::None}));
    desktop.faults.FailAt(1);
    window.SetUpFuncBodyTabs();
    EXPECT_EQ(LastBox(),
              (Record{"Unhandled Error in SetUpFuncBodyTabs", "Tessaly", MsgButtons::Ok, MsgIcon::Exclamation}));
}

TEST_F(ScenarioTest, TheTabKeyStopsNowhereAndControlsWithoutATabStopAreSkippedWithoutAWord) {
    Start();
    desktop.tree.SetTabStop(true);
    desktop.pane.SetTabStop(true);
    desktop.toolBar.SetTabStop(true);
    window.FuncBodyChangeMode = 2;
    window.DisableTabKeyForUseOnlyInFuncBody();
    EXPECT_FALSE(desktop.tree.IsTabStop() || desktop.pane.IsTabStop() || desktop.toolBar.IsTabStop());
    EXPECT_EQ(window.FuncBodyChangeMode, 1);
    EXPECT_EQ(Boxes(), 0U);
}

TEST_F(ScenarioTest, ASecondCopyOfAnItemThatIsCurrentStoresNothingElse) {
    Start();
    Edit("_0e1", "first");
    desktop.tree.Click("_0e1");
    EXPECT_EQ(EventText(0).substr(0, 5), "first");
    EXPECT_EQ(desktop.pane.Text(), EventText(0));
}

TEST_F(ScenarioTest, TheReturnCodeOfTheNameDialogStaysOneAfterAFailedOk) {
    Start();
    desktop.msgBox.WillPress(MsgResult::Ok);
    UserFuncVarFrm dialog(desktop);
    EXPECT_EQ(dialog.ReturnCode, "0");
    desktop.modal.WillUseName([&dialog](memory::NameWindow& user) {
        user.Type("a_b");
        user.PressOk();
        EXPECT_EQ(dialog.ReturnCode, "1");
        user.PressCancel();
        EXPECT_EQ(dialog.ReturnCode, "0");
    });
    dialog.ShowModal();
}

TEST_F(ScenarioTest, AFailureInOneStepOfTheStartLeavesTheOthers) {
    Install();
    memory::Desktop counted;
    counted.registry.store = desktop.registry.store;
    VornMainFrm whole(counted, RecoveryOn(counted));
    const std::size_t before = counted.faults.Calls();
    whole.Show();
    const std::size_t calls = counted.faults.Calls() - before;
    std::size_t afterStepSix = 0;
    for (std::size_t number = 1; number <= calls; ++number) {
        memory::Desktop each;
        each.registry.store = desktop.registry.store;
        each.msgBox.decide = [](const Record&) { return MsgResult::Ok; };
        VornMainFrm program(each, RecoveryOn(each));
        each.faults.FailAt(number);
        program.Show();
        if (program.mLastWidth == 0) {
            continue; // it failed before the errors begin to be skipped
        }
        ++afterStepSix;
        const int read = (program.mCompBat.empty() ? 0 : 1) + (program.mCompFileName.empty() ? 0 : 1) +
                         (program.mHelpFile.empty() ? 0 : 1);
        EXPECT_GE(read, 2) << "call " << number;
        EXPECT_EQ(each.tree.Count(), 11) << "call " << number;
    }
    EXPECT_GT(afterStepSix, 20U);
}

} // namespace
} // namespace tessaly
