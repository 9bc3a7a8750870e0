// The menus of the main window, and the one that comes up where the user asks for one. That is open until the user has
// done with it.
#pragma once

#include "platform/desktop/MenuItem.h"
#include "platform/desktop/qt/Window.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <memory>
#include <string_view>
#include <vector>

namespace tessaly::qt {

// A drop-down, which closes before it tells of a choice. A key or a click is one command as a whole.
class Menu final : public QMenu {
public:
    explicit Menu(FocusEvents& focus, QWidget* parent = nullptr) : QMenu(parent), mFocus(focus) {}

protected:
    bool event(QEvent* event) override;

private:
    FocusEvents& mFocus;
};

class MenuItem final : public tessaly::MenuItem {
public:
    MenuItem(FocusEvents& focus, std::string_view name);

    void SetChecked(bool checked) override;

    QAction& Action() { return mAction; }

    // The drop-down, made on the first call.
    QMenu& DropDown();

    // The user has chosen the item.
    std::function<void()> onChosen;

private:
    void ShowCaption(std::string_view caption) override;

    FocusEvents& mFocus;
    bool mIsChecked = false;
    QAction mAction;
    std::unique_ptr<Menu> mDropDown;
};

// All menus of a window.
class Menus final : public tessaly::Menus {
public:
    Menus(QMenuBar& bar, FocusEvents& focus) : tessaly::Menus(focus), mBar(bar), mFocus(focus) {}

private:
    std::unique_ptr<tessaly::MenuItem> Make(tessaly::MenuItem* parent, std::string_view name) override;

    QMenuBar& mBar;
    FocusEvents& mFocus;
};

// On the screen, the place of `shown` that is nearest to `wanted` in it.
QPoint PlaceForMenu(const QWidget& shown, QPoint wanted);

class PopupMenu final : public tessaly::PopupMenu {
public:
    explicit PopupMenu(Window& window)
        : tessaly::PopupMenu(window.controls.focus),
          mMenu(window.controls.focus, &window) {}

private:
    void ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) override;

    Menu mMenu;
};

} // namespace tessaly::qt
