// The menus: files, build, help, language.
#include "tests/unit/ui/MainWindow.h"

#include <utility>

namespace tessaly {
namespace {

class CommandsTest : public MainWindow {
protected:
    void SetUp() override { Start(); }
    void MakeChange() { Edit("_0v", "x"); }
};

using Record = memory::MsgBox::Record;
const Record SaveQuestion = {"Do you wish to save data?", "Save Dialog", MsgButtons::YesNoCancel, MsgIcon::Question};

// New

TEST_F(CommandsTest, NewStartsFromTheDefaults) {
    Open("a.PSF", GoodPsf());
    Choose("mnuNewPSF");
    EXPECT_EQ(FunctionItems(), std::vector<std::string>());
    EXPECT_EQ(window.mSourceDoc->GetFunctionCount(), 0);
    EXPECT_EQ(window.mLastOpenedFile, "");
    EXPECT_EQ(Panel(1), "File=");
    EXPECT_EQ(Panel(2), "File was created successfully!");
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt36");
    EXPECT_EQ(CurrentKey(), "_0e");
}

TEST_F(CommandsTest, NewWithUnsavedChangesAndCancelChangesNothingButTheCurrentItem) {
    Open("a.PSF", GoodPsf());
    MakeChange();
    desktop.msgBox.WillPress(MsgResult::Cancel);
    Choose("mnuNewPSF");
    EXPECT_EQ(LastBox(), SaveQuestion);
    EXPECT_EQ(FunctionItems(), (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(window.mLastOpenedFile, "a.PSF");
    EXPECT_TRUE(window.FuncBodyChangedFlag);
    EXPECT_EQ(Panel(2), "Command canceled!");
    EXPECT_EQ(CurrentKey(), "_0e");
    EXPECT_EQ(SelectedKey(), "_0v");
}

TEST_F(CommandsTest, NewWithUnsavedChangesAndNoDropsThem) {
    MakeChange();
    desktop.msgBox.WillPress(MsgResult::No);
    Choose("mnuNewPSF");
    EXPECT_FALSE(window.FuncBodyChangedFlag);
    EXPECT_EQ(References(), "/* ... include ... */\n\n/* ... variables ...*/\n");
}

TEST_F(CommandsTest, NewWithUnsavedChangesAndYesSavesThemFirst) {
    Open("a.PSF", GoodPsf());
    MakeChange();
    desktop.msgBox.WillPress(MsgResult::Yes);
    Choose("mnuNewPSF");
    EXPECT_NE(desktop.files.contents["a.PSF"].find("[GVars]\r\nxint x;"), std::string::npos);
    EXPECT_EQ(window.mLastOpenedFile, "");
}

// Open

TEST_F(CommandsTest, OpenShowsTheFile) {
    Open("C:\\x\\a.PSF", GoodPsf());
    EXPECT_EQ(FunctionItems(), (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(Panel(1), "File=C:\\x\\a.PSF");
    EXPECT_EQ(Panel(2), "File was opened successfully!");
    EXPECT_EQ(CurrentKey(), "_0e");
    const memory::FileDialog::Record& dialog = desktop.fileDialog.records.back();
    EXPECT_EQ(dialog.filters, std::vector<std::string>{"Program Source Files (*.PSF)"});
    EXPECT_EQ(dialog.pattern, "*.PSF");
    EXPECT_FALSE(dialog.hasReadOnlyBox);
}

TEST_F(CommandsTest, OpenOfABadFileReportsItTwiceAndKeepsTheFileName) {
    Open("a.PSF", GoodPsf());
    desktop.msgBox.WillPress(MsgResult::Ok);
    Open("bad.PSF", "[GVars]\r\nint left;\r\n");
    const std::string text = "Program Source File is incorrect or not found.  Load aborted!";
    EXPECT_EQ(LastBox(), (Record{text, "Error", MsgButtons::Ok, MsgIcon::Exclamation}));
    EXPECT_EQ(Panel(2), text);
    EXPECT_EQ(Panel(1), "File=a.PSF");
    EXPECT_EQ(window.mLastOpenedFile, "a.PSF");
    EXPECT_EQ(References(), "int left;\r\n") << "the document is the one that the failed load worked on";
}

TEST_F(CommandsTest, AFailedOpenClearsTheFlagAndSaysSoInTheStatusBarBeforeItShowsTheBox) {
    MakeChange();
    std::string panel;
    desktop.msgBox.decide = [&](const Record& box) {
        panel = Panel(2);
        return box.buttons == MsgButtons::Ok ? MsgResult::Ok : MsgResult::No;
    };
    desktop.files.contents["bad.PSF"] = "bad";
    window.mnuOpenPSF_Click("bad.PSF");
    EXPECT_EQ(panel, LastBox().text);
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt23");
    EXPECT_FALSE(window.FuncBodyChangedFlag);
}

TEST_F(CommandsTest, ACancelledOpenDialogEndsSilentlyAndHasClearedTheFlagAlready) {
    MakeChange();
    desktop.msgBox.WillPress(MsgResult::No);
    desktop.fileDialog.WillCancel();
    Choose("mnuOpenPSF");
    EXPECT_EQ(Boxes(), 1U);
    EXPECT_FALSE(window.FuncBodyChangedFlag);
    EXPECT_NE(References().find("x/*"), std::string::npos);
}

// Save

TEST_F(CommandsTest, ADroppedFileIsOpenedWithoutADialog) {
    Start();
    desktop.files.contents["C:\\dropped.PSF"] = GoodPsf();
    desktop.window.DropFile("C:\\dropped.PSF");
    EXPECT_EQ(FunctionItems(), (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(Panel(1), "File=C:\\dropped.PSF");
    EXPECT_EQ(Panel(2), "File was opened successfully!");
    EXPECT_TRUE(desktop.fileDialog.records.empty());
}

TEST_F(CommandsTest, ADroppedFileIsNotOpenedWhenTheSaveQuestionIsCancelled) {
    Start();
    Edit("_0v", "unsaved");
    desktop.files.contents["C:\\dropped.PSF"] = GoodPsf();
    desktop.msgBox.WillPress(MsgResult::Cancel);
    desktop.window.DropFile("C:\\dropped.PSF");
    EXPECT_EQ(LastBox().text, "Do you wish to save data?");
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{});
    EXPECT_TRUE(window.FuncBodyChangedFlag);
}

TEST_F(CommandsTest, ADroppedFileThatIsNoGoodIsReported) {
    Start();
    desktop.files.contents["C:\\bad.PSF"] = "bad";
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.window.DropFile("C:\\bad.PSF");
    EXPECT_EQ(LastBox().icon, MsgIcon::Exclamation);
    EXPECT_EQ(Panel(1), "File=");
}

TEST_F(CommandsTest, SaveOnANeverSavedDocumentAsksForAName) {
    MakeChange();
    desktop.fileDialog.WillChoose("new.PSF");
    Choose("mnuSavePSF");
    EXPECT_NE(desktop.files.contents["new.PSF"].find("[GVars]\r\nx/*"), std::string::npos);
    EXPECT_EQ(window.mLastOpenedFile, "new.PSF");
    EXPECT_EQ(Panel(1), "File=new.PSF");
    EXPECT_EQ(Panel(2), "File was saved successfully!");
    EXPECT_FALSE(window.FuncBodyChangedFlag);
}

TEST_F(CommandsTest, SaveOfAnOpenedFileReplacesItAndSaysSo) {
    Open("a.PSF", GoodPsf());
    Edit("_0v", "typed");
    Choose("mnuSavePSF");
    EXPECT_NE(desktop.files.contents["a.PSF"].find("[GVars]\r\ntyped"), std::string::npos);
    EXPECT_EQ(Panel(2), "File was saved successfully!");
    EXPECT_EQ(Boxes(), 0U);
}

TEST_F(CommandsTest, SaveAsAsksBeforeItReplacesAndShowsTheDialogAgainOnNo) {
    desktop.files.contents["old.PSF"] = "old";
    desktop.fileDialog.WillChoose("old.PSF");
    desktop.msgBox.WillPress(MsgResult::No);
    desktop.fileDialog.WillCancel();
    MakeChange();
    Choose("mnuSaveAsPSF");
    EXPECT_EQ(LastBox(), (Record{"old.PSF\nThis file already exists\n\nReplace existing file?", "Save As",
                                 MsgButtons::YesNo, MsgIcon::None}));
    EXPECT_EQ(desktop.files.contents["old.PSF"], "old");
    EXPECT_TRUE(window.FuncBodyChangedFlag);
    EXPECT_EQ(desktop.fileDialog.records.size(), 2U);
}

TEST_F(CommandsTest, SaveAsReplacesOnYesAndNamesTheWholePathInItsQuestion) {
    const std::string path = "C:\\my blocks\\old.PSF";
    desktop.files.contents[path] = "old";
    desktop.fileDialog.WillChoose(path);
    desktop.msgBox.WillPress(MsgResult::Yes);
    Choose("mnuSaveAsPSF");
    EXPECT_TRUE(desktop.files.contents[path].starts_with("[BeginPSF]"));
    EXPECT_EQ(LastBox().text, path + "\nThis file already exists\n\nReplace existing file?");
}

TEST_F(CommandsTest, SaveAsStoresThePaneFirst) {
    Edit("_0e1", "/* typed */");
    desktop.fileDialog.WillChoose("new.PSF");
    Choose("mnuSaveAsPSF");
    EXPECT_NE(desktop.files.contents["new.PSF"].find("/* typed */void OnError"), std::string::npos);
    EXPECT_EQ(Panel(1), "File=new.PSF");
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt38");
}

// The mode goes back to 2 when the keyboard does; the commands themselves are called here.
TEST_F(CommandsTest, SavingEndsTheEditing) {
    Open("a.PSF", GoodPsf());
    desktop.msgBox.WillPress(MsgResult::Yes); // the question of the build
    desktop.fileDialog.WillChoose("b.PSF");
    for (const auto save :
         {&VornMainFrm::mnuBuildExe_Click, &VornMainFrm::mnuSavePSF_Click, &VornMainFrm::mnuSaveAsPSF_Click}) {
        MakeChange();
        ASSERT_EQ(window.FuncBodyChangeMode, 2);
        (window.*save)();
        EXPECT_EQ(window.FuncBodyChangeMode, 1);
        EXPECT_FALSE(window.FuncBodyChangedFlag);
    }
    EXPECT_EQ(window.mLastOpenedFile, "b.PSF");
}

TEST_F(CommandsTest, ASaveThatFailsOrIsCancelledLeavesModeAndFlag) {
    MakeChange();
    for (const auto save : {&VornMainFrm::mnuSavePSF_Click, &VornMainFrm::mnuSaveAsPSF_Click}) {
        desktop.fileDialog.WillCancel();
        (window.*save)();
        EXPECT_EQ(window.FuncBodyChangeMode, 2);
        EXPECT_TRUE(window.FuncBodyChangedFlag);
    }
    EXPECT_EQ(window.mLastOpenedFile, "");
    EXPECT_EQ(Panel(1), "File=");
}

TEST_F(CommandsTest, AFailedSaveSaysSoAndKeepsTheFlag) {
    Open("a.PSF", GoodPsf());
    MakeChange();
    desktop.files.FailAt(memory::SequentialFiles::Call::Write, 1);
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuSavePSF");
    EXPECT_EQ(LastBox(),
              (Record{"Please restart the application!", "File write error!", MsgButtons::Ok, MsgIcon::Stop}));
    EXPECT_TRUE(window.FuncBodyChangedFlag);
}

TEST_F(CommandsTest, AFailedSaveAsIsReportedAsASuccess) {
    MakeChange();
    desktop.fileDialog.WillChoose("new.PSF");
    desktop.files.FailAt(memory::SequentialFiles::Call::Write, 1);
    Choose("mnuSaveAsPSF");
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_EQ(Panel(2), "File was saved successfully!");
    EXPECT_EQ(window.mLastOpenedFile, "new.PSF");
    EXPECT_FALSE(window.FuncBodyChangedFlag);
}

TEST_F(CommandsTest, AFileThatWasSavedCountsAsSavedEvenIfTheStatusBarFails) {
    Open("a.PSF", GoodPsf());
    desktop.msgBox.decide = [](const Record&) { return MsgResult::Ok; };
    bool isOver = false;
    for (std::size_t number = 1; !isOver; ++number) {
        MakeChange();
        const std::size_t boxes = Boxes();
        desktop.faults.FailAt(number);
        Choose("mnuSavePSF");
        isOver = desktop.faults.IsPending();
        desktop.faults.Off();
        EXPECT_EQ(window.FuncBodyChangedFlag, Boxes() > boxes) << "call " << number;
    }
    EXPECT_GT(Boxes(), 0U);
}

TEST_F(CommandsTest, AFileThatWasSavedAsCountsAsSavedOnlyWhenTheStatusBarSaysSo) {
    bool isOver = false;
    for (std::size_t number = 1; !isOver; ++number) {
        MakeChange();
        ASSERT_EQ(Panel(2), "");
        desktop.files.contents.erase("new.PSF");
        desktop.fileDialog.WillChoose("new.PSF");
        desktop.faults.FailAt(number);
        Choose("mnuSaveAsPSF");
        isOver = desktop.faults.IsPending();
        desktop.faults.Off();
        EXPECT_EQ(window.FuncBodyChangedFlag, Panel(2).empty()) << "call " << number;
    }
    EXPECT_FALSE(window.FuncBodyChangedFlag);
}

TEST_F(CommandsTest, TheSaveQuestionReportsEachOutcome) {
    Open("a.PSF", GoodPsf());
    desktop.msgBox.WillPress(MsgResult::Yes);
    EXPECT_EQ(window.PromptUserForSave(), SaveAnswer::Saved);
    EXPECT_EQ(Panel(2), "Your file has been saved!");
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt34");
    desktop.msgBox.WillPress(MsgResult::No);
    EXPECT_EQ(window.PromptUserForSave(), SaveAnswer::Declined);
    EXPECT_EQ(Panel(2), "Your file has been saved!") << "the status bar is left alone";
    desktop.msgBox.WillPress(MsgResult::Cancel);
    EXPECT_EQ(window.PromptUserForSave(), SaveAnswer::Cancelled);
    EXPECT_EQ(Panel(2), "Command canceled!");
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt20");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.files.FailAt(memory::SequentialFiles::Call::Open, 1);
    EXPECT_EQ(window.PromptUserForSave(), SaveAnswer::Failed);
    EXPECT_EQ(Panel(2), "Command canceled!") << "the status bar is left alone";
}

TEST_F(CommandsTest, ExitStoresThePaneBeforeItAsks) {
    MakeChange();
    std::string references;
    desktop.msgBox.decide = [&](const Record&) {
        references = References();
        return MsgResult::Cancel;
    };
    Choose("mnuExit");
    EXPECT_TRUE(references.starts_with("x/*"));
}

TEST_F(CommandsTest, ExitAsksAndStaysOpenOnCancel) {
    MakeChange();
    desktop.msgBox.WillPress(MsgResult::Cancel);
    Choose("mnuExit");
    EXPECT_FALSE(desktop.window.HasEnded());
    desktop.msgBox.WillPress(MsgResult::No);
    Choose("mnuExit");
    EXPECT_TRUE(desktop.window.HasEnded());
    EXPECT_EQ(Boxes(), 2U) << "closing asks nothing more";
}

// Build

TEST_F(CommandsTest, ASavedUnchangedDocumentIsBuiltWithoutAQuestion) {
    Open("C:\\my blocks\\Blink.psf", GoodPsf());
    desktop.window.PressKey(KeyF10);
    EXPECT_EQ(Boxes(), 0U);
    ASSERT_EQ(desktop.app.starts.size(), 1U);
    EXPECT_EQ(desktop.app.starts[0].commandLine, "C:\\kit\\compile.bat \"C:\\my blocks\\Blink.out\"");
    EXPECT_EQ(desktop.app.starts[0].windowStyle, 3);
    EXPECT_EQ(Panel(2), "Compilation Complete!");
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt39");
    EXPECT_NE(desktop.files.contents["C:\\kit\\program.c"].find("void One()\r;\r\n"), std::string::npos);
}

TEST_F(CommandsTest, ABuildStoresThePaneFirst) {
    Open("a.PSF", GoodPsf());
    Edit("One", "/* typed */");
    window.FuncBodyChangedFlag = false; // as behind a cancelled Open
    Choose("mnuBuildExe");
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_NE(desktop.files.contents["C:\\kit\\program.c"].find("/* typed */void One()"), std::string::npos);
}

TEST_F(CommandsTest, ThePathIsCutAtTheFirstExtension) {
    Open("C:\\old.psf files\\a.PSF", GoodPsf());
    Choose("mnuBuildExe");
    ASSERT_EQ(desktop.app.starts.size(), 1U);
    EXPECT_EQ(desktop.app.starts[0].commandLine, "C:\\kit\\compile.bat \"C:\\old.out\"");
}

TEST_F(CommandsTest, TheKeysDeleteAndBuildWithShiftToo) {
    Open("a.PSF", GoodPsf());
    desktop.window.PressKey(KeyF10, 1);
    EXPECT_EQ(desktop.app.starts.size(), 1U);
    desktop.popup.Leave(); // the key goes on to the tree, where it opens the menu
    desktop.tree.Click("One");
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.window.PressKey(KeyF4, 1);
    EXPECT_EQ(FunctionItems(), std::vector<std::string>{"Two"});
}

TEST_F(CommandsTest, ANeverSavedDocumentIsNotBuiltWhenTheUserDeclinesToSave) {
    desktop.msgBox.WillPress(MsgResult::No);
    Choose("mnuBuildExe");
    EXPECT_EQ(LastBox(),
              (Record{"Program source code must be saved to a file before compiling\nDo you wish to do this now?",
                      "Save As", MsgButtons::YesNo, MsgIcon::None}));
    EXPECT_EQ(Panel(2), "Command canceled!");
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt20");
    EXPECT_EQ(desktop.app.starts.size(), 0U);
}

TEST_F(CommandsTest, AnEditedDocumentIsSavedAndBuilt) {
    Open("a.PSF", GoodPsf());
    MakeChange();
    desktop.msgBox.WillPress(MsgResult::Yes);
    Choose("mnuBuildExe");
    EXPECT_FALSE(window.FuncBodyChangedFlag);
    EXPECT_EQ(desktop.app.starts.size(), 1U);
    EXPECT_NE(desktop.files.contents["C:\\kit\\program.c"].find("xint x;"), std::string::npos);
}

TEST_F(CommandsTest, ASaveThatIsCancelledEndsTheBuild) {
    desktop.msgBox.WillPress(MsgResult::Yes);
    desktop.fileDialog.WillCancel();
    Choose("mnuBuildExe");
    EXPECT_EQ(desktop.app.starts.size(), 0U);
    EXPECT_EQ(Boxes(), 1U);
}

TEST_F(CommandsTest, WithoutOneOfTheCompilersSettingsNothingIsWrittenOrStarted) {
    for (std::string VornMainFrm::*const setting : {&VornMainFrm::mCompBat, &VornMainFrm::mCompFileName}) {
        Open("a.PSF", GoodPsf());
        const std::string value = std::exchange(window.*setting, "");
        const std::size_t files = desktop.files.contents.size();
        desktop.msgBox.WillPress(MsgResult::Ok);
        Choose("mnuBuildExe");
        EXPECT_EQ(LastBox(), (Record{"The compiler could not be found!  Please reinstall the software!", "Error",
                                     MsgButtons::Ok, MsgIcon::Stop}));
        EXPECT_EQ(desktop.app.starts.size(), 0U);
        EXPECT_EQ(desktop.files.contents.size(), files);
        EXPECT_EQ(Panel(2), "File was opened successfully!");
        window.*setting = value;
    }
}

TEST_F(CommandsTest, ACFileThatCannotBeWrittenIsACorruptedInstallation) {
    Open("a.PSF", GoodPsf());
    desktop.files.FailAt(memory::SequentialFiles::Call::Open, 1);
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuBuildExe");
    EXPECT_EQ(LastBox(), (Record{"This installation has been corrupted.  Please reinstall the software.", "Error",
                                 MsgButtons::Ok, MsgIcon::Stop}));
    EXPECT_EQ(desktop.app.starts.size(), 0U);
}

TEST_F(CommandsTest, ABatchFileThatCannotBeStartedEndsTheBuildWithoutAWord) {
    Open("a.PSF", GoodPsf());
    desktop.app.startsFail = true;
    Choose("mnuBuildExe");
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_EQ(Panel(2), "File was opened successfully!") << "the status bar is not updated";
}

// Help

TEST_F(CommandsTest, TheHotKeysAreListed) {
    desktop.msgBox.WillPress(MsgResult::Ok);
    Choose("mnuHelpHotKeys");
    EXPECT_TRUE(LastBox().text.starts_with("<F2>\tSelect Code Viewer\n"));
    EXPECT_EQ(LastBox().caption, "Hot-Keys");
    EXPECT_EQ(LastBox().buttons, MsgButtons::Ok);
    EXPECT_EQ(LastBox().icon, MsgIcon::Information);
}

TEST_F(CommandsTest, HelpSendsFOneWhichOpensTheHelpFile) {
    Choose("mnuOpenHelp");
    EXPECT_EQ(desktop.app.f1Sent, 1);
    desktop.window.DeliverSentKeys();
    EXPECT_EQ(desktop.app.helpOpened, std::vector<std::string>{"C:\\kit\\help.chm"});
}

TEST_F(CommandsTest, TheAboutBoxShowsTheTitleInQuotesAndTheVersionAndStoresThePane) {
    desktop.app.majorVersion = 1;
    desktop.app.minorVersion = 0;
    desktop.app.revision = 12;
    desktop.app.title = "the system's name for it";
    Edit("_0v", "x");
    for (int time = 0; time < 2; ++time) {
        desktop.modal.WillUseSplash([this, time](memory::SplashWindow& splash) {
            EXPECT_EQ(splash.ShownCaption(), "");
            EXPECT_EQ(splash.labels.LblProductName, "\"Tessaly\"");
            EXPECT_EQ(splash.labels.LblVersion, "Version 1.0.12");
            EXPECT_EQ(splash.labels.LblPlatform, "Windows 95/NT tm");
            EXPECT_EQ(splash.labels.LblCompany, "Ostrel");
            EXPECT_EQ(splash.labels.LblCopyright, "Copyright (c) 2026 Ostrel");
            EXPECT_EQ(splash.labels.LblCompanyProduct, "Ostrel");
            EXPECT_TRUE(References().starts_with("x/*"));
            if (time == 0) {
                splash.PressKey();
            } else {
                splash.ClickFrame();
            }
            EXPECT_FALSE(splash.IsShown());
        });
        Choose("mnuAbout");
    }
    EXPECT_NE(References().find("x/*"), std::string::npos);
}

// Language

TEST_F(CommandsTest, ALanguageIsAppliedAtOnceInTheMiddleOfAnEdit) {
    AddFunction("Foo");
    desktop.tree.Click("Foo");
    ASSERT_TRUE(desktop.pane.Click());
    desktop.pane.Type("typed");
    Choose("mnuGerman");
    EXPECT_EQ(desktop.paneLabel.Caption(), "Funktionen");
    EXPECT_EQ(desktop.tree.Text(desktop.tree.Find("_0v")), "Referenzen");
    EXPECT_TRUE(desktop.menus["mnuGerman"].IsChecked());
    EXPECT_FALSE(desktop.menus["mnuEnglish"].IsChecked());
    EXPECT_EQ(desktop.menus["mnuHelpHotKeys"].Caption(), "Ho&t Keys");
    EXPECT_NE(desktop.pane.Text().find("typed"), std::string::npos);
    Choose("mnuEnglish");
    EXPECT_EQ(desktop.paneLabel.Caption(), "Function Code");
    EXPECT_TRUE(desktop.menus["mnuEnglish"].IsChecked());
}

TEST_F(CommandsTest, TheMessageInStatusPanelTwoFollowsTheLanguage) {
    Choose("mnuNewPSF");
    Choose("mnuGerman");
    EXPECT_EQ(Panel(2), "Datei wurde erfolgreich erzeugt!");
    EXPECT_EQ(Panel(1), "Datei=");
}

TEST_F(CommandsTest, ChoosingALanguageDoesNotWriteTheSettings) {
    const std::size_t before = desktop.registry.calls.size();
    Choose("mnuGerman");
    EXPECT_EQ(desktop.registry.calls.size(), before);
}

TEST_F(CommandsTest, EveryMenuOfTheTableIsThereWithItsText) {
    EXPECT_EQ(desktop.menus.Bar(), (std::vector<std::string>{"mnuFile", "mnuCompilePSF", "mnuOptions", "mnuHelp"}));
    EXPECT_EQ(desktop.menus["mnuFile"].dropDown,
              (std::vector<std::string>{"mnuNewPSF", "mnuOpenPSF", "-", "mnuSavePSF", "mnuSaveAsPSF", "-", "mnuExit"}));
    EXPECT_EQ(desktop.menus["mnuSaveAsPSF"].Caption(), "S&ave Program Source File As");
}

} // namespace
} // namespace tessaly
