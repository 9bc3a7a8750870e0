// All items are memory::MenuItem: nobody else makes any for this desktop.
#include "tests/desktop/MenuItem.h"

#include "tests/desktop/TestFailure.h"

#include <stdexcept>

namespace tessaly::memory {

void MenuItem::ShowCaption(std::string_view /*caption*/) {
    mFaults.Count();
}

void MenuItem::SetChecked(bool checked) {
    mFaults.Count();
    mIsChecked = checked;
}

void MenuItem::Choose() {
    mMenus.CheckReachable();
    if (!dropDown.empty()) {
        throw ImpossibleAction("the choice of the menu \"" + Name() + "\", which only opens its drop-down");
    }
    mMenus.Choose(mNumber);
}

std::unique_ptr<tessaly::MenuItem> Menus::Make(tessaly::MenuItem* parent, std::string_view name) {
    mFaults.Count();
    (parent == nullptr ? mBar : static_cast<MenuItem*>(parent)->dropDown).emplace_back(name.empty() ? "-" : name);
    return name.empty() ? nullptr : std::make_unique<MenuItem>(mFaults, *this, mItems.size(), name);
}

MenuItem& Menus::operator[](std::string_view name) {
    try {
        return static_cast<MenuItem&>(tessaly::Menus::operator[](name));
    } catch (const std::out_of_range&) {
        throw ImpossibleAction("there is no menu \"" + std::string(name) + "\"");
    }
}

} // namespace tessaly::memory
