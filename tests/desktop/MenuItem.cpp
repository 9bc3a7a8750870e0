// All items are MemoryMenuItems: nobody else makes any for this desktop.
#include "tests/desktop/MenuItem.h"

#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {

std::string MemoryMenuItem::Name() const {
    mFaults.Count();
    return mName;
}

std::string MemoryMenuItem::Caption() const {
    mFaults.Count();
    return mCaption;
}

void MemoryMenuItem::SetCaption(std::string_view caption) {
    mFaults.Count();
    mCaption = caption;
}

bool MemoryMenuItem::IsChecked() const {
    mFaults.Count();
    return mIsChecked;
}

void MemoryMenuItem::SetChecked(bool checked) {
    mFaults.Count();
    mIsChecked = checked;
}

void MemoryMenuItem::Choose() {
    mFocus.CheckReachable("the choice of a menu item");
    if (!mDropDown.empty()) {
        throw ImpossibleAction("the choice of the menu \"" + mName + "\", which only opens its drop-down");
    }
    const FocusEvents::Command command(mFocus.events, FocusEvents::Keyboard::IsTaken);
    if (onClick) {
        onClick();
    }
}

MenuItem& MemoryMenus::Add(MenuItem* parent, std::string_view name) {
    mFaults.Count();
    if (Find(name) != nullptr) {
        throw std::invalid_argument("the menu name is taken");
    }
    mItems.push_back(std::make_unique<MemoryMenuItem>(mFaults, mFocus, name));
    (parent == nullptr ? mBar : static_cast<MemoryMenuItem*>(parent)->mDropDown).emplace_back(name);
    return *mItems.back();
}

void MemoryMenus::AddSeparator(MenuItem& parent) {
    mFaults.Count();
    static_cast<MemoryMenuItem&>(parent).mDropDown.emplace_back("-");
}

MemoryMenuItem& MemoryMenus::operator[](std::string_view name) {
    MemoryMenuItem* const item = Find(name);
    if (item == nullptr) {
        throw ImpossibleAction("there is no menu \"" + std::string(name) + "\"");
    }
    return *item;
}

MemoryMenuItem* MemoryMenus::Find(std::string_view name) {
    const auto found =
        std::find_if(mItems.begin(), mItems.end(), [name](const auto& item) { return item->mName == name; });
    return found == mItems.end() ? nullptr : found->get();
}

} // namespace tessaly
