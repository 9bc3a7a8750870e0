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
    mMenus.Choose(*this);
}

std::unique_ptr<tessaly::MenuItem> Menus::Make(tessaly::MenuItem* parent, std::string_view name) {
    mFaults.Count();
    (parent == nullptr ? mBar : static_cast<MenuItem*>(parent)->dropDown).emplace_back(name.empty() ? "-" : name);
    return name.empty() ? nullptr : std::make_unique<MenuItem>(mFaults, *this, name);
}

void Menus::Choose(const MenuItem& item) {
    mFocus.CheckReachable("the choice of a menu item");
    if (!item.dropDown.empty()) {
        throw ImpossibleAction("the choice of the menu \"" + item.Name() + "\", which only opens its drop-down");
    }
    tessaly::Menus::Choose(item);
}

MenuItem& Menus::operator[](std::string_view name) {
    try {
        return static_cast<MenuItem&>(tessaly::Menus::operator[](name));
    } catch (const std::out_of_range&) {
        throw ImpossibleAction("there is no menu \"" + std::string(name) + "\"");
    }
}

} // namespace tessaly::memory
