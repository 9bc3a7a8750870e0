// What the user does with menus: by keys, as a menu that is open takes no other messages.
#include "platform/system/win32/Text.h"
#include "tests/contract/win32/Win32Driver.h"

#include <array>
#include <gtest/gtest.h>

namespace tessaly {

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
