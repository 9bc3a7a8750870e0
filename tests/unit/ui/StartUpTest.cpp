// Start, layout and end of the main window.
#include "tests/unit/ui/MainWindow.h"

#include <algorithm>

namespace tessaly {
namespace {

class StartUpTest : public MainWindow {};

TEST_F(StartUpTest, WithoutSettingsItOpensInEnglishAndSaysOnceThatTheInstallationIsCorrupted) {
    desktop.msgBox.WillPress(MsgResult::Ok);
    window.Show();
    ASSERT_EQ(Boxes(), 1U);
    EXPECT_EQ(LastBox(),
              (memory::MsgBox::Record{"This installation has been corrupted.  Please reinstall the software.", "Error",
                                      MsgButtons::Ok, MsgIcon::Stop}));
    EXPECT_TRUE(desktop.window.IsShown());
    EXPECT_EQ(desktop.window.Caption(), "Tessaly");
    EXPECT_EQ(desktop.menus["mnuFile"].Caption(), "&File");
    EXPECT_EQ(desktop.app.helpFile, "");
}

TEST_F(StartUpTest, InGermanTheMessageIsGermanToo) {
    SetLanguage(1);
    desktop.msgBox.WillPress(MsgResult::Ok);
    window.Show();
    EXPECT_EQ(LastBox(),
              (memory::MsgBox::Record{"Die Installation wurde abgebrochen. Bitte installieren Sie die Software neu!",
                                      "Fehler", MsgButtons::Ok, MsgIcon::Stop}));
}

TEST_F(StartUpTest, GoodSettingsShowNoMessageAndSetTheHelpFile) {
    Start();
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_EQ(desktop.app.helpFile, "C:\\kit\\help.chm");
    EXPECT_EQ(window.mCompBat, "C:\\kit\\compile.bat");
    EXPECT_EQ(window.mCompFileName, "C:\\kit\\program.c");
}

TEST_F(StartUpTest, EachOfTheThreeSettingsIsNeeded) {
    for (const std::string_view missing : {CompBatSetting, CompFileNameSetting, HelpSetting}) {
        MainWindow* const self = this;
        self->Install();
        SetSetting(missing, "");
        memory::Desktop other;
        VornMainFrm second(other, RecoveryOn(other));
        other.registry.store = desktop.registry.store;
        other.msgBox.WillPress(MsgResult::Ok);
        second.Show();
        EXPECT_EQ(other.msgBox.records.size(), 1U) << missing;
        EXPECT_EQ(other.app.helpFile, "") << missing;
    }
}

class StoredLanguageTest : public StartUpTest, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(AsANumberOrAFraction, StoredLanguageTest, ::testing::Values("1", "0.6"));

TEST_P(StoredLanguageTest, ATextWorksLikeANumberAndIsRounded) {
    Install();
    SetSetting(LanguageSetting, GetParam());
    window.Show();
    EXPECT_EQ(window.mLanguage, 1);
    EXPECT_EQ(desktop.menus["mnuFile"].Caption(), "&Datei");
}

// The registry of a desktop, with what the window's caption was when each value was asked for.
class WatchedRegistry final : public Registry {
public:
    explicit WatchedRegistry(memory::Desktop& desktop) : mDesktop(desktop), mRegistry(desktop.Settings()) {}

    std::int32_t OpenKey(std::uint32_t root, std::string_view path, std::uint32_t access, Handle& key) override {
        return mRegistry.OpenKey(root, path, access, key);
    }
    std::int32_t QueryValue(Handle key, std::string_view name, std::uint32_t& type, char* data,
                            std::uint32_t& size) override {
        if (data == nullptr) {
            asked.push_back(std::string(name) + ":" + mDesktop.window.Caption());
        }
        return mRegistry.QueryValue(key, name, type, data, size);
    }
    std::int32_t CreateKey(std::uint32_t root, std::string_view path, std::uint32_t access, Handle& key) override {
        return mRegistry.CreateKey(root, path, access, key);
    }
    std::int32_t SetValue(Handle key, std::string_view name, std::uint32_t type, std::string_view bytes) override {
        return mRegistry.SetValue(key, name, type, bytes);
    }
    std::int32_t CloseKey(Handle key) noexcept override { return mRegistry.CloseKey(key); }

    std::vector<std::string> asked;

private:
    memory::Desktop& mDesktop;
    Registry& mRegistry;
};

TEST_F(StartUpTest, TheLanguageIsReadFirstAndAppliedBeforeTheOtherSettingsAreRead) {
    Install();
    SetSetting(ProgBlkIconSetting, "C:\\kit\\block.ico");
    memory::Desktop other;
    other.registry.store = desktop.registry.store;
    WatchedRegistry watched(other);
    other.UseRegistry(watched);
    VornMainFrm program(other, RecoveryOn(other));
    program.Show();
    EXPECT_EQ(watched.asked, (std::vector<std::string>{"Language:", "FCompBat:Tessaly", "FCompFileName:Tessaly",
                                                       "FHelp:Tessaly", "FProgBlkIcon:Tessaly"}));
    EXPECT_EQ(program.mProgBlkIcon, "C:\\kit\\block.ico");
}

TEST_F(StartUpTest, ALanguageThatIsNoByteIsSkippedAndLeavesEnglish) {
    Install();
    SetSetting(LanguageSetting, "256");
    window.Show();
    EXPECT_EQ(window.mLanguage, 0);
    EXPECT_EQ(desktop.window.Caption(), "Tessaly");
}

TEST_F(StartUpTest, ALanguageOfTwoGivesEmptyTexts) {
    Start(2);
    EXPECT_EQ(desktop.window.Caption(), "");
    EXPECT_EQ(desktop.menus["mnuFile"].Caption(), "");
}

TEST_F(StartUpTest, TheIconIsTakenFromItsFileAndABadOneIsSkipped) {
    Install();
    desktop.files.contents["C:\\kit\\block.ico"] = "picture";
    SetSetting(ProgBlkIconSetting, "C:\\kit\\block.ico");
    window.Show();
    EXPECT_EQ(desktop.window.Icon(), "C:\\kit\\block.ico");
}

TEST_F(StartUpTest, AnIconThatCannotBeLoadedIsSkipped) {
    Install();
    SetSetting(ProgBlkIconSetting, "C:\\missing.ico");
    window.Show();
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_TRUE(desktop.window.IsShown());
}

TEST_F(StartUpTest, TheTreeIsBuiltWithTheEventsGroupSelectedAndCurrent) {
    Start();
    EXPECT_EQ(desktop.tree.Count(), 11);
    EXPECT_EQ(CurrentKey(), "_0e");
    EXPECT_EQ(SelectedKey(), "_0e");
    EXPECT_EQ(desktop.tree.Text(desktop.tree.Find("_0e8")), "OnSerial()");
    EXPECT_EQ(desktop.tree.Tag(desktop.tree.Find("_0f")), "function");
    for (const std::string_view key : {"_0v", "_0f", "_0e"}) {
        EXPECT_TRUE(desktop.tree.IsExpanded(desktop.tree.Find(key)));
    }
    EXPECT_FALSE(desktop.pane.FuncBodyAvailable());
    EXPECT_EQ(desktop.toolBar.ButtonCount(), 0);
    EXPECT_EQ(window.mLastOpenedFile, "");
    EXPECT_EQ(desktop.status.PanelCount(), 2);
    EXPECT_EQ(Panel(1), "File=");
    EXPECT_EQ(Panel(2), "");
}

TEST_F(StartUpTest, AFileOnTheCommandLineIsOpened) {
    desktop.files.contents["C:\\my blocks\\Größe.PSF"] = GoodPsf();
    desktop.app.commandLine = "C:\\my blocks\\Größe.PSF";
    Start();
    EXPECT_EQ(FunctionItems(), (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(window.mLastOpenedFile, "C:\\my blocks\\Größe.PSF");
    EXPECT_EQ(Panel(1), "File=C:\\my blocks\\Größe.PSF");
    EXPECT_EQ(Panel(2), "File was opened successfully!");
    EXPECT_EQ(window.StatusPanel2, "vornMainFrmPrmpt37");
    EXPECT_EQ(CurrentKey(), "_0e");
}

TEST_F(StartUpTest, ACommandLineLoadInGermanShowsTheEnglishGroupsAgain) {
    desktop.files.contents["a.PSF"] = GoodPsf();
    desktop.app.commandLine = "a.PSF";
    Start(1);
    EXPECT_EQ(desktop.tree.Text(desktop.tree.Find("_0v")), "References");
    EXPECT_EQ(desktop.tree.Text(desktop.tree.Find("_0f")), "Functions");
    EXPECT_EQ(desktop.tree.Text(desktop.tree.Find("_0e")), "Events");
    EXPECT_EQ(Panel(2), "Datei wurde erfolgreich geöffnet!");
    Choose("mnuGerman");
    EXPECT_EQ(desktop.tree.Text(desktop.tree.Find("_0f")), "Funktionen");
}

TEST_F(StartUpTest, NeitherQuotesNorBlanksAreTakenOffTheCommandLine) {
    desktop.files.contents["a.PSF"] = GoodPsf();
    desktop.app.commandLine = "\"a.PSF\"";
    Start();
    EXPECT_EQ(window.mLastOpenedFile, "");
    EXPECT_EQ(Panel(1), "File=");
    EXPECT_EQ(Panel(2), "");
    EXPECT_EQ(Boxes(), 0U);
}

TEST_F(StartUpTest, ATruncatedFileOnTheCommandLineShowsFileAloneAndKeepsWhatWasRead) {
    desktop.files.contents["cut.PSF"] = PsfHead("int kept;") + Lines({"NumFuncs= 0"});
    desktop.app.commandLine = "cut.PSF";
    Start();
    EXPECT_EQ(Panel(1), "File=");
    EXPECT_EQ(Panel(2), "");
    EXPECT_EQ(References(), "int kept;\r\n");
}

TEST_F(StartUpTest, AResizeScalesTreeAndPaneAndMovesTheLabel) {
    Start();
    const Extent tree = desktop.tree.GetExtent();
    const Extent pane = desktop.pane.GetExtent();
    const Extent label = desktop.paneLabel.GetExtent();
    desktop.window.Resize(24000, 4500);
    EXPECT_EQ(desktop.tree.GetExtent(), (Extent{tree.left, tree.top, tree.width * 2, tree.height / 2}));
    EXPECT_EQ(desktop.pane.GetExtent(), (Extent{pane.left * 2, pane.top, pane.width * 2, pane.height / 2}));
    EXPECT_EQ(desktop.paneLabel.GetExtent(), (Extent{label.left * 2, label.top, label.width, label.height}));
    EXPECT_FLOAT_EQ(desktop.pane.TabStops().at(1), pane.width * 2 / static_cast<float>(desktop.pane.TabStops().size()));
    desktop.window.Resize(12000, 9000);
    EXPECT_EQ(desktop.tree.GetExtent(), tree);
    EXPECT_EQ(desktop.pane.GetExtent(), pane);
}

TEST_F(StartUpTest, AResizeOfOneSideScalesThatSideAlone) {
    Start();
    const Extent tree = desktop.tree.GetExtent();
    const Extent pane = desktop.pane.GetExtent();
    const Extent label = desktop.paneLabel.GetExtent();
    desktop.window.Resize(12000, 18000);
    EXPECT_EQ(desktop.tree.GetExtent(), (Extent{tree.left, tree.top, tree.width, tree.height * 2}));
    EXPECT_EQ(desktop.pane.GetExtent(), (Extent{pane.left, pane.top, pane.width, pane.height * 2}));
    EXPECT_EQ(desktop.paneLabel.GetExtent(), label);
    EXPECT_EQ(window.mLastHeight, 18000);
    EXPECT_EQ(window.mLastWidth, 12000);
    desktop.window.Resize(24000, 18000);
    EXPECT_EQ(desktop.tree.GetExtent(), (Extent{tree.left, tree.top, tree.width * 2, tree.height * 2}));
    EXPECT_EQ(desktop.pane.GetExtent(), (Extent{pane.left * 2, pane.top, pane.width * 2, pane.height * 2}));
}

TEST_F(StartUpTest, TheStatusBarHasTwoPanelsThatShareTheWidth) {
    Start();
    EXPECT_EQ(desktop.status.PanelCount(), 2);
    EXPECT_TRUE(desktop.status.IsPanelSpring(1));
    EXPECT_TRUE(desktop.status.IsPanelSpring(2));
    EXPECT_EQ(Panel(1), "File=");
    EXPECT_EQ(Panel(2), "");
}

TEST_F(StartUpTest, ATabIsFourCharactersWideAtFirst) {
    Start();
    EXPECT_NEAR(desktop.pane.TabStops().at(1), 4 * desktop.pane.CharacterWidth(), 0.01);
    EXPECT_NEAR(desktop.pane.TabStops().at(7), 28 * desktop.pane.CharacterWidth(), 0.1);
}

TEST_F(StartUpTest, AResizeStoresThePaneFirst) {
    Start();
    Edit("_0v", "int typed;");
    EXPECT_EQ(References().find("int typed;"), std::string::npos);
    desktop.window.Resize(13000, 9000);
    EXPECT_NE(References().find("int typed;"), std::string::npos);
}

TEST_F(StartUpTest, ClosingWritesTheLanguageBack) {
    Start();
    Choose("mnuGerman");
    desktop.window.CloseByUser();
    EXPECT_TRUE(desktop.window.HasEnded());
    memory::Desktop next;
    next.registry.store = desktop.registry.store;
    VornMainFrm again(next, RecoveryOn(next));
    again.Show();
    EXPECT_EQ(again.mLanguage, 1);
}

TEST_F(StartUpTest, TheLanguageIsWrittenAsANumberBehindTheSaveQuestion) {
    Start(1);
    Edit("_0v", "x");
    const auto writes = [this] {
        return std::count_if(desktop.registry.calls.begin(), desktop.registry.calls.end(),
                             [](const auto& call) { return call.call == memory::Registry::Call::SetValue; });
    };
    std::ptrdiff_t before = -1;
    desktop.msgBox.decide = [&](const memory::MsgBox::Record&) {
        before = writes();
        return MsgResult::No;
    };
    desktop.registry.calls.clear();
    desktop.window.CloseByUser();
    EXPECT_EQ(before, 0);
    EXPECT_EQ(writes(), 1);
    const memory::Registry::Record& write =
        *std::find_if(desktop.registry.calls.begin(), desktop.registry.calls.end(),
                      [](const auto& call) { return call.call == memory::Registry::Call::SetValue; });
    EXPECT_EQ(write.name, "Language");
    EXPECT_EQ(write.number, Registry::DwordType);
    EXPECT_EQ(write.bytes, std::string("\1\0\0\0", 4));
}

TEST_F(StartUpTest, ClosingWithUnsavedEditsAsksOnceAndClosesWhateverIsAnswered) {
    Start();
    Edit("_0v", "x");
    desktop.msgBox.WillPress(MsgResult::Cancel);
    desktop.window.CloseByUser();
    EXPECT_EQ(Boxes(), 1U);
    EXPECT_EQ(LastBox(), (memory::MsgBox::Record{"Do you wish to save data?", "Save Dialog", MsgButtons::YesNoCancel,
                                                 MsgIcon::Question}));
    EXPECT_TRUE(desktop.window.HasEnded());
}

TEST_F(StartUpTest, ClosingWithoutEditsAsksNothing) {
    Start();
    desktop.window.CloseByUser();
    EXPECT_EQ(Boxes(), 0U);
    EXPECT_TRUE(desktop.window.HasEnded());
}

} // namespace
} // namespace tessaly
