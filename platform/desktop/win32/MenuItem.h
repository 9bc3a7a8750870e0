// The menus of the main window, and the one that comes up where the user asks for one. Windows shows that in a loop of
// its own.
#pragma once

#include "platform/desktop/MenuItem.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/Headers.h"

#include <memory>
#include <string_view>
#include <vector>

namespace tessaly::win32 {

class MenuItem final : public tessaly::MenuItem {
public:
    // Stands at the end of `menu`.
    MenuItem(HWND window, HMENU menu, int id, std::string_view name);

    void SetChecked(bool checked) override;

    // The drop-down; made when it is asked for the first time.
    HMENU DropDown();

private:
    void ShowCaption(std::string_view caption) override;
    void SetInfo(const MENUITEMINFOW& info);

    HWND mWindow;
    HMENU mMenu;
    UINT mPlace; // in the menu; items never go
};

class Menus final : public tessaly::Menus {
public:
    // Makes the menu bar of `window`, which gets it when it is shown.
    Menus(HWND window, FocusEvents& focus) : tessaly::Menus(focus), mWindow(window), mBar(CreateMenu()) {}
    Menus(const Menus&) = delete;
    Menus& operator=(const Menus&) = delete;
    ~Menus() override;

    // The window owns the bar from now on.
    void Attach();

private:
    std::unique_ptr<tessaly::MenuItem> Make(tessaly::MenuItem* parent, std::string_view name) override;

    HWND mWindow;
    HMENU mBar;
    bool mIsAttached = false;
};

class PopupMenu final : public tessaly::PopupMenu {
public:
    explicit PopupMenu(Parent& frame) : tessaly::PopupMenu(frame.order.focus), mFrame(frame) {}

private:
    void ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) override;

    Parent& mFrame;
};

} // namespace tessaly::win32
