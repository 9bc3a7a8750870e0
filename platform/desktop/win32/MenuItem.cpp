#include "platform/desktop/win32/MenuItem.h"

#include "platform/desktop/win32/ControlIds.h"
#include "platform/desktop/win32/Raise.h"
#include "platform/system/win32/Text.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly::win32 {

MenuItem::MenuItem(HWND window, HMENU menu, int id, std::string_view name)
    : mWindow(window),
      mMenu(menu),
      mPlace(static_cast<UINT>(GetMenuItemCount(menu))),
      mId(id),
      mName(name),
      mCaption(name) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), ToWide(name).c_str());
}

void MenuItem::SetCaption(std::string_view caption) {
    mCaption = caption;
    std::wstring text = ToWide(caption);
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = text.data();
    SetInfo(info);
}

bool MenuItem::IsChecked() const {
    return (Info(MIIM_STATE).fState & MFS_CHECKED) != 0;
}

void MenuItem::SetChecked(bool checked) {
    CheckMenuItem(mMenu, mPlace, MF_BYPOSITION | static_cast<UINT>(checked ? MF_CHECKED : MF_UNCHECKED));
}

HMENU MenuItem::DropDown() {
    MENUITEMINFOW info = Info(MIIM_SUBMENU);
    if (info.hSubMenu == nullptr) {
        info.hSubMenu = CreatePopupMenu();
        SetInfo(info);
    }
    return info.hSubMenu;
}

HMENU MenuItem::DropDownThatIsThere() const {
    return Info(MIIM_SUBMENU).hSubMenu;
}

MENUITEMINFOW MenuItem::Info(UINT mask) const {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = mask;
    GetMenuItemInfoW(mMenu, mPlace, TRUE, &info);
    return info;
}

void MenuItem::SetInfo(const MENUITEMINFOW& info) {
    SetMenuItemInfoW(mMenu, mPlace, TRUE, &info);
    if (IsWindowVisible(mWindow)) {
        DrawMenuBar(mWindow);
    }
}

Menus::Menus(HWND window) : mWindow(window), mBar(CreateMenu()) {}

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

tessaly::MenuItem& Menus::Add(tessaly::MenuItem* parent, std::string_view name) {
    const bool isTaken =
        std::any_of(mItems.begin(), mItems.end(), [name](const auto& item) { return item->Name() == name; });
    if (isTaken) {
        throw std::invalid_argument("the name of the menu is taken");
    }
    HMENU menu = parent == nullptr ? mBar : static_cast<MenuItem*>(parent)->DropDown();
    const int id = ControlId::FirstMenu + static_cast<int>(mItems.size());
    mItems.push_back(std::make_unique<MenuItem>(mWindow, menu, id, name));
    if (IsWindowVisible(mWindow)) {
        DrawMenuBar(mWindow);
    }
    return *mItems.back();
}

void Menus::AddSeparator(tessaly::MenuItem& parent) {
    AppendMenuW(static_cast<MenuItem&>(parent).DropDown(), MF_SEPARATOR, 0, nullptr);
}

void Menus::Choose(int id) const {
    const auto place = static_cast<std::size_t>(id) - static_cast<std::size_t>(ControlId::FirstMenu);
    if (place < mItems.size() && mItems[place]->DropDownThatIsThere() == nullptr) {
        Raise(mItems[place]->onClick);
    }
}

std::vector<const MenuItem*> Menus::Items(const tessaly::MenuItem* menu) const {
    HMENU shown = menu == nullptr ? mBar : static_cast<const MenuItem*>(menu)->DropDownThatIsThere();
    std::vector<const MenuItem*> items;
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

} // namespace tessaly::win32
