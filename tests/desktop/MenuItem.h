// A menu in memory, and the user who chooses from it.
#pragma once

#include "platform/desktop/MenuItem.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class MemoryMenuItem final : public MenuItem {
public:
    MemoryMenuItem(MemoryFaults& faults, MemoryFocus& focus, std::string_view name)
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
    friend class MemoryMenus;

    MemoryFaults& mFaults;
    MemoryFocus& mFocus;
    std::string mName;
    std::string mCaption;
    bool mIsChecked = false;
    std::vector<std::string> mDropDown;
};

// All menus of a window.
class MemoryMenus {
public:
    MemoryMenus(MemoryFaults& faults, MemoryFocus& focus) : mFaults(faults), mFocus(focus) {}

    // As Desktop::AddMenu and Desktop::AddMenuSeparator.
    MenuItem& Add(MenuItem* parent, std::string_view name);
    void AddSeparator(MenuItem& parent);

    // The menu or item of that name. Throws ImpossibleAction when there is none.
    MemoryMenuItem& operator[](std::string_view name);

    // The names of what stands in the menu bar.
    const std::vector<std::string>& Bar() const { return mBar; }

private:
    MemoryMenuItem* Find(std::string_view name);

    MemoryFaults& mFaults;
    MemoryFocus& mFocus;
    std::vector<std::unique_ptr<MemoryMenuItem>> mItems;
    std::vector<std::string> mBar;
};

} // namespace tessaly
