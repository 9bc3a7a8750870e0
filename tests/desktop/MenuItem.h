// The menus in memory, and the user who chooses from them.
#pragma once

#include "platform/desktop/MenuItem.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::memory {

class Menus;

class MenuItem final : public tessaly::MenuItem {
public:
    MenuItem(Faults& faults, Menus& menus, std::size_t number, std::string_view name)
        : tessaly::MenuItem(name),
          mFaults(faults),
          mMenus(menus),
          mNumber(number) {}

    void SetChecked(bool checked) override;
    bool IsChecked() const { return mIsChecked; }

    // The user chooses the item. Throws ImpossibleAction when it is a menu with a drop-down.
    void Choose();

    // The names of what stands in the drop-down, "-" for a line.
    std::vector<std::string> dropDown;

private:
    void ShowCaption(std::string_view caption) override;

    Faults& mFaults;
    Menus& mMenus;
    std::size_t mNumber;
    bool mIsChecked = false;
};

// All menus of a window.
class Menus final : public tessaly::Menus {
public:
    Menus(Faults& faults, Focus& focus) : tessaly::Menus(focus.controls.focus), mFaults(faults), mFocus(focus) {}

    // The menu or item of that name. Throws ImpossibleAction when there is none.
    MenuItem& operator[](std::string_view name);

    // The names of what stands in the menu bar.
    const std::vector<std::string>& Bar() const { return mBar; }

    // What the user reaches now.
    void CheckReachable() const { mFocus.CheckReachable("the choice of a menu item"); }

private:
    std::unique_ptr<tessaly::MenuItem> Make(tessaly::MenuItem* parent, std::string_view name) override;

    Faults& mFaults;
    Focus& mFocus;
    std::vector<std::string> mBar;
};

} // namespace tessaly::memory
