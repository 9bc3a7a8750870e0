// What screen readers are told. Wine has no numbers of items: they are played here.
#include "tests/contract/win32/SpokenService.h"
#include "tests/contract/win32/Win32Driver.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

constexpr DWORD NumberOfItem = 7;

WNDPROC treeProcedure = nullptr;

LRESULT CALLBACK AnswerNumber(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == TVM_MAPHTREEITEMTOACCID ? static_cast<LRESULT>(NumberOfItem)
                                              : CallWindowProcW(treeProcedure, window, message, wParam, lParam);
}

TEST(SpokenTest, TheServiceOfTheSystemIsToldOfMarks) {
    const SpokenService service;
    Win32Driver user{Launch{}};
    TreeView& tree = user.TheDesktop().CodeTree();
    HWND control = user.Control(win32::ControlId::CodeTree);
    treeProcedure =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AnswerNumber)));
    const TreeItem item = tree.Add(TreeItem::None, "a", "A");
    tree.SetMark(item, Mark::Error, "2 \xC3\xA4rrors");
    tree.SetMark(item, Mark::None, "");
    SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(treeProcedure));
    EXPECT_EQ(service.Told(), (std::vector<ToldToReader>{{control, NumberOfItem, false, L"2 \u00E4rrors"},
                                                         {control, NumberOfItem, false, L"nothing"}}));
}

TEST(SpokenTest, ThePaneHasTheNameOfItsLabelAndNotItsText) {
    const SpokenService service;
    Win32Driver user{Launch{}};
    user.TheDesktop().FuncLabel().SetCaption("Funktionen");
    user.TheDesktop().FuncBody().SetText("int a;");
    HWND pane = user.Control(win32::ControlId::FuncBody);
    SendMessageW(pane, WM_GETOBJECT, 0, OBJID_CLIENT); // as the library of screen readers asks
    ASSERT_FALSE(service.Told().empty());
    EXPECT_EQ(service.Told().front(), (ToldToReader{pane, CHILDID_SELF, true, L"Funktionen"}));
}

} // namespace
} // namespace tessaly
