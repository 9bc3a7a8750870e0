// All items are qt::MenuItem: nobody else makes any for this desktop. A QAction's object name is the item's name.
#include "platform/desktop/qt/MenuItem.h"

#include "platform/desktop/qt/Text.h"

#include <algorithm>

namespace tessaly::qt {

bool Menu::event(QEvent* event) {
    const FocusEvents::Command command(mFocus, FocusEvents::Keyboard::Stays);
    return QMenu::event(event);
}

// Qt turns the check mark over before it tells; what is checked is the program's to say.
MenuItem::MenuItem(FocusEvents& focus, std::string_view name) : tessaly::MenuItem(name), mFocus(focus) {
    mAction.setObjectName(ToQt(name));
    mAction.setMenuRole(QAction::NoRole);
    mAction.setText(ToQt(name));
    QObject::connect(&mAction, &QAction::triggered, &mAction, [this] {
        SetChecked(mIsChecked);
        if (!mDropDown) {
            onChosen();
        }
    });
}

void MenuItem::ShowCaption(std::string_view caption) {
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

std::unique_ptr<tessaly::MenuItem> Menus::Make(tessaly::MenuItem* parent, std::string_view name) {
    if (name.empty()) {
        static_cast<MenuItem*>(parent)->DropDown().addSeparator();
        return nullptr;
    }
    auto item = std::make_unique<MenuItem>(mFocus, name);
    item->onChosen = [this, number = mItems.size()] { Choose(number); };
    if (parent == nullptr) {
        item->DropDown();
        mBar.addAction(&item->Action());
    } else {
        static_cast<MenuItem*>(parent)->DropDown().addAction(&item->Action());
    }
    return item;
}

QPoint PlaceForMenu(const QWidget& shown, QPoint wanted) {
    return shown.mapToGlobal(QPoint(std::clamp(wanted.x(), 0, std::max(shown.width() - 1, 0)),
                                    std::clamp(wanted.y(), 0, std::max(shown.height() - 1, 0))));
}

// The rows of the menu before stay until the next one: it is still at work when one of them is chosen.
void PopupMenu::ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) {
    mMenu.clear();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].text.empty()) {
            mMenu.addSeparator();
            continue;
        }
        const QString keys = rows[row].keys.empty() ? QString() : "\t" + ToQt(rows[row].keys);
        QAction* const action = mMenu.addAction(ToQt(rows[row].text) + keys);
        action->setEnabled(rows[row].isEnabled);
        QObject::connect(action, &QAction::triggered, &mMenu, [this, row] { TellChoice(row); });
    }
    mMenu.popup({place.x, place.y});
}

} // namespace tessaly::qt
