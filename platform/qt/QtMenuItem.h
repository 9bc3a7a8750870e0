// Menus of the main window. What stands in the menu bar opens a drop-down, and an item does as soon as something is put
// into it.
#pragma once

#include "platform/MenuItem.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class QtMenuItem final : public MenuItem {
public:
    explicit QtMenuItem(std::string_view name);

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

    std::string mName;
    std::string mCaption;
    bool mIsChecked = false;
    QAction mAction;
    std::unique_ptr<QMenu> mDropDown;
};

// All menus of a window.
class QtMenus {
public:
    explicit QtMenus(QMenuBar& bar) : mBar(bar) {}

    // As Desktop::AddMenu and Desktop::AddMenuSeparator.
    MenuItem& Add(MenuItem* parent, std::string_view name);
    void AddSeparator(MenuItem& parent);

private:
    QMenuBar& mBar;
    std::vector<std::unique_ptr<QtMenuItem>> mItems;
};

} // namespace tessaly
