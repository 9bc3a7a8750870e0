// All items are qt::MenuItem: nobody else makes any for this desktop. A QAction's object name is the item's name.
#include "platform/desktop/qt/MenuItem.h"

#include "platform/desktop/qt/Text.h"

#include <algorithm>
#include <stdexcept>

namespace tessaly::qt {

bool Menu::event(QEvent* event) {
    const FocusEvents::Command command(mFocus, FocusEvents::Keyboard::Stays);
    return QMenu::event(event);
}

MenuItem::MenuItem(FocusEvents& focus, std::string_view name) : mFocus(focus), mName(name) {
    mAction.setObjectName(ToQt(name));
    mAction.setMenuRole(QAction::NoRole);
    SetCaption(name);
    QObject::connect(&mAction, &QAction::triggered, &mAction, [this] { Choose(); });
}

void MenuItem::SetCaption(std::string_view caption) {
    mCaption = caption;
    mAction.setText(ToQt(caption));
}

void MenuItem::SetChecked(bool checked) {
    mIsChecked = checked;
    mAction.setCheckable(checked);
    mAction.setChecked(checked);
}

QMenu& MenuItem::DropDown() {
    if (!mDropDown) {
        mDropDown = std::make_unique<Menu>(mFocus);
        mAction.setMenu(mDropDown.get());
    }
    return *mDropDown;
}

// Qt turns the check mark over before it tells; what is checked is the program's to say.
void MenuItem::Choose() {
    SetChecked(mIsChecked);
    const FocusEvents::Command command(mFocus, FocusEvents::Keyboard::IsTaken);
    if (!mDropDown && onClick) {
        onClick();
    }
}

tessaly::MenuItem& Menus::Add(tessaly::MenuItem* parent, std::string_view name) {
    if (std::any_of(mItems.begin(), mItems.end(), [name](const auto& item) { return item->Name() == name; })) {
        throw std::invalid_argument("the menu name is taken");
    }
    mItems.push_back(std::make_unique<MenuItem>(mFocus, name));
    MenuItem& item = *mItems.back();
    if (parent == nullptr) {
        item.DropDown();
        mBar.addAction(&item.Action());
    } else {
        static_cast<MenuItem*>(parent)->DropDown().addAction(&item.Action());
    }
    return item;
}

void Menus::AddSeparator(tessaly::MenuItem& parent) {
    static_cast<MenuItem&>(parent).DropDown().addSeparator();
}

} // namespace tessaly::qt
