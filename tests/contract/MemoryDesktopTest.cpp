// What the desktop in memory offers to tests beyond the contracts.
#include "tests/desktop/Desktop.h"
#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <type_traits>

namespace tessaly {
namespace {

class MemoryDesktopTest : public ::testing::Test {
protected:
    memory::Desktop desktop;
    MenuItem& menu = desktop.AddMenu(nullptr, "mnuFile");
    std::unique_ptr<NameWindow> nameWindow = desktop.NewNameWindow();
    std::unique_ptr<SplashWindow> splash = desktop.NewSplashWindow();
};

TEST_F(MemoryDesktopTest, ATestFailureIsNoStandardException) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, memory::UnexpectedDialog>));
    EXPECT_FALSE((std::is_base_of_v<std::exception, memory::ImpossibleAction>));
    EXPECT_THROW(desktop.msgBox.Show("text", "", MsgButtons::Ok, MsgIcon::None), memory::UnexpectedDialog);
    EXPECT_THROW(desktop.fileDialog.ShowOpen({}), memory::UnexpectedDialog);
    EXPECT_THROW(desktop.fileDialog.ShowSave({}), memory::UnexpectedDialog);
    EXPECT_THROW(nameWindow->ShowModal(), memory::UnexpectedDialog);
    EXPECT_THROW(splash->ShowModal(), memory::UnexpectedDialog);
}

TEST_F(MemoryDesktopTest, AScriptMustLeaveItsWindowHidden) {
    desktop.modal.WillUseName([](memory::NameWindow& window) { window.Type("name"); });
    EXPECT_THROW(nameWindow->ShowModal(), memory::UnexpectedDialog);
    desktop.modal.WillUseSplash([](memory::SplashWindow& window) { window.PressKey(); });
    EXPECT_THROW(splash->ShowModal(), memory::UnexpectedDialog);
    EXPECT_FALSE(desktop.focus.IsBlocked());
}

TEST_F(MemoryDesktopTest, AWindowIsNoLongerShownWhenItsScriptFails) {
    desktop.modal.WillUseName([](memory::NameWindow&) { throw std::runtime_error("script"); });
    EXPECT_THROW(nameWindow->ShowModal(), std::runtime_error);
    EXPECT_FALSE(static_cast<memory::NameWindow&>(*nameWindow).IsShown());
    EXPECT_FALSE(desktop.focus.IsBlocked());
}

TEST_F(MemoryDesktopTest, UnusedAnswersAreCounted) {
    desktop.msgBox.WillPress(MsgResult::Ok);
    desktop.msgBox.WillClose();
    desktop.fileDialog.WillCancel();
    desktop.modal.WillUseName([](memory::NameWindow&) {});
    desktop.msgBox.Show("", "", MsgButtons::Ok, MsgIcon::None);
    EXPECT_EQ(desktop.msgBox.AnswersLeft(), 1U);
    EXPECT_EQ(desktop.fileDialog.AnswersLeft(), 1U);
    EXPECT_EQ(desktop.modal.ScriptsLeft(), 1U);
}

TEST_F(MemoryDesktopTest, NobodyCanDoWhatIsNotThere) {
    desktop.AddMenu(&menu, "mnuOpen");
    const TreeItem parent = desktop.tree.Add(TreeItem::None, "parent", "");
    const TreeItem hidden = desktop.tree.Add(parent, "hidden", "");
    EXPECT_THROW(desktop.menus["mnuFile"].Choose(), memory::ImpossibleAction);
    EXPECT_THROW(desktop.menus["mnuNone"], memory::ImpossibleAction);
    EXPECT_THROW(desktop.tree.Click("none"), memory::ImpossibleAction);
    EXPECT_THROW(desktop.tree.Click(hidden), memory::ImpossibleAction);
    EXPECT_THROW(desktop.toolBar.Press(1), memory::ImpossibleAction);
    EXPECT_THROW(desktop.window.Resize(1, 1), memory::ImpossibleAction);
    EXPECT_THROW(desktop.window.PressKey('A'), memory::ImpossibleAction);
    EXPECT_THROW(desktop.pane.SetCaret(1), memory::ImpossibleAction);
    desktop.pane.SetText("\xC3\xA4");
    EXPECT_THROW(desktop.pane.SetCaret(1), memory::ImpossibleAction);
    desktop.msgBox.WillPress(MsgResult::Cancel);
    EXPECT_THROW(desktop.msgBox.Show("", "", MsgButtons::YesNo, MsgIcon::None), memory::ImpossibleAction);
    EXPECT_THROW(static_cast<memory::NameWindow&>(*nameWindow).PressOk(), memory::ImpossibleAction);
}

TEST_F(MemoryDesktopTest, NothingIsReachableBehindAModalWindow) {
    const TreeItem item = desktop.tree.Add(TreeItem::None, "key", "");
    desktop.toolBar.AddButton(1, "");
    desktop.window.Show();
    desktop.modal.WillUseName([&](memory::NameWindow& window) {
        EXPECT_THROW(desktop.tree.Click(item), memory::ImpossibleAction);
        EXPECT_THROW(desktop.pane.Click(), memory::ImpossibleAction);
        EXPECT_THROW(desktop.toolBar.Press(1), memory::ImpossibleAction);
        EXPECT_THROW(desktop.menus["mnuFile"].Choose(), memory::ImpossibleAction);
        EXPECT_THROW(desktop.window.CloseByUser(), memory::ImpossibleAction);
        window.CloseByFrame();
    });
    nameWindow->ShowModal();
    EXPECT_NO_THROW(desktop.tree.Click(item));
}

TEST_F(MemoryDesktopTest, TypingTellsWhetherItHappened) {
    desktop.window.Show();
    desktop.pane.SetText("ab");
    EXPECT_FALSE(desktop.pane.Type("x"));
    EXPECT_FALSE(desktop.pane.PressEnter());
    EXPECT_FALSE(desktop.pane.Backspace());
    EXPECT_FALSE(desktop.pane.Paste("x"));
    EXPECT_TRUE(desktop.pane.Click());
    EXPECT_FALSE(desktop.pane.Backspace());
    EXPECT_TRUE(desktop.pane.Type("x"));
    EXPECT_TRUE(desktop.pane.Backspace());
    desktop.pane.SetFuncBodyAvailable(false);
    EXPECT_FALSE(desktop.pane.Click());
    EXPECT_FALSE(desktop.pane.Type("x"));
    EXPECT_EQ(desktop.pane.Text(), "ab");
}

TEST_F(MemoryDesktopTest, KeysTypeLettersDigitsAndBlanks) {
    desktop.window.Show();
    desktop.pane.Click();
    for (const int key : {static_cast<int>('X'), static_cast<int>('7'), KeyBlank, KeyEnter, KeyF10}) {
        desktop.window.PressKey(key);
    }
    desktop.window.PressKey('Y', memory::Shift);
    desktop.window.PressKey('B', 2);
    EXPECT_EQ(desktop.pane.Text(), "x7 \r\nY");
    desktop.window.PressKey(KeyBackspace);
    EXPECT_EQ(desktop.pane.Text(), "x7 \r\n");
}

TEST_F(MemoryDesktopTest, TheTreeIsShownAsItStands) {
    const TreeItem a = desktop.tree.Add(TreeItem::None, "a", "A");
    desktop.tree.Add(TreeItem::None, "b", "B");
    const TreeItem child = desktop.tree.Add(a, "a1", "A1");
    desktop.tree.Select(child);
    EXPECT_EQ(desktop.tree.Shown(), "A\nB\n");
    desktop.tree.Expand(a);
    EXPECT_EQ(desktop.tree.Shown(), "A\n  A1*\nB\n");
}

TEST_F(MemoryDesktopTest, ArrowKeysMoveOverTheTreeWhileItHasTheFocus) {
    desktop.tree.Add(TreeItem::None, "a", "A");
    desktop.tree.Add(TreeItem::None, "b", "B");
    EXPECT_FALSE(desktop.tree.MoveDown());
    desktop.window.Show();
    EXPECT_TRUE(desktop.tree.HasFocus());
    EXPECT_TRUE(desktop.tree.MoveDown());
    EXPECT_FALSE(desktop.tree.MoveUp());
    desktop.window.PressKey(KeyDown);
    EXPECT_EQ(desktop.tree.Shown(), "A\nB*\n");
    EXPECT_FALSE(desktop.tree.MoveDown());
    EXPECT_TRUE(desktop.tree.MoveUp());
    EXPECT_EQ(desktop.tree.Shown(), "A*\nB\n");
}

TEST_F(MemoryDesktopTest, AToolBarTakesTheFocusOnlyWhereATestWantsIt) {
    desktop.toolBar.AddButton(1, "");
    desktop.pane.Click();
    desktop.toolBar.Press(1);
    EXPECT_TRUE(desktop.pane.HasFocus());
    desktop.toolBar.takesFocus = true;
    desktop.toolBar.Press(1);
    EXPECT_FALSE(desktop.pane.HasFocus());
}

TEST_F(MemoryDesktopTest, WindowSizesAreNotRoundedAndTheSameSizeIsNoChange) {
    int resizes = 0;
    desktop.window.onResize = [&] { ++resizes; };
    desktop.window.SetInitialSize(9000.1F, 6000.7F);
    desktop.window.Show();
    EXPECT_EQ(desktop.window.Width(), 9000.1F);
    EXPECT_EQ(resizes, 0);
    desktop.window.Resize(1.1F, 12345.67F);
    desktop.window.Resize(1.1F, 12345.67F);
    EXPECT_EQ(desktop.window.Width(), 1.1F);
    EXPECT_EQ(desktop.window.Height(), 12345.67F);
    EXPECT_EQ(resizes, 1);
}

TEST_F(MemoryDesktopTest, TheNameBoxHasOneLine) {
    desktop.modal.WillUseName([](memory::NameWindow& window) {
        window.Type("wrong");
        window.EraseAll();
        window.Type("a\r\nb");
        window.CloseByFrame();
    });
    nameWindow->ShowModal();
    EXPECT_EQ(nameWindow->FuncVarName(), "ab");
}

TEST_F(MemoryDesktopTest, TabStopsAndButtonImagesCanBeSeen) {
    desktop.pane.SetTabStops({0, 1.1F});
    desktop.toolBar.AddButton(2, "tag");
    EXPECT_EQ(desktop.pane.TabStops(), (std::vector<float>{0, 1.1F}));
    EXPECT_EQ(desktop.toolBar.ButtonImage(1), 2);
}

} // namespace
} // namespace tessaly
