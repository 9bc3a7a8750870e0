// A language goes to every text of the window.
#include "tests/unit/ui/MainWindow.h"

#include <cstddef>
#include <optional>
#include <set>
#include <utility>

namespace tessaly {
namespace {

using Shown = std::vector<std::pair<std::string, std::string>>;

class ProgramTexts : public MainWindow {
public:
    // Starts without any text: in a language that the catalogue does not know. Status panel 2 has a message, too.
    void StartEmpty() {
        Start(2);
        window.StatusPanel2 = "vornMainFrmPrmpt36";
    }

    // All that follows the language, in the order in which it does.
    Shown All() {
        Shown all = {{"caption", desktop.window.Caption()},
                     {"panel 2", Panel(2)},
                     {"FuncLabel", desktop.paneLabel.Caption()},
                     {"lblcodeTreeViewer", desktop.treeLabel.Caption()},
                     {"panel 1", Panel(1)}};
        for (const char* const menu : {"mnuFile", "mnuNewPSF", "mnuOpenPSF", "mnuSavePSF", "mnuSaveAsPSF", "mnuExit",
                                       "mnuCompilePSF", "mnuBuildExe", "mnuOptions", "mnuEnglish", "mnuGerman",
                                       "mnuHelp", "mnuOpenHelp", "mnuHelpHotKeys", "mnuAbout"}) {
            all.emplace_back(menu, desktop.menus[menu].Caption());
        }
        for (const char* const key : {"_0e", "_0f", "_0v"}) {
            all.emplace_back(key, desktop.tree.Text(desktop.tree.Find(key)));
        }
        for (const char* const menu : {"mnuGerman", "mnuEnglish"}) {
            all.emplace_back(menu, desktop.menus[menu].IsChecked() ? "checked" : "not checked");
        }
        return all;
    }

private:
    void TestBody() override {}
};

const Shown English = {{"caption", "Tessaly"},
                       {"panel 2", "File was created successfully!"},
                       {"FuncLabel", "Event Code"},
                       {"lblcodeTreeViewer", "Code Viewer"},
                       {"panel 1", "File="},
                       {"mnuFile", "&File"},
                       {"mnuNewPSF", "&New Program Source File"},
                       {"mnuOpenPSF", "O&pen Program Source File"},
                       {"mnuSavePSF", "&Save Program Source File"},
                       {"mnuSaveAsPSF", "S&ave Program Source File As"},
                       {"mnuExit", "E&xit"},
                       {"mnuCompilePSF", "&Compile"},
                       {"mnuBuildExe", "&Build Exe"},
                       {"mnuOptions", "&Language"},
                       {"mnuEnglish", "&English"},
                       {"mnuGerman", "&German"},
                       {"mnuHelp", "&Help"},
                       {"mnuOpenHelp", "&Open"},
                       {"mnuHelpHotKeys", "Ho&t Keys"},
                       {"mnuAbout", "&About"},
                       {"_0e", "Events"},
                       {"_0f", "Functions"},
                       {"_0v", "References"},
                       {"mnuGerman", "not checked"},
                       {"mnuEnglish", "checked"}};

const Shown German = {{"caption", "Tessaly"},
                      {"panel 2", "Datei wurde erfolgreich erzeugt!"},
                      {"FuncLabel", "Ereignisse"},
                      {"lblcodeTreeViewer", "Ereignistypauswahl"},
                      {"panel 1", "Datei="},
                      {"mnuFile", "&Datei"},
                      {"mnuNewPSF", "Programmquelldatei &neu"},
                      {"mnuOpenPSF", "Programmquelldatei &öffnen"},
                      {"mnuSavePSF", "Programmquelldatei &speichern"},
                      {"mnuSaveAsPSF", "Programmquelldatei speichern &unter..."},
                      {"mnuExit", "B&eenden"},
                      {"mnuCompilePSF", "&Compiler"},
                      {"mnuBuildExe", "&Exe erstellen"},
                      {"mnuOptions", "&Sprache"},
                      {"mnuEnglish", "&Englisch"},
                      {"mnuGerman", "&Deutsch"},
                      {"mnuHelp", "&Hilfe"},
                      {"mnuOpenHelp", "&Hilfe öffnen"},
                      {"mnuHelpHotKeys", "Ho&t Keys"},
                      {"mnuAbout", "&Info..."},
                      {"_0e", "Ereignisse"},
                      {"_0f", "Funktionen"},
                      {"_0v", "Referenzen"},
                      {"mnuGerman", "checked"},
                      {"mnuEnglish", "not checked"}};

TEST(LanguageTest, AChosenLanguageGoesToEveryText) {
    ProgramTexts program;
    program.StartEmpty();
    program.Choose("mnuEnglish");
    EXPECT_EQ(program.All(), English);
    program.Choose("mnuGerman");
    EXPECT_EQ(program.All(), German);
    program.Choose("mnuEnglish");
    EXPECT_EQ(program.All(), English);
}

TEST(LanguageTest, AnUnknownLanguageLeavesOnlyThePathAndChecksGerman) {
    for (const std::uint32_t language : {2U, 255U}) {
        ProgramTexts program;
        program.Start(language);
        program.Open("a.PSF", GoodPsf());
        for (const auto& [what, text] : program.All()) {
            // A tree that was built after the start is English in every language.
            if (what != "mnuGerman" && what != "mnuEnglish" && what != "panel 1" && !what.starts_with("_0")) {
                EXPECT_EQ(text, "") << what;
            }
        }
        EXPECT_EQ(program.Panel(1), "a.PSF");
        EXPECT_TRUE(program.desktop.menus["mnuGerman"].IsChecked());
        EXPECT_FALSE(program.desktop.menus["mnuEnglish"].IsChecked());
        EXPECT_EQ(program.desktop.menus["mnuGerman"].Caption(), "");
    }
}

TEST(LanguageTest, AnUnknownLanguageLeavesTheGroupsWithoutText) {
    ProgramTexts program;
    program.Start(2);
    for (const char* const key : {"_0e", "_0f", "_0v"}) {
        EXPECT_EQ(program.desktop.tree.Text(program.desktop.tree.Find(key)), "") << key;
    }
}

TEST(LanguageTest, ThePathOfTheFileStaysBehindThePrefix) {
    ProgramTexts program;
    program.Start();
    program.Open("C:\\a.PSF", GoodPsf());
    program.Choose("mnuGerman");
    EXPECT_EQ(program.Panel(1), "Datei=C:\\a.PSF");
    EXPECT_EQ(program.Panel(2), "Datei wurde erfolgreich geöffnet!");
}

TEST(LanguageTest, WithoutAMessageItsPanelIsCleared) {
    ProgramTexts program;
    program.Start();
    program.Open("a.PSF", GoodPsf());
    program.window.SaveCurrentNodeCode(program.window.mCurrentNode);
    EXPECT_NE(program.Panel(2), "");
    program.Choose("mnuGerman");
    EXPECT_EQ(program.Panel(2), "");
}

TEST(LanguageTest, AMessageThatTheCatalogueDoesNotHaveSaysSo) {
    ProgramTexts program;
    program.Start();
    program.window.StatusPanel2 = "vornMainFrmPrmpt17";
    program.Choose("mnuGerman");
    EXPECT_EQ(program.Panel(2), "Unbekannt Fehler!");
    program.Choose("mnuEnglish");
    EXPECT_EQ(program.Panel(2), "Unknown error!");
}

TEST(LanguageTest, TheLabelFollowsTheItemThatIsEdited) {
    struct Case {
        std::optional<std::string> key;
        std::string english;
        std::string german;
    };
    const std::vector<Case> cases = {
        {"_0f", "Function Code", "Funktionen"},
        {"_0e", "Event Code", "Ereignisse"},
        {"_0v", "Global References", "Globale Referenzen"},
        {"One", "Function Code", "Funktionen"},
        {"_0e3", "Event Code", "Ereignisse"},
        {"below", "Global References", "Globale Referenzen"},
        {"other", "", ""},
        {"below other", "", ""},
        {{}, "", ""},
    };
    ProgramTexts program;
    program.Start();
    program.Open("a.PSF", GoodPsf());
    TreeView& tree = program.desktop.tree;
    tree.Add(tree.Find("_0v"), "below", "");
    tree.Add(tree.Add(TreeItem::None, "other", ""), "below other", "");
    for (const Case& item : cases) {
        SCOPED_TRACE(item.key.value_or("no item"));
        program.window.mCurrentNode = item.key ? tree.Find(*item.key) : TreeItem::None;
        program.Choose("mnuEnglish");
        EXPECT_EQ(program.desktop.paneLabel.Caption(), item.english);
        program.Choose("mnuGerman");
        EXPECT_EQ(program.desktop.paneLabel.Caption(), item.german);
    }
}

TEST(LanguageTest, TheTipsOfTheToolBarFollow) {
    ProgramTexts program;
    program.Start();
    program.desktop.tree.Click("_0f");
    const auto tips = [&] {
        return program.desktop.toolBar.ButtonTip(1) + ", " + program.desktop.toolBar.ButtonTip(2);
    };
    program.Choose("mnuGerman");
    EXPECT_EQ(tips(), "Funktion hinzufügen, Löschen");
    program.Choose("mnuEnglish");
    EXPECT_EQ(tips(), "Add Function, Delete");
}

// Each call fails in its turn, which also tells the order.
TEST(LanguageTest, AControlThatFailsEndsTheChangeAndThoseBehindItKeepTheirTexts) {
    std::set<std::size_t> ends;
    bool isOver = false;
    for (std::size_t number = 1; !isOver; ++number) {
        ProgramTexts program;
        program.StartEmpty();
        const Shown before = program.All();
        program.desktop.faults.FailAt(number);
        program.Choose("mnuEnglish");
        isOver = program.desktop.faults.IsPending();
        program.desktop.faults.Off();
        const Shown after = program.All();
        std::size_t end = 0;
        while (end < after.size() && after[end] == English[end]) {
            ++end;
        }
        const auto rest = [end](const Shown& texts) {
            return Shown(texts.begin() + static_cast<std::ptrdiff_t>(end), texts.end());
        };
        EXPECT_EQ(rest(after), rest(before)) << "call " << number;
        ends.insert(end);
    }
    EXPECT_EQ(ends.size(), English.size() + 1);
}

} // namespace

} // namespace tessaly
