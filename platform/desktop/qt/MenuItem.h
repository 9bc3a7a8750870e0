// Menus of the main window. What stands in the menu bar opens a drop-down, and an item does as soon as something is put
// into it.
#pragma once

#include "platform/desktop/FocusEvents.h"
#include "platform/desktop/MenuItem.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::qt {

// A drop-down, which is closed before it tells what was chosen: all that it does for a key or a click is one command.
class Menu final : public QMenu {
public:
    explicit Menu(FocusEvents& focus) : mFocus(focus) {}

protected:
    bool event(QEvent* event) override;

private:
    FocusEvents& mFocus;
};

class MenuItem final : public tessaly::MenuItem {
public:
    MenuItem(FocusEvents& focus, std::string_view name);

    std::string Name() const override { return mName; }
    std::string Caption() const override { return mCaption; }
    void SetCaption(std::string_view caption) override;
    bool IsChecked() const override { return mIsChecked; }
    void SetChecked(bool checked) override;

    QAction& Action() { return mAction; }

    // The drop-down, made on the first call.
    QMenu& DropDown();

private:
    void Choose();

    FocusEvents& mFocus;
    std::string mName;
    std::string mCaption;
    bool mIsChecked = false;
    QAction mAction;
    std::unique_ptr<Menu> mDropDown;
};

// All menus of a window.
class Menus {
public:
    Menus(QMenuBar& bar, FocusEvents& focus) : mBar(bar), mFocus(focus) {}

    // As Desktop::AddMenu and Desktop::AddMenuSeparator.
    tessaly::MenuItem& Add(tessaly::MenuItem* parent, std::string_view name);
    void AddSeparator(tessaly::MenuItem& parent);

private:
    QMenuBar& mBar;
    FocusEvents& mFocus;
    std::vector<std::unique_ptr<MenuItem>> mItems;
};

} // namespace tessaly::qt
