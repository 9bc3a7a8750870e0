// The contract tests know the interfaces and a driver only. A desktop takes part in them by one
// INSTANTIATE_TEST_SUITE_P of DesktopContract in a program of its own.
#pragma once

#include "tests/contract/DesktopDriver.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tessaly {

class DesktopContract : public ::testing::TestWithParam<DesktopUnderTest> {
protected:
    DesktopContract() { Start({}); }

    // Starts the program anew.
    void Start(const Launch& launch) {
        user.reset();
        user = GetParam().start(launch);
    }

    Desktop& TheDesktop() { return user->TheDesktop(); }
    Window& MainWindow() { return TheDesktop().MainWindow(); }
    TreeView& Tree() { return TheDesktop().CodeTree(); }
    RichTextBox& Pane() { return TheDesktop().FuncBody(); }

    MessagesWindow& Messages() { return TheDesktop().Messages(); }
    SeenMessages Seen() { return user->Messages(); }

    // The main window with these rows in the messages window, which is shown.
    void ShowRows(const std::vector<MessageRow>& rows) {
        MainWindow().Show();
        user->Settle();
        Messages().SetTexts({"Build", {"Kind", "Where", "Line", "What"}, "Messages", "Output \xC3\xA4"});
        Messages().SetRows(rows);
        Messages().Show();
        user->Settle();
    }

    void ExpectNothingCovered() {
        EXPECT_FALSE(user->IsCovered(Tree()));
        EXPECT_FALSE(user->IsCovered(Pane()));
        EXPECT_FALSE(user->IsCovered(TheDesktop().StatusBar1()));
    }

    // Writes the events of the pane and the tree to `events`.
    void Record() {
        Pane().onChange = [this] { events.emplace_back("change"); };
        Pane().onGotFocus = [this] { events.emplace_back("got focus"); };
        Pane().onLostFocus = [this] { events.emplace_back("lost focus"); };
        Tree().onNodeClick = [this](TreeItem item) { events.push_back("click " + Tree().Key(item)); };
    }

    // The pane with this text, shown, with the focus and the caret at `caret`.
    void Edit(std::string_view text, std::size_t caret) {
        MainWindow().Show();
        Pane().SetText(text);
        user->ClickPane();
        user->SetCaret(caret);
    }

    // The window with the keyboard in the pane, in front of its text "b". Events are written down from now on.
    void BeginInPane() {
        Edit("b", 0);
        user->Settle();
        Record();
    }

    void ShowBox() {
        user->WillPress(MsgResult::Ok);
        TheDesktop().MessageBoxes().Show("text", "caption", MsgButtons::Ok, MsgIcon::None);
    }

    // The events, where a window has come and gone: a display may take the keyboard there and back on the way.
    std::vector<std::string> EventsAcrossWindows() const {
        std::vector<std::string> told;
        for (const std::string& event : events) {
            const std::size_t count = told.size();
            if (event == "got focus" && count > 1 && told[count - 1] == "lost focus" && told[count - 2] == event) {
                told.pop_back();
            } else {
                told.push_back(event);
            }
        }
        return told;
    }

    // The text of the tree's selected item; "" when none is.
    std::string Selected() const {
        for (const std::string& line : user->TreeShown()) {
            if (line.ends_with('*')) {
                const std::size_t start = line.find_first_not_of(' ');
                return line.substr(start, line.size() - 1 - start);
            }
        }
        return "";
    }

    std::unique_ptr<DesktopDriver> user;
    std::vector<std::string> events;
};

using Strings = std::vector<std::string>;

} // namespace tessaly
