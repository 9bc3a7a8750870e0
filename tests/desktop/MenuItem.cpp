// All items are memory::MenuItem: nobody else makes any for this desktop.
#include "tests/desktop/MenuItem.h"

#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly::memory {

std::string MenuItem::Name() const {
    mFaults.Count();
    return mName;
}

std::string MenuItem::Caption() const {
    mFaults.Count();
    return mCaption;
}

void MenuItem::SetCaption(std::string_view caption) {
    mFaults.Count();
    mCaption = caption;
}

bool MenuItem::IsChecked() const {
    mFaults.Count();
    return mIsChecked;
}

void MenuItem::SetChecked(bool checked) {
    mFaults.Count();
    mIsChecked = checked;
}

void MenuItem::Choose() {
    mFocus.CheckReachable("the choice of a menu item");
    if (!mDropDown.empty()) {
        throw ImpossibleAction("the choice of the menu \"" + mName + "\", which only opens its drop-down");
    }
    const FocusEvents::Command command(mFocus.events, FocusEvents::Keyboard::IsTaken);
    if (onClick) {
        onClick();
    }
}

tessaly::MenuItem& Menus::Add(tessaly::MenuItem* parent, std::string_view name) {
    mFaults.Count();
    if (Find(name) != nullptr) {
        throw std::invalid_argument("the menu name is taken");
    }
    mItems.push_back(std::make_unique<MenuItem>(mFaults, mFocus, name));
    (parent == nullptr ? mBar : static_cast<MenuItem*>(parent)->mDropDown).emplace_back(name);
    return *mItems.back();
}

void Menus::AddSeparator(tessaly::MenuItem& parent) {
    mFaults.Count();
    static_cast<MenuItem&>(parent).mDropDown.emplace_back("-");
}

MenuItem& Menus::operator[](std::string_view name) {
    MenuItem* const item = Find(name);
    if (item == nullptr) {
        throw ImpossibleAction("there is no menu \"" + std::string(name) + "\"");
    }
    return *item;
}

MenuItem* Menus::Find(std::string_view name) {
    const auto found =
        std::find_if(mItems.begin(), mItems.end(), [name](const auto& item) { return item->mName == name; });
    return found == mItems.end() ? nullptr : found->get();
}

} // namespace tessaly::memory
