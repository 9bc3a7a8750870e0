// The whole program on any desktop; the test is its user. Each desktop instantiates this beside its contract tests.
#pragma once

#include "app/Settings.h"
#include "platform/text/Utf16.h"
#include "tests/contract/DesktopContract.h"
#include "tests/unit/document/PsfBuilder.h"
#include "ui/VornMainFrm.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace tessaly {

// The name of a desktop where no copy can be written.
inline constexpr std::string_view WithoutCopies = "MemoryWithoutCopies";

class ProgramScenario : public DesktopContract {
protected:
    static constexpr int Shift = 1;
    static constexpr int Ctrl = 2;
    static constexpr int CtrlWithShift = 3;
    static constexpr int Alt = 4;

    // Starts the program with the settings of a good installation.
    void StartProgram(std::uint32_t language = 0) {
        SetSetting(CompBatSetting, user->StartableCommand());
        SetSetting(CompFileNameSetting, CFile());
        SetSetting(HelpSetting, user->FilePath("help"));
        SetValue(LanguageSetting, Registry::DwordType, {static_cast<char>(language), '\0', '\0', '\0'});
        program = std::make_unique<VornMainFrm>(TheDesktop(), Recovery());
        program->Show();
        user->Settle();
    }

    RecoveryHost Recovery() {
        RecoveryHost host = SystemRecoveryHost(user->OwnFiles(), TheDesktop().Files(), ProcessEnvironment);
        host.folders = {user->FilePath("recovery")};
        host.stopwatch = [] { return 0; }; // however slow the machine is
        return host;
    }

    // The text of the function in the newest copy; "none" without one.
    std::string InCopy(std::string_view function) {
        const RecoveryStore store(Recovery());
        const std::vector<Copy> copies = store.Copies();
        VornSrcObj document(TheDesktop().Files(), TheDesktop().AnsiCodePage());
        std::string prototype;
        std::string code = "none";
        if (!copies.empty() && store.Load(copies.front(), document) == Status::Done) {
            document.GetFunction(function, prototype, code);
        }
        return code;
    }

    // What a program left that is gone.
    void LeaveCopy(const std::string& item, const std::string& text, std::uint64_t caret) {
        const std::string path = user->FilePath("left.PSF");
        WriteFile(path, GoodPsf());
        VornSrcObj document(TheDesktop().Files(), TheDesktop().AnsiCodePage());
        ASSERT_EQ(document.LoadFile(path), Status::Done);
        RecoveryHost host = Recovery();
        host.process = {4'000'000'000, "gone"};
        const WindowContent content{document, item, text, caret, path, MarkOf(GoodPsf())};
        ASSERT_FALSE(RecoveryStore(host).Write(content, Flushing::Later));
    }

    void TearDown() override {
        program.reset();
        user.reset();
    }

    void SetSetting(std::string_view name, const std::string& value) {
        SetValue(name, Registry::StringType, value + std::string(1, '\0'));
    }

    void SetValue(std::string_view name, std::uint32_t type, const std::string& bytes) {
        Registry& settings = TheDesktop().Settings();
        Registry::Handle key = 0;
        ASSERT_EQ(settings.CreateKey(Registry::LocalMachine, SettingsKey, Registry::SetAccess, key), 0);
        ASSERT_EQ(settings.SetValue(key, name, type, bytes), 0);
        settings.CloseKey(key);
    }

    std::string CFile() const { return user->FilePath("program.c"); }

    // A good file with two functions.
    static std::string GoodPsf() {
        return Psf(" 2", "One,Two",
                   PsfFunction("One", "void One()\r\n{\r\n}") + PsfFunction("Two", "void Two()\r\n{\r\n}"));
    }

    void WriteFile(const std::string& path, const std::string& bytes) {
        const std::unique_ptr<OutputFile> file = TheDesktop().Files().OpenForOutput(path);
        file->Write(bytes);
        file->Close();
    }

    std::string ReadFile(const std::string& path) {
        const std::unique_ptr<InputFile> file = TheDesktop().Files().OpenForInput(path);
        std::string bytes;
        std::string buffer(4096, '\0');
        while (const std::size_t count = file->Read(buffer.data(), buffer.size())) {
            bytes.append(buffer, 0, count);
        }
        return bytes;
    }

    // Chooses a file that holds `bytes` in File/Open.
    void Open(const std::string& name, const std::string& bytes) {
        WriteFile(user->FilePath(name), bytes);
        user->WillChooseFile(user->FilePath(name));
        Choose("mnuOpenPSF");
    }

    // Opens a.PSF, in which a function has a mistake in its third line, and everything else is as a compiler wants it.
    void OpenWrong() {
        VornSrcObj document(TheDesktop().Files(), TheDesktop().AnsiCodePage());
        document.Init();
        document.AddFunction("One", "", "void One()\n{\n\tint a = ;\n}");
        document.AddFunction("Two", "", "void Two()\n{\n}");
        ASSERT_EQ(document.SaveFile(user->FilePath("a.PSF")), Status::Done);
        user->WillChooseFile(user->FilePath("a.PSF"));
        Choose("mnuOpenPSF");
    }

    // A document with a function and a header, and the caret in the empty third line of another function.
    void BeginBesideOthers() {
        WriteFile(user->FilePath("mine.h"), "int MineToSend(int first, char* second);\n");
        VornSrcObj document(TheDesktop().Files(), TheDesktop().AnsiCodePage());
        document.Init();
        document.UpdateVarCode("#include \"mine.h\"\r\nlong measured;\r\n");
        document.AddFunction("Calculate", "", "long Calculate(int value)\r\n{\r\n}");
        document.AddFunction("Work", "", "void Work(int amount)\r\n{\r\n\r\n}");
        ASSERT_EQ(document.SaveFile(user->FilePath("a.PSF")), Status::Done);
        StartProgram();
        user->WillChooseFile(user->FilePath("a.PSF"));
        Choose("mnuOpenPSF");
        Click("Work");
        user->ClickPane();
        Pane().Select({{2, 0}, {2, 0}});
    }

    std::string LineNow() { return ToUtf8(Pane().Line(2)); }

    void Choose(std::string_view menu) { user->ChooseMenu(TheDesktop().Menu(menu)); }

    void Click(std::string_view key) { user->ClickItem(Tree().Find(key)); }

    // Clicks an item, then into the pane, and types there at the beginning.
    void Write(std::string_view key, std::string_view text) {
        Click(key);
        user->ClickPane();
        user->SetCaret(0);
        user->Type(text);
    }

    // Opens a file and edits a function of it in the pane.
    void BeginTyping() {
        StartProgram();
        Open("a.PSF", GoodPsf());
        Write("One", "/* first */");
    }

    static constexpr std::string_view OneBody = "void One()\r\n{\r\n}\r\n";

    // Opens a file whose function One is in the pane, which has the keyboard; this is selected there.
    void BeginEditing(const Selection& selection) {
        StartProgram();
        Open("a.PSF", GoodPsf());
        Click("One");
        user->ClickPane();
        Pane().Select(selection);
        ASSERT_FALSE(program->FuncBodyChangedFlag);
    }

    // What was done to it is one step to undo and an unsaved edit. It is undone then.
    void ExpectOneEdit(std::string_view text) {
        EXPECT_EQ(Pane().Text(), text);
        EXPECT_TRUE(program->FuncBodyChangedFlag);
        user->Undo();
        EXPECT_EQ(Pane().Text(), OneBody);
        EXPECT_FALSE(Pane().CanUndo());
    }

    static constexpr std::string_view FindText = "void One()\r\n{\r\n\tTwo();\r\n\ttwo = 2;\r\n}\r\n";

    // The program with that in the pane, which has the keyboard, and the caret in front of it.
    void BeginFinding(std::uint32_t language = 0) {
        StartProgram(language);
        Open("a.PSF", Psf(" 2", "One,Two",
                          PsfFunction("One", "void One()\r\n{\r\n\tTwo();\r\n\ttwo = 2;\r\n}") +
                              PsfFunction("Two", "void Two()\r\n{\r\n}")));
        Click("One");
        user->ClickPane();
        Pane().Select({});
        ASSERT_EQ(Pane().Text(), FindText);
    }

    void Find(std::string_view text) {
        user->PressKey('F', 2);
        user->Type(text);
    }

    const BarControls& Bar() { return TheDesktop().Bar(); }
    std::string Count() { return user->WordsOn(Bar().count); }

    // Types into the focused control and closes the window, which asks; the answer is Yes.
    void TypeOn() {
        user->Type("/* later */");
        EXPECT_NE(user->PaneShown().find("/* first *//* later */"), std::string::npos);
        EXPECT_TRUE(program->FuncBodyChangedFlag);
        const std::size_t boxes = user->MessageBoxes().size();
        user->WillPress(MsgResult::Yes);
        user->CloseByUser();
        EXPECT_EQ(user->MessageBoxes().size(), boxes + 1);
        EXPECT_EQ(user->MessageBoxes().back().caption, "Save Dialog");
    }

    // Saves and builds with F10.
    void BuildAndSave() {
        user->WillPress(MsgResult::Yes);
        user->PressKey(KeyF10, 0);
    }

    // What the batch file prints that was started last.
    void Print(const std::string& bytes) { WriteFile(TheDesktop().App().OutputPath(CFile()), bytes); }

    bool WaitForRows(std::size_t count) {
        return user->SettleUntil([this, count] { return Seen().rows.size() == count; });
    }

    // Opens a menu and leaves it.
    void LeaveMenuBar() { user->OpenMenuAndLeave(TheDesktop().Menu("mnuFile")); }

    // Adds a function with F5.
    void AddFunction(const std::string& name) {
        user->WillUseName([name](NameWindowUser& dialog) {
            dialog.Type(name);
            dialog.PressOk();
        });
        user->PressKey(KeyF5, 0);
    }

    static constexpr float OnePixel = 15;

    Extent Shown(Control& control) { return user->Shown(control); }

    // Nothing of the main window is over anything else on the screen, or reaches out of it.
    void ExpectNothingOverlaps() {
        std::vector<Control*> controls = {&Tree(),
                                          &Pane(),
                                          &TheDesktop().LblcodeTreeViewer(),
                                          &TheDesktop().FuncLabel(),
                                          &TheDesktop().VornToolBar(),
                                          &TheDesktop().StatusBar1()};
        const auto bar = Bar().All();
        std::copy_if(bar.begin(), bar.end(), std::back_inserter(controls),
                     [](const Control* control) { return control->IsVisible(); });
        std::vector<Extent> places;
        for (Control* const control : controls) {
            const Extent place = Shown(*control);
            EXPECT_GT(place.width, 0);
            EXPECT_GT(place.height, 0);
            EXPECT_LE(place.left + place.width, MainWindow().ClientWidth());
            EXPECT_LE(place.top + place.height, MainWindow().ClientHeight());
            for (const Extent& other : places) {
                const bool isBeside = place.left + place.width <= other.left || other.left + other.width <= place.left;
                const bool isBelow = place.top + place.height <= other.top || other.top + other.height <= place.top;
                EXPECT_TRUE(isBeside || isBelow)
                    << place.left << " " << place.top << " and " << other.left << " " << other.top;
            }
            places.push_back(place);
        }
    }

    std::string Panel(int number) { return user->PanelToolTip(number); }
    std::string CurrentKey() { return Tree().Key(program->mCurrentNode); }

    // The function items of the tree, in its order.
    Strings FunctionItems() {
        Strings names;
        bool isInGroup = false;
        for (const std::string& line : user->TreeShown()) {
            const bool isGroup = !line.starts_with(' ');
            isInGroup = isGroup ? line.starts_with(Tree().Text(Tree().Find("_0f"))) : isInGroup;
            if (isInGroup && !isGroup) {
                names.push_back(line.substr(2, line.find('*') - 2));
            }
        }
        return names;
    }

    std::unique_ptr<VornMainFrm> program;
};

} // namespace tessaly
