// What stands on the screen when a control's drawing was held back: the same as if all of it were drawn anew.
#include "platform/desktop/win32/ControlIds.h"
#include "tests/contract/win32/Win32Driver.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

class Win32DrawingTest : public testing::Test {
protected:
    Win32DrawingTest() {
        user.TheDesktop().MainWindow().Show();
        tree.Expand(tree.Add(TreeItem::None, "top", "top"));
        for (int item = 0; item < 500; ++item) {
            tree.Add(tree.Find("top"), std::to_string(item), "item " + std::to_string(item));
        }
        user.Settle();
    }

    HWND TreeWindow() const { return user.Control(win32::ControlId::CodeTree); }
    HWND PaneWindow() const { return user.Control(win32::ControlId::FuncBody); }

    // All of the control, its edge, too.
    std::vector<COLORREF> Picture(HWND control) {
        user.Settle();
        RECT outer = {};
        GetWindowRect(control, &outer);
        const int width = outer.right - outer.left;
        const int height = outer.bottom - outer.top;
        BITMAPINFO form = {};
        form.bmiHeader = {sizeof form.bmiHeader, width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        HDC screen = GetWindowDC(control);
        HDC memory = CreateCompatibleDC(screen);
        void* bits = nullptr;
        const win32::BitmapOwner bitmap(CreateDIBSection(screen, &form, DIB_RGB_COLORS, &bits, nullptr, 0));
        HGDIOBJ before = SelectObject(memory, bitmap.get());
        BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
        GdiFlush();
        const auto* const first = static_cast<const COLORREF*>(bits);
        std::vector<COLORREF> picture(first, first + std::ptrdiff_t{width} * height);
        SelectObject(memory, before);
        DeleteDC(memory);
        ReleaseDC(control, screen);
        return picture;
    }

    bool IsWhollyDrawn(HWND control) {
        const std::vector<COLORREF> drawn = Picture(control);
        RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
        return drawn == Picture(control);
    }

    Win32Driver user{{}};
    TreeView& tree = user.TheDesktop().CodeTree();
    RichTextBox& pane = user.TheDesktop().FuncBody();
};

TEST_F(Win32DrawingTest, AFarItemIsSelectedWithItsScrollBar) {
    const std::vector<COLORREF> before = Picture(TreeWindow());
    for (const char* const key : {"400", "20", "499", "top"}) {
        tree.Select(tree.Find(key));
        EXPECT_TRUE(IsWhollyDrawn(TreeWindow())) << key;
    }
    tree.Select(tree.Find("250"));
    EXPECT_NE(Picture(TreeWindow()), before);
}

TEST_F(Win32DrawingTest, AnItemThatIsAddedSelectedAndMarkedIsDrawnInOneStep) {
    tree.Select(tree.Find("top"));
    const TreeItem added = tree.Add(tree.Find("top"), "new", "new");
    tree.Select(added);
    EXPECT_EQ(IsWindowVisible(TreeWindow()), FALSE) << "not before all is done";
    tree.SetItalic(added, true, "edited");
    EXPECT_TRUE(IsWhollyDrawn(TreeWindow()));
    EXPECT_NE(IsWindowVisible(TreeWindow()), FALSE);
}

TEST_F(Win32DrawingTest, AScrollBarComesAndGoesWithTheItems) {
    tree.Clear();
    EXPECT_TRUE(IsWhollyDrawn(TreeWindow()));
    for (int item = 0; item < 500; ++item) {
        tree.Add(TreeItem::None, std::to_string(item), "item");
    }
    EXPECT_TRUE(IsWhollyDrawn(TreeWindow()));
    tree.Remove(1);
    EXPECT_TRUE(IsWhollyDrawn(TreeWindow()));
}

TEST_F(Win32DrawingTest, ThePaneIsDrawnWithItsMarginAndItsScrollBars) {
    const auto lines = [](int count) {
        std::string text;
        for (int line = 0; line < count; ++line) {
            text += "int a;\n";
        }
        return text;
    };
    for (const std::string& text : {lines(1), lines(2000), lines(2), lines(200), lines(500), lines(100)}) {
        pane.SetFuncBodyAvailable(false);
        pane.SetText("");
        pane.SetFuncBodyAvailable(true);
        pane.SetText(text);
        EXPECT_TRUE(IsWhollyDrawn(PaneWindow()));
    }
    pane.SetFuncBodyAvailable(false);
    EXPECT_TRUE(IsWhollyDrawn(PaneWindow()));
}

TEST_F(Win32DrawingTest, AMessageBoxIsNoReasonToWait) {
    pane.SetFocus(); // the tree's edge does not change with the box
    user.Settle();
    tree.Select(tree.Find("400"));
    ASSERT_EQ(IsWindowVisible(TreeWindow()), FALSE);
    user.WillPress(MsgResult::Ok);
    user.TheDesktop().MessageBoxes().Show("text", "caption", MsgButtons::Ok, MsgIcon::None);
    EXPECT_NE(IsWindowVisible(TreeWindow()), FALSE);
}

TEST_F(Win32DrawingTest, AControlThatIsPlacedOrHiddenIsWhereItShouldBe) {
    tree.Select(tree.Find("400"));
    tree.SetExtent({600, 900, 2400, 3000});
    EXPECT_TRUE(IsWhollyDrawn(TreeWindow()));
    const COLORREF around = GetSysColor(COLOR_BTNFACE);
    HDC frame = GetDC(user.Frame());
    EXPECT_EQ(GetPixel(frame, 10, 200), around) << "where the tree was";
    ReleaseDC(user.Frame(), frame);
    tree.Select(tree.Find("20"));
    tree.SetVisible(false);
    user.Settle();
    EXPECT_EQ(IsWindowVisible(TreeWindow()), FALSE);
}

} // namespace
} // namespace tessaly
