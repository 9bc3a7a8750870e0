// All items are win32::MenuItem: nobody else makes any for this desktop.
#include "platform/desktop/win32/MenuItem.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/system/win32/Text.h"

namespace tessaly::win32 {

MenuItem::MenuItem(HWND window, HMENU menu, int id, std::string_view name)
    : tessaly::MenuItem(name),
      mWindow(window),
      mMenu(menu),
      mPlace(static_cast<UINT>(GetMenuItemCount(menu))) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), ToWide(name).c_str());
}

void MenuItem::ShowCaption(std::string_view caption) {
    std::wstring text = ToWide(caption);
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = text.data();
    SetInfo(info);
}

void MenuItem::SetChecked(bool checked) {
    CheckMenuItem(mMenu, mPlace, MF_BYPOSITION | static_cast<UINT>(checked ? MF_CHECKED : MF_UNCHECKED));
}

HMENU MenuItem::DropDown() {
    HMENU there = GetSubMenu(mMenu, static_cast<int>(mPlace));
    if (there == nullptr) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_SUBMENU;
        info.hSubMenu = there = CreatePopupMenu();
        SetInfo(info);
    }
    return there;
}

void MenuItem::SetInfo(const MENUITEMINFOW& info) {
    SetMenuItemInfoW(mMenu, mPlace, TRUE, &info);
    if (IsWindowVisible(mWindow)) {
        DrawMenuBar(mWindow);
    }
}

Menus::~Menus() {
    if (!mIsAttached) {
        DestroyMenu(mBar);
    }
}

void Menus::Attach() {
    if (!mIsAttached) {
        mIsAttached = SetMenu(mWindow, mBar) != 0;
    }
}

std::unique_ptr<tessaly::MenuItem> Menus::Make(tessaly::MenuItem* parent, std::string_view name) {
    HMENU menu = parent == nullptr ? mBar : static_cast<MenuItem*>(parent)->DropDown();
    if (name.empty()) {
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        return nullptr;
    }
    const int id = ControlId::FirstMenu + static_cast<int>(mItems.size());
    auto item = std::make_unique<MenuItem>(mWindow, menu, id, name);
    if (IsWindowVisible(mWindow)) {
        DrawMenuBar(mWindow);
    }
    return item;
}

// The window is told that the keyboard goes to a menu and comes back. The ids of the rows count from 1.
void PopupMenu::ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) {
    const Owner<HMENU, &DestroyMenu> menu(CreatePopupMenu());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string keys = rows[row].keys.empty() ? "" : "\t" + rows[row].keys;
        const UINT look = rows[row].text.empty() ? MF_SEPARATOR : rows[row].isEnabled ? MF_STRING : MF_GRAYED;
        AppendMenuW(menu.get(), look, row + 1, ToWide(rows[row].text + keys).c_str());
    }
    const BOOL chosen =
        TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, mFrame.Handle(), nullptr);
    if (chosen > 0) {
        TellChoice(static_cast<std::size_t>(chosen) - 1);
    }
}

} // namespace tessaly::win32
