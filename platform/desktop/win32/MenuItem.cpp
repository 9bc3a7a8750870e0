#include "platform/desktop/win32/MenuItem.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Raise.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {

Win32MenuItem::Win32MenuItem(HWND window, HMENU menu, int id, std::string_view name)
    : mWindow(window),
      mMenu(menu),
      mPlace(static_cast<UINT>(GetMenuItemCount(menu))),
      mId(id),
      mName(name),
      mCaption(name) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), ToWide(name).c_str());
}

void Win32MenuItem::SetCaption(std::string_view caption) {
    mCaption = caption;
    std::wstring text = ToWide(caption);
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = text.data();
    SetInfo(info);
}

bool Win32MenuItem::IsChecked() const {
    return (Info(MIIM_STATE).fState & MFS_CHECKED) != 0;
}

void Win32MenuItem::SetChecked(bool checked) {
    CheckMenuItem(mMenu, mPlace, MF_BYPOSITION | static_cast<UINT>(checked ? MF_CHECKED : MF_UNCHECKED));
}

HMENU Win32MenuItem::DropDown() {
    MENUITEMINFOW info = Info(MIIM_SUBMENU);
    if (info.hSubMenu == nullptr) {
        info.hSubMenu = CreatePopupMenu();
        SetInfo(info);
    }
    return info.hSubMenu;
}

HMENU Win32MenuItem::DropDownThatIsThere() const {
    return Info(MIIM_SUBMENU).hSubMenu;
}

MENUITEMINFOW Win32MenuItem::Info(UINT mask) const {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = mask;
    GetMenuItemInfoW(mMenu, mPlace, TRUE, &info);
    return info;
}

void Win32MenuItem::SetInfo(const MENUITEMINFOW& info) {
    SetMenuItemInfoW(mMenu, mPlace, TRUE, &info);
    if (IsWindowVisible(mWindow)) {
        DrawMenuBar(mWindow);
    }
}

Win32Menus::Win32Menus(HWND window) : mWindow(window), mBar(CreateMenu()) {}

Win32Menus::~Win32Menus() {
    if (!mIsAttached) {
        DestroyMenu(mBar);
    }
}

void Win32Menus::Attach() {
    if (!mIsAttached) {
        mIsAttached = SetMenu(mWindow, mBar) != 0;
    }
}

MenuItem& Win32Menus::Add(MenuItem* parent, std::string_view name) {
    const bool isTaken =
        std::any_of(mItems.begin(), mItems.end(), [name](const auto& item) { return item->Name() == name; });
    if (isTaken) {
        throw std::invalid_argument("the name of the menu is taken");
    }
    HMENU menu = parent == nullptr ? mBar : static_cast<Win32MenuItem*>(parent)->DropDown();
    const int id = ControlId::FirstMenu + static_cast<int>(mItems.size());
    mItems.push_back(std::make_unique<Win32MenuItem>(mWindow, menu, id, name));
    if (IsWindowVisible(mWindow)) {
        DrawMenuBar(mWindow);
    }
    return *mItems.back();
}

void Win32Menus::AddSeparator(MenuItem& parent) {
    AppendMenuW(static_cast<Win32MenuItem&>(parent).DropDown(), MF_SEPARATOR, 0, nullptr);
}

void Win32Menus::Choose(int id) const {
    const auto place = static_cast<std::size_t>(id) - static_cast<std::size_t>(ControlId::FirstMenu);
    if (place < mItems.size() && mItems[place]->DropDownThatIsThere() == nullptr) {
        Raise(mItems[place]->onClick);
    }
}

std::vector<const Win32MenuItem*> Win32Menus::Items(const MenuItem* menu) const {
    HMENU shown = menu == nullptr ? mBar : static_cast<const Win32MenuItem*>(menu)->DropDownThatIsThere();
    std::vector<const Win32MenuItem*> items;
    for (int place = 0; place < GetMenuItemCount(shown); ++place) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_ID | MIIM_FTYPE;
        GetMenuItemInfoW(shown, static_cast<UINT>(place), TRUE, &info);
        const bool isLine = (info.fType & MFT_SEPARATOR) != 0;
        items.push_back(isLine ? nullptr : mItems.at(info.wID - static_cast<UINT>(ControlId::FirstMenu)).get());
    }
    return items;
}

} // namespace tessaly
