// A menu in memory, and the user who chooses from it.
#pragma once

#include "platform/desktop/MenuItem.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::memory {

class MenuItem final : public tessaly::MenuItem {
public:
    MenuItem(Faults& faults, Focus& focus, std::string_view name)
        : mFaults(faults),
          mFocus(focus),
          mName(name),
          mCaption(name) {}

    std::string Name() const override;
    std::string Caption() const override;
    void SetCaption(std::string_view caption) override;
    bool IsChecked() const override;
    void SetChecked(bool checked) override;

    // The user chooses the item. Throws ImpossibleAction when it is a menu with a drop-down.
    void Choose();

    // The names of what stands in the drop-down, "-" for a line.
    const std::vector<std::string>& DropDown() const { return mDropDown; }

private:
    friend class Menus;

    Faults& mFaults;
    Focus& mFocus;
    std::string mName;
    std::string mCaption;
    bool mIsChecked = false;
    std::vector<std::string> mDropDown;
};

// All menus of a window.
class Menus {
public:
    Menus(Faults& faults, Focus& focus) : mFaults(faults), mFocus(focus) {}

    // As Desktop::AddMenu and Desktop::AddMenuSeparator.
    tessaly::MenuItem& Add(tessaly::MenuItem* parent, std::string_view name);
    void AddSeparator(tessaly::MenuItem& parent);

    // The menu or item of that name. Throws ImpossibleAction when there is none.
    MenuItem& operator[](std::string_view name);

    // The names of what stands in the menu bar.
    const std::vector<std::string>& Bar() const { return mBar; }

private:
    MenuItem* Find(std::string_view name);

    Faults& mFaults;
    Focus& mFocus;
    std::vector<std::unique_ptr<MenuItem>> mItems;
    std::vector<std::string> mBar;
};

} // namespace tessaly::memory
