// Every call for which a desktop in memory asks its controls or the system counts and can be made to fail, except
// CloseKey. What is kept behind all desktops cannot fail.
#include "tests/desktop/Desktop.h"
#include "tests/desktop/Faults.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace tessaly {
namespace {

class MemoryFaultsTest : public ::testing::Test {
protected:
    // One call of every operation of every object.
    std::vector<std::function<void()>> EveryCall();
    std::vector<std::function<void()>> CallsOfControls();
    std::vector<std::function<void()>> CallsOfServices();

    memory::Desktop desktop;
    MenuItem& menu = desktop.AddMenu(nullptr, "mnuFile");
    std::unique_ptr<NameWindow> nameWindow = desktop.NewNameWindow();
    std::unique_ptr<SplashWindow> splash = desktop.NewSplashWindow();
};

std::vector<std::function<void()>> MemoryFaultsTest::CallsOfControls() {
    const TreeItem item = desktop.tree.Add(TreeItem::None, "key", "text");
    return {
        [&] { desktop.window.SetCaption(""); },
        [&] { desktop.window.Width(); },
        [&] { desktop.window.Height(); },
        [&] { desktop.window.SetIcon("icon"); },
        [&] { desktop.tree.Add(TreeItem::None, "other", ""); },
        [&] { desktop.tree.Remove(2); },
        [&, item] { desktop.tree.SetText(item, ""); },
        [&, item] { desktop.tree.Expand(item); },
        [&, item] { desktop.tree.Select(item); },
        [&] { desktop.tree.Clear(); },
        [&] { desktop.tree.SetFocus(); },
        [&] { desktop.paneLabel.PreferredHeight(); },
        [&] { desktop.paneLabel.SetCaption(""); },
        [&] { desktop.pane.Text(); },
        [&] { desktop.pane.SetText(""); },
        [&] { desktop.pane.SetFuncBodyAvailable(false); },
        [&] { desktop.pane.CharacterWidth(); },
        [&] { desktop.pane.SetTabStops({}); },
        [&] { desktop.toolBar.PreferredHeight(); },
        [&] { desktop.toolBar.AddButton(1, ""); },
        [&] { desktop.toolBar.SetButtonTip(1, ""); },
        [&] { desktop.toolBar.Clear(); },
        [&] { desktop.status.PreferredHeight(); },
        [&] { desktop.status.AddPanel(); },
        [&] { desktop.status.SetPanelSpring(1); },
        [&] { desktop.status.SetPanelText(1, "text"); },
    };
}

std::vector<std::function<void()>> MemoryFaultsTest::CallsOfServices() {
    desktop.files.contents["file"] = "content";
    return {
        [&] { desktop.AddMenu(&menu, "mnuOpen"); },
        [&] { desktop.AddMenuSeparator(menu); },
        [&] { menu.SetCaption(""); },
        [&] { menu.SetChecked(false); },
        [&] { desktop.NewNameWindow(); },
        [&] { desktop.NewSplashWindow(); },
        [&] { nameWindow->Hide(); },
        [&] { nameWindow->SetTexts({}); },
        [&] { nameWindow->FuncVarName(); },
        [&] { splash->SetLabels({}); },
        [&] {
            desktop.modal.WillUseName([](memory::NameWindow& window) { window.CloseByFrame(); });
            nameWindow->ShowModal();
        },
        [&] {
            desktop.msgBox.WillClose();
            desktop.msgBox.Show("", "", MsgButtons::Ok, MsgIcon::None);
        },
        [&] {
            desktop.fileDialog.WillCancel();
            desktop.fileDialog.ShowOpen({});
        },
        [&] {
            desktop.fileDialog.WillCancel();
            desktop.fileDialog.ShowSave({});
        },
        [&] { desktop.app.SendF1(); },
        [&] { desktop.Files().FileExists("file"); },
        [&] { desktop.app.StartProcess("", 3); },
        [&] { desktop.Files().OpenForInput("file"); },
        [&] { desktop.Files().OpenForOutput("other"); },
    };
}

std::vector<std::function<void()>> MemoryFaultsTest::EveryCall() {
    desktop.files.contents["icon"] = "a picture";
    std::vector<std::function<void()>> calls = CallsOfControls();
    for (const auto& call : CallsOfServices()) {
        calls.push_back(call);
    }
    return calls;
}

TEST_F(MemoryFaultsTest, EveryCallCountsOnce) {
    const std::vector<std::function<void()>> calls = EveryCall();
    for (std::size_t number = 0; number < calls.size(); ++number) {
        const std::size_t before = desktop.faults.Calls();
        calls[number]();
        EXPECT_EQ(desktop.faults.Calls(), before + 1) << "call " << number;
    }
}

TEST_F(MemoryFaultsTest, EveryCallCanBeMadeToFailAndThenSucceeds) {
    const std::vector<std::function<void()>> calls = EveryCall();
    for (std::size_t number = 0; number < calls.size(); ++number) {
        desktop.faults.FailAt(1);
        EXPECT_THROW(calls[number](), std::runtime_error) << "call " << number;
        EXPECT_FALSE(desktop.faults.IsPending());
        EXPECT_NO_THROW(calls[number]()) << "call " << number;
    }
}

TEST_F(MemoryFaultsTest, ACallThatFailsDoesNothing) {
    desktop.pane.SetText("old");
    int changes = 0;
    desktop.pane.onChange = [&] { ++changes; };
    desktop.faults.FailAt(2);
    desktop.pane.Text();
    EXPECT_THROW(desktop.pane.SetText("new"), std::runtime_error);
    EXPECT_EQ(desktop.pane.Text(), "old");
    EXPECT_EQ(changes, 0);
}

TEST_F(MemoryFaultsTest, FailuresCanBeSwitchedOff) {
    for (const std::function<void()>& set : {std::function<void()>([&] { desktop.faults.FailAt(1); }),
                                             std::function<void()>([&] { desktop.faults.FailTwice(1, 1); }),
                                             std::function<void()>([&] { desktop.faults.FailFrom(1); })}) {
        set();
        EXPECT_TRUE(desktop.faults.IsPending());
        desktop.faults.Off();
        EXPECT_NO_THROW(desktop.pane.Text());
    }
}

TEST_F(MemoryFaultsTest, CallsCanBeMadeToFailTwiceAndForEver) {
    const auto fails = [this] {
        try {
            desktop.pane.Text();
            return '-';
        } catch (const std::exception&) {
            return 'x';
        }
    };
    const auto failsInARow = [&fails] { return std::string{fails(), fails(), fails(), fails(), fails(), fails()}; };
    desktop.faults.FailTwice(2, 3);
    EXPECT_EQ(failsInARow(), "-x--x-");
    desktop.faults.FailTwice(1, 1);
    EXPECT_EQ(failsInARow(), "xx----");
    desktop.faults.FailFrom(3);
    EXPECT_EQ(failsInARow(), "--xxxx");
    desktop.faults.FailAt(4);
    EXPECT_EQ(failsInARow(), "---x--");
}

TEST_F(MemoryFaultsTest, FilesFailAsFilesDoAndCloseKeyNever) {
    desktop.files.contents["file"] = "content";
    const std::unique_ptr<InputFile> input = desktop.Files().OpenForInput("file");
    const std::unique_ptr<OutputFile> output = desktop.Files().OpenForOutput("other");
    char byte = 0;
    for (const std::function<void()>& call :
         {std::function<void()>([&] { input->Read(&byte, 1); }), std::function<void()>([&] { input->Close(); }),
          std::function<void()>([&] { output->Write("x"); }), std::function<void()>([&] { output->Close(); })}) {
        desktop.faults.FailAt(1);
        EXPECT_THROW(call(), std::system_error);
    }
    desktop.faults.FailAt(1);
    EXPECT_EQ(desktop.Settings().CloseKey(1), Registry::BadHandle);
    EXPECT_TRUE(desktop.faults.IsPending());
}

TEST_F(MemoryFaultsTest, RegistryCallsCanBeMadeToFail) {
    Registry& registry = desktop.Settings();
    Registry::Handle key = 0;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    for (const std::function<void()>& call :
         {std::function<void()>([&] { registry.OpenKey(Registry::Users, "a", 0, key); }),
          std::function<void()>([&] { registry.CreateKey(Registry::Users, "a", 0, key); }),
          std::function<void()>([&] { registry.QueryValue(key, "a", type, nullptr, size); }),
          std::function<void()>([&] { registry.SetValue(key, "a", 1, ""); })}) {
        desktop.faults.FailAt(1);
        EXPECT_THROW(call(), std::runtime_error);
    }
    EXPECT_TRUE(desktop.registry.calls.empty());
}

TEST_F(MemoryFaultsTest, WhatTheUserDoesIsNoCall) {
    const TreeItem item = desktop.tree.Add(TreeItem::None, "key", "text");
    desktop.window.Show();
    const std::size_t before = desktop.faults.Calls();
    desktop.tree.Click(item);
    desktop.pane.Click();
    desktop.pane.Type("abc");
    desktop.window.PressKey('X');
    desktop.window.Resize(1, 2);
    desktop.menus["mnuFile"].Choose();
    EXPECT_EQ(desktop.faults.Calls(), before);
}

} // namespace
} // namespace tessaly
