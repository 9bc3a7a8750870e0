// The menu bar of the main window.
#include "platform/desktop/MenuItem.h"

#include "platform/desktop/Raise.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {

MenuItem& Menus::Add(MenuItem* parent, std::string_view name) {
    if (Find(name) != nullptr) {
        throw std::invalid_argument("the name of the menu is taken");
    }
    mItems.push_back(Make(parent, name));
    return *mItems.back();
}

MenuItem& Menus::operator[](std::string_view name) const {
    MenuItem* const item = Find(name);
    if (item == nullptr) {
        throw std::out_of_range("no menu is called " + std::string(name));
    }
    return *item;
}

MenuItem* Menus::Find(std::string_view name) const {
    const auto found =
        std::find_if(mItems.begin(), mItems.end(), [name](const auto& item) { return item->Name() == name; });
    return found != mItems.end() ? found->get() : nullptr;
}

void Menus::Choose(const MenuItem& item) {
    const FocusEvents::Command command(mFocus, FocusEvents::Keyboard::IsTaken);
    Raise(item.onClick);
}

} // namespace tessaly
