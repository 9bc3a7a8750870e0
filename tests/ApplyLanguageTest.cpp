#include "app/ApplyLanguage.h"

#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using ControlKind = LanguageTarget::ControlKind;

// A window that writes down what is done to it.
class RecordingWindow final : public LanguageTarget {
public:
    void SetCaption(std::string_view text) override { Log("caption", text); }
    void SetPrompt(std::string_view identifier, std::string_view text) override {
        Log("member " + std::string(identifier), text);
    }
    std::string StatusPanel2Identifier() const override { return message; }
    std::string LastOpenedFile() const override { return file; }
    void SetStatusPanelText(int number, std::string_view text) override {
        Log("panel " + std::to_string(number), text);
    }
    std::optional<std::string> CurrentNodeKey() const override { return nodeKey; }
    std::optional<std::string> CurrentNodeParentKey() const override {
        ++parentQuestions;
        return parentKey;
    }
    void SetFuncLabelCaption(std::string_view text) override { Log("FuncLabel", text); }
    void SetTreeViewerCaption(std::string_view text) override { Log("lblcodeTreeViewer", text); }
    std::vector<Control> Controls() const override { return controls; }
    void SetMenuCaption(std::string_view name, std::string_view text) override {
        if (name == failingMenu) {
            throw std::runtime_error("no such menu");
        }
        Log("menu " + std::string(name), text);
    }
    void SetNodeText(std::string_view key, std::string_view text) override { Log("node " + std::string(key), text); }
    void SetMenuChecked(std::string_view name, bool checked) override {
        Log("check " + std::string(name), checked ? "yes" : "no");
    }

    // What `what` was set to, or "never".
    std::string Last(const std::string& what) const {
        const auto found = mLast.find(what);
        return found != mLast.end() ? found->second : "never";
    }

    std::string message;
    std::string file;
    std::optional<std::string> nodeKey = "_0e";
    std::optional<std::string> parentKey;
    std::vector<Control> controls;
    std::string failingMenu = "none";
    std::string calls; // all that was set, in order, one "what" in each line
    mutable int parentQuestions = 0;

private:
    void Log(const std::string& what, std::string_view text) {
        calls += what + "\n";
        mLast[what] = text;
    }

    std::map<std::string, std::string> mLast;
};

std::vector<LanguageTarget::Control> SomeControls() {
    return {{ControlKind::Other, "VornToolBar"},   {ControlKind::Menu, "mnuFile"},  {ControlKind::Tree, "CodeTree"},
            {ControlKind::Menu, "mnuHelpHotKeys"}, {ControlKind::Other, "mnuExit"}, {ControlKind::Menu, "mnuNoSuch"}};
}

constexpr std::string_view AllCalls = R"(caption
member titleVorn
member userFuncVarFrmPrmpt1
member userFuncVarFrmPrmpt2
member userFuncVarFrmPrmpt3
member vornMainFrmPrmpt1
member vornMainFrmPrmpt2
member vornMainFrmPrmpt3
member vornMainFrmPrmpt4
member vornMainFrmPrmpt5
member vornMainFrmPrmpt6
member vornMainFrmPrmpt7
member vornMainFrmPrmpt8
member vornMainFrmPrmpt9
member vornMainFrmPrmpt10
member vornMainFrmPrmpt11
member vornMainFrmPrmpt12
member vornMainFrmPrmpt13
member vornMainFrmPrmpt14
member vornMainFrmPrmpt15
member vornMainFrmPrmpt16
member vornMainFrmPrmpt19
member vornMainFrmPrmpt20
member vornMainFrmPrmpt21
member vornMainFrmPrmpt22
member vornMainFrmPrmpt23
member vornMainFrmPrmpt24
member vornMainFrmPrmpt25
member vornMainFrmPrmpt26
member vornMainFrmPrmpt27
member vornMainFrmPrmpt28
member vornMainFrmPrmpt29
member vornMainFrmPrmpt32
member vornMainFrmPrmpt33
member vornMainFrmPrmpt34
member vornMainFrmPrmpt35
member vornMainFrmPrmpt36
member vornMainFrmPrmpt37
member vornMainFrmPrmpt38
member vornMainFrmPrmpt39
member vornMainFrmPrmpt40
member vornMainFrmPrmpt41
member vornMainFrmPrmpt42
member vornMainFrmPrmpt43
member lblcodeEditVariableCode
member lblcodeEditEventCode
member lblcodeEditFunctionCode
member unknown
panel 2
FuncLabel
lblcodeTreeViewer
panel 1
menu mnuFile
node _0e
node _0f
node _0v
menu mnuHelpHotKeys
menu mnuNoSuch
check mnuGerman
check mnuEnglish
)";

TEST(ApplyLanguageTest, EverythingIsSetInItsOrderInAnyLanguage) {
    for (const std::uint8_t language : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{255}}) {
        RecordingWindow window;
        window.controls = SomeControls();
        ApplyLanguage(window, language);
        EXPECT_EQ(window.calls, AllCalls) << int{language};
    }
}

TEST(ApplyLanguageTest, EnglishTextsAreSet) {
    RecordingWindow window;
    window.controls = SomeControls();
    window.message = "vornMainFrmPrmpt37";
    window.file = "C:\\a.PSF";
    ApplyLanguage(window, 0);
    EXPECT_EQ(window.Last("caption"), "Tessaly");
    EXPECT_EQ(window.Last("member titleVorn"), "Tessaly");
    EXPECT_EQ(window.Last("member vornMainFrmPrmpt6"), "Error");
    EXPECT_EQ(window.Last("member unknown"), "Unknown error!");
    EXPECT_EQ(window.Last("panel 2"), "File was opened successfully!");
    EXPECT_EQ(window.Last("FuncLabel"), "Event Code");
    EXPECT_EQ(window.Last("lblcodeTreeViewer"), "Code Viewer");
    EXPECT_EQ(window.Last("panel 1"), "File=C:\\a.PSF");
    EXPECT_EQ(window.Last("menu mnuFile"), "&File");
    EXPECT_EQ(window.Last("node _0e"), "Events");
    EXPECT_EQ(window.Last("node _0f"), "Functions");
    EXPECT_EQ(window.Last("node _0v"), "References");
    EXPECT_EQ(window.Last("check mnuEnglish"), "yes");
    EXPECT_EQ(window.Last("check mnuGerman"), "no");
}

TEST(ApplyLanguageTest, GermanTextsAreSet) {
    RecordingWindow window;
    window.controls = SomeControls();
    window.message = "vornMainFrmPrmpt37";
    window.file = "C:\\a.PSF";
    ApplyLanguage(window, 1);
    EXPECT_EQ(window.Last("caption"), "Tessaly");
    EXPECT_EQ(window.Last("member titleVorn"), "Tessaly");
    EXPECT_EQ(window.Last("member vornMainFrmPrmpt6"), "Fehler");
    EXPECT_EQ(window.Last("member unknown"), "Unbekannter Fehler!");
    EXPECT_EQ(window.Last("panel 2"), "Datei wurde erfolgreich geöffnet!");
    EXPECT_EQ(window.Last("FuncLabel"), "Ereignisse");
    EXPECT_EQ(window.Last("lblcodeTreeViewer"), "Ereignistypauswahl");
    EXPECT_EQ(window.Last("panel 1"), "Datei=C:\\a.PSF");
    EXPECT_EQ(window.Last("menu mnuFile"), "&Datei");
    EXPECT_EQ(window.Last("node _0e"), "Ereignisse");
    EXPECT_EQ(window.Last("node _0f"), "Funktionen");
    EXPECT_EQ(window.Last("node _0v"), "Referenzen");
    EXPECT_EQ(window.Last("check mnuEnglish"), "no");
    EXPECT_EQ(window.Last("check mnuGerman"), "yes");
}

TEST(ApplyLanguageTest, AnUnknownLanguageLeavesOnlyThePathAndChecksGerman) {
    for (const std::uint8_t language : {std::uint8_t{2}, std::uint8_t{255}}) {
        RecordingWindow window;
        window.controls = SomeControls();
        window.message = "vornMainFrmPrmpt37";
        window.file = "C:\\a.PSF";
        ApplyLanguage(window, 0);
        ApplyLanguage(window, language);
        for (const char* what :
             {"caption", "member titleVorn", "member vornMainFrmPrmpt6", "member unknown", "panel 2", "FuncLabel",
              "lblcodeTreeViewer", "menu mnuFile", "menu mnuNoSuch", "node _0e", "node _0f", "node _0v"}) {
            EXPECT_EQ(window.Last(what), "") << what;
        }
        EXPECT_EQ(window.Last("panel 1"), "C:\\a.PSF");
        EXPECT_EQ(window.Last("check mnuEnglish"), "no");
        EXPECT_EQ(window.Last("check mnuGerman"), "yes");
    }
}

TEST(ApplyLanguageTest, WithoutAMessageItsPanelIsCleared) {
    RecordingWindow window;
    ApplyLanguage(window, 1);
    EXPECT_EQ(window.Last("panel 2"), "");
}

TEST(ApplyLanguageTest, WithoutAFileItsPanelShowsThePrefixAlone) {
    RecordingWindow window;
    ApplyLanguage(window, 0);
    EXPECT_EQ(window.Last("panel 1"), "File=");
}

TEST(ApplyLanguageTest, AMenuThatTheCatalogueDoesNotHaveSaysSo) {
    RecordingWindow window;
    window.controls = SomeControls();
    ApplyLanguage(window, 0);
    EXPECT_EQ(window.Last("menu mnuNoSuch"), "Unknown error!");
    ApplyLanguage(window, 1);
    EXPECT_EQ(window.Last("menu mnuNoSuch"), "Unbekannt Fehler!");
}

TEST(ApplyLanguageTest, HotKeysAreCalledTheSameInBothLanguages) {
    RecordingWindow window;
    window.controls = SomeControls();
    for (const std::uint8_t language : {std::uint8_t{0}, std::uint8_t{1}}) {
        ApplyLanguage(window, language);
        EXPECT_EQ(window.Last("menu mnuHelpHotKeys"), "Ho&t Keys");
    }
}

TEST(ApplyLanguageTest, TheLabelFollowsTheNodeThatIsEdited) {
    struct Case {
        std::optional<std::string> key;
        std::optional<std::string> parent;
        std::string english;
        std::string german;
    };
    const std::vector<Case> cases = {
        {"_0f", {}, "Function Code", "Funktionen"},
        {"_0e", {}, "Event Code", "Ereignisse"},
        {"_0v", {}, "Global References", "Globale Referenzen"},
        {"Blink", "_0f", "Function Code", "Funktionen"},
        {"_0e3", "_0e", "Event Code", "Ereignisse"},
        {"below", "_0v", "Global References", "Globale Referenzen"},
        {"_0v", "_0f", "Global References", "Globale Referenzen"}, // the node's own key comes first
        {"Blink", "_0F", "", ""},
        {"Blink", "other", "", ""},
        {"Blink", "", "", ""},
        {"Blink", {}, "", ""},
        {{}, {}, "", ""},
        {"", "", "", ""},
    };
    for (const Case& node : cases) {
        RecordingWindow window;
        window.nodeKey = node.key;
        window.parentKey = node.parent;
        ApplyLanguage(window, 0);
        EXPECT_EQ(window.Last("FuncLabel"), node.english) << node.key.value_or("none") << node.parent.value_or("none");
        ApplyLanguage(window, 1);
        EXPECT_EQ(window.Last("FuncLabel"), node.german) << node.key.value_or("none") << node.parent.value_or("none");
    }
}

TEST(ApplyLanguageTest, ATopNodeIsNotAskedForTheOneAboveIt) {
    RecordingWindow window;
    window.nodeKey = "_0v";
    ApplyLanguage(window, 0);
    EXPECT_EQ(window.parentQuestions, 0);
    window.nodeKey = "Blink";
    ApplyLanguage(window, 0);
    EXPECT_EQ(window.parentQuestions, 1);
}

TEST(ApplyLanguageTest, WithoutATreeNoNodeIsSet) {
    RecordingWindow window;
    window.controls = {{ControlKind::Menu, "mnuFile"}};
    ApplyLanguage(window, 0);
    EXPECT_EQ(window.Last("menu mnuFile"), "&File");
    EXPECT_EQ(window.Last("node _0e"), "never");
}

TEST(ApplyLanguageTest, AFailureEndsItAndReachesTheCaller) {
    RecordingWindow window;
    window.controls = SomeControls();
    window.failingMenu = "mnuHelpHotKeys";
    EXPECT_THROW(ApplyLanguage(window, 1), std::runtime_error);
    EXPECT_EQ(window.Last("node _0v"), "Referenzen");
    EXPECT_EQ(window.Last("menu mnuNoSuch"), "never");
    EXPECT_EQ(window.Last("check mnuGerman"), "never");
}

} // namespace
} // namespace tessaly
