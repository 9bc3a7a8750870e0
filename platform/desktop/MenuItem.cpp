// The menu bar of the main window.
#include "platform/desktop/MenuItem.h"

#include "platform/desktop/Raise.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly {

MenuItem& Menus::Add(MenuItem* parent, std::string_view name) {
    if (Find(name) < mItems.size()) {
        throw std::invalid_argument("the name of the menu is taken");
    }
    mItems.push_back(Make(parent, name));
    return *mItems.back();
}

std::size_t Menus::Number(std::string_view name) const {
    const std::size_t number = Find(name);
    if (number == mItems.size()) {
        throw std::out_of_range("no menu is called " + std::string(name));
    }
    return number;
}

// How many there are, for none.
std::size_t Menus::Find(std::string_view name) const {
    const auto found =
        std::find_if(mItems.begin(), mItems.end(), [name](const auto& item) { return item->Name() == name; });
    return static_cast<std::size_t>(found - mItems.begin());
}

void Menus::Choose(std::size_t number) {
    if (number < mItems.size()) {
        const FocusEvents::Command command(mFocus, FocusEvents::Keyboard::IsTaken);
        Raise(mItems[number]->onClick);
    }
}

} // namespace tessaly
