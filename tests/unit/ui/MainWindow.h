// The whole program on the desktop in memory; a test is its user.
#pragma once

#include "app/Settings.h"
#include "tests/desktop/Desktop.h"
#include "tests/unit/document/PsfBuilder.h"
#include "ui/VornMainFrm.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace tessaly {

inline constexpr const char* RecoveryFolder = "/recovery";

// As long as `desktop` lives. Each call is another program, and the last one alone runs.
inline RecoveryHost RecoveryOn(memory::Desktop& desktop) {
    const std::uint64_t id = desktop.own.processes.empty() ? 1 : desktop.own.processes.rbegin()->first + 1;
    desktop.own.processes = {{id, "now"}};
    return {desktop.own,
            desktop.filesForOwn,
            {RecoveryFolder},
            {id, "now"},
            [id] { return 1'700'000'000'000 + static_cast<std::int64_t>(id); },
            [] { return 0; }};
}

class MainWindow : public ::testing::Test {
public:
    MainWindow() { desktop.window.SetInitialSize(12000, 9000); }

    // Writes the settings of a good installation.
    void Install(std::uint32_t language = 0) {
        SetSetting(CompBatSetting, "C:\\kit\\compile.bat");
        SetSetting(CompFileNameSetting, "C:\\kit\\program.c");
        SetSetting(HelpSetting, "C:\\kit\\help.chm");
        SetLanguage(language);
    }

    void SetSetting(std::string_view name, const std::string& value) {
        SetValue(name, Registry::StringType, value + std::string(1, '\0'));
    }

    void SetLanguage(std::uint32_t language) {
        SetValue(LanguageSetting, Registry::DwordType,
                 {static_cast<char>(language), static_cast<char>(language >> 8), '\0', '\0'});
    }

    void SetValue(std::string_view name, std::uint32_t type, const std::string& bytes) {
        Registry::Handle key = 0;
        ASSERT_EQ(desktop.registry.store.CreateKey(Registry::LocalMachine, SettingsKey, Registry::SetAccess, key), 0);
        ASSERT_EQ(desktop.registry.store.SetValue(key, name, type, bytes), 0);
        desktop.registry.store.CloseKey(key);
    }

    // Starts the program with good settings.
    void Start(std::uint32_t language = 0) {
        Install(language);
        window.Show();
    }

    // Has the user choose `path` in File/Open; it holds `bytes`.
    void Open(const std::string& path, const std::string& bytes) {
        desktop.files.contents[path] = bytes;
        desktop.fileDialog.WillChoose(path);
        Choose("mnuOpenPSF");
    }

    void Choose(std::string_view menu) { desktop.menus[menu].Choose(); }

    // Adds a function as the user does it with F5.
    void AddFunction(const std::string& name) {
        desktop.modal.WillUseName([name](memory::NameWindow& dialog) {
            dialog.Type(name);
            dialog.PressOk();
        });
        desktop.window.PressKey(KeyF5);
    }

    // Clicks an item, then into the pane, and types there at the beginning.
    void Edit(std::string_view key, std::string_view text) {
        desktop.tree.Click(key);
        ASSERT_TRUE(desktop.pane.Click());
        desktop.pane.SetCaret(0);
        ASSERT_TRUE(desktop.pane.Type(text));
    }

    // All but what the program keeps for recovery.
    std::map<std::string, std::string> UserFiles() const {
        std::map<std::string, std::string> files = desktop.files.contents;
        std::erase_if(files, [](const auto& file) {
            return file.first.starts_with(RecoveryFolder) || file.first.find(".recovery.") != std::string::npos;
        });
        return files;
    }

    std::string Panel(int number) { return desktop.status.PanelText(number); }
    std::string CurrentKey() { return desktop.tree.Key(window.mCurrentNode); }
    std::string SelectedKey() { return desktop.tree.Key(desktop.tree.Selected()); }
    const memory::MsgBox::Record& LastBox() { return desktop.msgBox.records.back(); }
    std::size_t Boxes() const { return desktop.msgBox.records.size(); }

    std::string EventText(std::int32_t index) const { return std::string(window.mSourceDoc->EventCodeAt(index)); }
    std::string References() const { return std::string(window.mSourceDoc->VarCode()); }
    std::string FunctionText(std::string_view name) const {
        std::string prototype;
        std::string code;
        window.mSourceDoc->GetFunction(name, prototype, code);
        return code;
    }

    // The function items of the tree, in its order.
    std::vector<std::string> FunctionItems() {
        std::vector<std::string> names;
        for (std::int32_t i = 1; i <= desktop.tree.Count(); ++i) {
            const TreeItem item = desktop.tree.At(i);
            if (desktop.tree.Parent(item) != TreeItem::None && desktop.tree.Key(desktop.tree.Parent(item)) == "_0f") {
                names.push_back(desktop.tree.Text(item));
            }
        }
        return names;
    }

    std::vector<std::string> FunctionNames() const {
        std::vector<std::string> names;
        for (std::int32_t i = 0; i < window.mSourceDoc->GetFunctionCount(); ++i) {
            std::string name;
            window.mSourceDoc->GetFuncName(i, name);
            names.push_back(name);
        }
        return names;
    }

    memory::Desktop desktop;
    VornMainFrm window{desktop, RecoveryOn(desktop)};
};

// A good file with two functions.
inline std::string GoodPsf() {
    return Psf(" 2", "One,Two",
               PsfFunction("One", "void One()\r\n{\r\n}") + PsfFunction("Two", "void Two()\r\n{\r\n}"));
}

} // namespace tessaly
