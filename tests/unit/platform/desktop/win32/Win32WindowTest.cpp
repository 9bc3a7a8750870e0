// The main window beyond what every desktop's does: minimising, the end of the session, other resolutions, names.
#include "platform/desktop/win32/ControlIds.h"
#include "platform/system/win32/Text.h"
#include "tests/contract/win32/Win32Driver.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

class Win32WindowTest : public testing::Test {
protected:
    Desktop& TheDesktop() { return user.TheDesktop(); }
    Window& MainWindow() { return TheDesktop().MainWindow(); }

    RECT PlaceOf(int id) const {
        RECT rect = {};
        GetWindowRect(user.Control(id), &rect);
        MapWindowPoints(nullptr, user.Frame(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    // As Windows sends it when the window comes to a monitor of this resolution, for a frame of this size.
    void MoveToDpi(int dpi, int width, int height) {
        const RECT suggested = {0, 0, width, height};
        SendMessageW(user.Frame(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
        user.Settle();
    }

    Win32Driver user{{}};
};

TEST_F(Win32WindowTest, MinimisingAndRestoringIsNoChangeOfTheSize) {
    MainWindow().Show();
    user.Resize(9000, 6000);
    int resizes = 0;
    MainWindow().onResize = [&] { ++resizes; };
    ShowWindow(user.Frame(), SW_MINIMIZE);
    user.Settle();
    ASSERT_NE(IsIconic(user.Frame()), 0);
    EXPECT_EQ(MainWindow().Width(), 9000);
    EXPECT_EQ(MainWindow().Height(), 6000);
    ShowWindow(user.Frame(), SW_RESTORE);
    user.Settle();
    EXPECT_EQ(resizes, 0);
    EXPECT_EQ(MainWindow().Width(), 9000);
}

TEST_F(Win32WindowTest, TheEndOfTheSessionIsAgreedToWhenTheWindowHasGone) {
    int unloads = 0;
    MainWindow().Show();
    MainWindow().onUnload = [&] { ++unloads; };
    EXPECT_NE(SendMessageW(user.Frame(), WM_QUERYENDSESSION, 0, 0), 0);
    EXPECT_EQ(unloads, 1);
    EXPECT_TRUE(user.HasEnded());
}

TEST_F(Win32WindowTest, TheSessionDoesNotEndWhileTheWindowIsStillClosing) {
    MainWindow().Show();
    LRESULT agrees = TRUE;
    MainWindow().onUnload = [&] { agrees = SendMessageW(user.Frame(), WM_QUERYENDSESSION, 0, 0); };
    MainWindow().Unload();
    EXPECT_EQ(agrees, FALSE);
}

TEST_F(Win32WindowTest, ASessionThatAnotherProgramKeepsUpLeavesTheWindow) {
    MainWindow().Show();
    SendMessageW(user.Frame(), WM_ENDSESSION, FALSE, 0);
    EXPECT_FALSE(user.HasEnded());
}

TEST_F(Win32WindowTest, TheTextIsSafeBeforeAnyoneAnswersWhetherTheSessionMayEnd) {
    MainWindow().Show();
    std::vector<std::string> events;
    MainWindow().onSuspend = [&] { events.emplace_back("suspend"); };
    MainWindow().onUnload = [&] {
        events.emplace_back("unload");
        SendMessageW(user.Frame(), WM_QUERYENDSESSION, 0, 0); // while the user is asked
    };
    SendMessageW(user.Frame(), WM_QUERYENDSESSION, 0, 0);
    EXPECT_EQ(events, (std::vector<std::string>{"suspend", "unload", "suspend"}));
}

TEST_F(Win32WindowTest, TheTextIsSafeBeforeTheSessionEndsWithoutAsking) {
    MainWindow().Show();
    std::vector<std::string> events;
    MainWindow().onSuspend = [&] { events.emplace_back("suspend"); };
    MainWindow().onUnload = [&] { events.emplace_back("unload"); };
    SendMessageW(user.Frame(), WM_ENDSESSION, TRUE, 0);
    user.Settle();
    EXPECT_EQ(events, (std::vector<std::string>{"suspend", "unload"})) << "and not again when the window goes";
}

TEST_F(Win32WindowTest, TheWindowIsIdleOnceBehindAllThatWaits) {
    MainWindow().Show();
    user.Settle();
    std::vector<std::string> events;
    MainWindow().onIdle = [&] {
        const bool isPainted = GetUpdateRect(user.Control(win32::ControlId::FuncBody), nullptr, FALSE) == 0;
        events.push_back((isPainted ? "idle with " : "not painted with ") + user.PaneShown());
    };
    SetFocus(user.Control(win32::ControlId::FuncBody));
    for (const wchar_t unit : {L'a', L'b'}) {
        PostMessageW(user.Control(win32::ControlId::FuncBody), WM_CHAR, unit, 1);
    }
    user.Settle();
    EXPECT_EQ(events, std::vector<std::string>{"idle with ab"});
}

TEST_F(Win32WindowTest, AnotherResolutionScalesTheControlsAndIsNoChangeOfTheSize) {
    MainWindow().Show();
    user.Resize(9000, 6000);
    TheDesktop().FuncBody().SetExtent({3000, 900, 4500, 3000});
    const RECT before = PlaceOf(win32::ControlId::FuncBody);
    const Extent extent = TheDesktop().FuncBody().GetExtent();
    int resizes = 0;
    MainWindow().onResize = [&] { ++resizes; };
    MoveToDpi(192, 1200, 800);
    const RECT after = PlaceOf(win32::ControlId::FuncBody);
    EXPECT_EQ(after.left, 2 * before.left);
    EXPECT_EQ(after.bottom, 2 * before.bottom);
    EXPECT_EQ(TheDesktop().FuncBody().GetExtent(), extent);
    EXPECT_EQ(MainWindow().Width(), 9000);
    EXPECT_EQ(resizes, 0);
    MoveToDpi(96, 600, 400);
    EXPECT_EQ(PlaceOf(win32::ControlId::FuncBody).right, before.right);
}

TEST_F(Win32WindowTest, AnotherResolutionHasLargerTextAndPictures) {
    MainWindow().Show();
    TheDesktop().FuncBody().SetText("a\nb");
    TheDesktop().VornToolBar().AddButton(1, "Add");
    const auto lineHeight = [this] {
        POINTL first = {};
        POINTL second = {};
        const HWND pane = user.Control(win32::ControlId::FuncBody);
        SendMessageW(pane, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&first), 0);
        SendMessageW(pane, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&second), 2);
        return second.y - first.y;
    };
    const auto pictureSize = [this] {
        int width = 0;
        int height = 0;
        const HWND bar = user.Control(win32::ControlId::VornToolBar);
        ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(SendMessageW(bar, TB_GETIMAGELIST, 0, 0)), &width, &height);
        return width;
    };
    const LONG before = lineHeight();
    ASSERT_EQ(pictureSize(), 16);
    MoveToDpi(192, 1200, 800);
    EXPECT_NEAR(lineHeight(), 2 * before, 2);
    EXPECT_EQ(pictureSize(), 32);
}

TEST_F(Win32WindowTest, AFileThatIsDroppedWhileADialogIsShownIsLeftAlone) {
    MainWindow().Show();
    bool isDropped = false;
    MainWindow().onFileDropped = [&](const std::string&) { isDropped = true; };
    EnableWindow(user.Frame(), FALSE);
    user.DropFile(user.FilePath("a.PSF"));
    EXPECT_FALSE(isDropped);
    EnableWindow(user.Frame(), TRUE);
}

TEST_F(Win32WindowTest, TheMenuBarHasItsRoomAboveTheControls) {
    TheDesktop().AddMenu(nullptr, "mnuFile").SetCaption("&File");
    MainWindow().Show();
    user.Settle();
    MENUBARINFO bar = {};
    bar.cbSize = sizeof bar;
    ASSERT_NE(GetMenuBarInfo(user.Frame(), OBJID_MENU, 1, &bar), 0);
    POINT inside = {};
    ClientToScreen(user.Frame(), &inside);
    EXPECT_GT(bar.rcBar.bottom, bar.rcBar.top);
    EXPECT_LE(bar.rcBar.bottom, inside.y);
}

TEST_F(Win32WindowTest, EveryControlStandsBehindTheLabelThatNamesIt) {
    const auto before = [this](int id) { return GetDlgCtrlID(GetWindow(user.Control(id), GW_HWNDPREV)); };
    EXPECT_EQ(before(win32::ControlId::CodeTree), win32::ControlId::LblcodeTreeViewer);
    EXPECT_EQ(before(win32::ControlId::FuncBody), win32::ControlId::FuncLabel);
}

TEST_F(Win32WindowTest, TheSelectedItemIsSeenAlsoWithoutTheFocus) {
    MainWindow().Show();
    TreeView& tree = TheDesktop().CodeTree();
    tree.Select(tree.Add(TreeItem::None, "a", "Selected"));
    tree.Add(TreeItem::None, "b", "Not selected");
    const auto brightness = [this](TVITEMW item, UINT next) {
        const HWND control = user.Control(win32::ControlId::CodeTree);
        item.hItem = reinterpret_cast<HTREEITEM>(SendMessageW(control, TVM_GETNEXTITEM, next, 0));
        user.Settle();
        UpdateWindow(control);
        RECT place = {};
        std::memcpy(&place, &item.hItem, sizeof item.hItem);
        SendMessageW(control, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place));
        HDC screen = GetDC(control);
        const COLORREF colour = GetPixel(screen, place.left + 1, place.bottom - 2);
        ReleaseDC(control, screen);
        return GetRValue(colour) + GetGValue(colour) + GetBValue(colour);
    };
    TheDesktop().FuncBody().SetFocus();
    const int selected = brightness({}, TVGN_CARET);
    tree.Select(tree.Find("b"));
    EXPECT_GT(std::abs(selected - brightness({}, TVGN_ROOT)), 90);
}

TEST_F(Win32WindowTest, TheEdgeTellsWhichControlHasTheKeyboard) {
    MainWindow().Show();
    user.Settle();
    const auto edge = [this](int id) {
        const HWND control = user.Control(id);
        user.Settle();
        UpdateWindow(control);
        HDC screen = GetWindowDC(control);
        const COLORREF colour = GetPixel(screen, 1, 40);
        ReleaseDC(control, screen);
        return colour;
    };
    TheDesktop().CodeTree().SetFocus();
    EXPECT_EQ(edge(win32::ControlId::CodeTree), GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_NE(edge(win32::ControlId::FuncBody), GetSysColor(COLOR_HIGHLIGHT));
    TheDesktop().FuncBody().SetFocus();
    EXPECT_NE(edge(win32::ControlId::CodeTree), GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(edge(win32::ControlId::FuncBody), GetSysColor(COLOR_HIGHLIGHT));
}

TEST_F(Win32WindowTest, TheTabKeyWithShiftGoesTheOtherWay) {
    MainWindow().Show();
    TheDesktop().CodeTree().SetTabStop(true);
    TheDesktop().FuncBody().SetTabStop(false);
    TheDesktop().VornToolBar().SetTabStop(true);
    TheDesktop().CodeTree().SetFocus();
    user.PressKey(VK_TAB, 0);
    EXPECT_EQ(GetFocus(), user.Control(win32::ControlId::VornToolBar));
    user.PressKey(VK_TAB, 1);
    EXPECT_EQ(GetFocus(), user.Control(win32::ControlId::CodeTree));
}

} // namespace
} // namespace tessaly
