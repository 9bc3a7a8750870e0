// What the user does with menus: by keys, as a menu that is open takes no other messages.
#include "platform/desktop/win32/Screen.h"
#include "platform/system/win32/Text.h"
#include "tests/contract/win32/Win32Driver.h"

#include <algorithm>
#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <utility>

namespace tessaly {

namespace {

// What is done with the menu that opens next.
std::function<void(HMENU menu)>& OnMenu() {
    static std::function<void(HMENU menu)> onMenu;
    return onMenu;
}

LRESULT CALLBACK LookForMenu(int code, WPARAM wParam, LPARAM lParam) {
    const auto& sent = *std::bit_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && sent.message == WM_INITMENUPOPUP) {
        if (const auto onMenu = std::exchange(OnMenu(), nullptr)) {
            onMenu(std::bit_cast<HMENU>(sent.wParam));
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

void Win32Driver::UseMenuOfItem(TreeItem item, std::optional<std::size_t> row) {
    const RECT text = PlaceOfItem(item);
    const LPARAM place = MAKELPARAM(text.left + 3, (text.top + text.bottom) / 2);
    UseMenu(row, [&] {
        Post(Tree(), WM_RBUTTONDOWN, MK_RBUTTON, place);
        Post(Tree(), WM_RBUTTONUP, 0, place);
    });
}

void Win32Driver::UseMenuOfPane(std::size_t position, std::optional<std::size_t> row) {
    const POINT point = PlaceInPane(position);
    const LPARAM place = MAKELPARAM(point.x, point.y);
    UseMenu(row, [&] {
        Post(Control(win32::ControlId::FuncBody), WM_RBUTTONDOWN, MK_RBUTTON, place);
        Post(Control(win32::ControlId::FuncBody), WM_RBUTTONUP, 0, place);
    });
}

void Win32Driver::UseMenuByKey(int keyCode, int shift, std::optional<std::size_t> row) {
    UseMenu(row, [&] { PressKey(keyCode, shift); });
}

// The keys for the menu are sent when it is about to open.
void Win32Driver::UseMenu(std::optional<std::size_t> row, const std::function<void()>& ask) {
    Settle();
    mMenuSeen.clear();
    OnMenu() = [this, row](HMENU menu) {
        std::ptrdiff_t keys = 1; // they pass over a line
        for (int number = 0; number < GetMenuItemCount(menu); ++number) {
            const UINT state = GetMenuState(menu, static_cast<UINT>(number), MF_BYPOSITION);
            const bool isLine = (state & MF_SEPARATOR) != 0;
            const std::string text = MenuText(menu, number);
            const std::size_t tab = std::min(text.find('\t'), text.size());
            mMenuSeen.push_back(isLine ? "-"
                                       : RowShown(text.substr(0, tab), text.substr(std::min(tab + 1, text.size())),
                                                  (state & (MF_GRAYED | MF_DISABLED)) == 0));
            keys += !isLine && row && static_cast<std::size_t>(number) < *row ? 1 : 0;
        }
        PostMenuKey(VK_DOWN, row ? keys : 0);
        PostMenuKey(row ? VK_RETURN : VK_ESCAPE);
    };
    HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, LookForMenu, nullptr, GetCurrentThreadId());
    ask();
    Settle();
    UnhookWindowsHookEx(hook);
    OnMenu() = nullptr;
}

POINT Win32Driver::PlaceInPane(std::size_t position) const {
    POINTL place = {};
    const auto character = static_cast<LPARAM>(win32::ToWide(PaneShown().substr(0, position)).size());
    SendMessageW(Control(win32::ControlId::FuncBody), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), character);
    return {place.x + 1, place.y + 3};
}

void Win32Driver::CtrlClickPane(std::size_t position) {
    Settle();
    const POINT point = PlaceInPane(position);
    const LPARAM place = MAKELPARAM(point.x, point.y);
    Post(Control(win32::ControlId::FuncBody), WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, place);
    Post(Control(win32::ControlId::FuncBody), WM_LBUTTONUP, MK_CONTROL, place);
    Settle();
}

void Win32Driver::TurnCtrlWheel(int delta) {
    Settle();
    Post(Control(win32::ControlId::FuncBody), WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, delta));
    Settle();
}

float Win32Driver::LeftOf(std::size_t position) {
    Settle();
    return win32::ToTwips(PlaceInPane(position).x, win32::WindowDpi(mFrame));
}

void Win32Driver::ChooseMenu(MenuItem& item) {
    const MenuPlace place = PlaceOf(item);
    ASSERT_TRUE(place.drop != nullptr);
    int keys = 0; // they pass over a line
    for (int number = 0; number < place.number; ++number) {
        keys += (GetMenuState(place.drop, static_cast<UINT>(number), MF_BYPOSITION) & MF_SEPARATOR) == 0 ? 1 : 0;
    }
    PostOpening(place.inBar);
    PostMenuKey(VK_DOWN, keys);
    PostMenuKey(VK_RETURN);
    Settle();
}

void Win32Driver::OpenMenuAndLeave(MenuItem& menu) {
    PostOpening(PlaceOf(menu).inBar);
    PostMenuKey(VK_ESCAPE, 2); // the drop-down, then the bar
    Settle();
}

// The window has its menus when it is shown. They are found by what they show.
Win32Driver::MenuPlace Win32Driver::PlaceOf(const MenuItem& item) const {
    mDesktop->MainWindow().Show();
    HMENU bar = GetMenu(mFrame);
    for (int menu = 0; menu < GetMenuItemCount(bar); ++menu) {
        HMENU drop = GetSubMenu(bar, menu);
        if (MenuText(bar, menu) == item.Caption()) {
            return {menu, drop, bar, menu};
        }
        for (int number = 0; number < GetMenuItemCount(drop); ++number) {
            if (MenuText(drop, number) == item.Caption()) {
                return {menu, drop, drop, number};
            }
        }
    }
    ADD_FAILURE() << "no menu shows " << item.Caption();
    return {};
}

std::string Win32Driver::MenuText(HMENU menu, int number) {
    std::array<wchar_t, 100> text = {};
    GetMenuStringW(menu, static_cast<UINT>(number), text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
    return win32::ToUtf8(text.data());
}

std::string Win32Driver::MenuCaption(MenuItem& item) const {
    const MenuPlace place = PlaceOf(item);
    return MenuText(place.in, place.number);
}

bool Win32Driver::IsChecked(MenuItem& item) const {
    const MenuPlace place = PlaceOf(item);
    return (GetMenuState(place.in, static_cast<UINT>(place.number), MF_BYPOSITION) & MF_CHECKED) != 0;
}

// A menu has a loop of its own, so its keys must be there before it begins.
void Win32Driver::PostOpening(std::ptrdiff_t menu) {
    Post(mFrame, WM_SYSCOMMAND, SC_KEYMENU);
    PostMenuKey(VK_RIGHT, menu);
    PostMenuKey(VK_DOWN);
}

void Win32Driver::PostMenuKey(WPARAM key, std::ptrdiff_t times) {
    for (std::ptrdiff_t time = 0; time < times; ++time) {
        Post(mFrame, WM_KEYDOWN, key, 1);
        Post(mFrame, WM_KEYUP, key, Released);
    }
}

std::vector<std::string> Win32Driver::MenusIn(MenuItem* menu) const {
    mDesktop->MainWindow().Show();
    HMENU shown = menu == nullptr ? GetMenu(mFrame) : PlaceOf(*menu).drop;
    std::vector<std::string> texts;
    for (int number = 0; number < GetMenuItemCount(shown); ++number) {
        const bool isLine = (GetMenuState(shown, static_cast<UINT>(number), MF_BYPOSITION) & MF_SEPARATOR) != 0;
        texts.push_back(isLine ? "-" : MenuText(shown, number));
    }
    return texts;
}

} // namespace tessaly
