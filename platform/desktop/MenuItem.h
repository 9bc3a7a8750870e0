// The menus of the main window.
#pragma once

#include "platform/desktop/FocusEvents.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// A menu or an item of one.
class MenuItem {
public:
    explicit MenuItem(std::string_view name) : mName(name), mCaption(name) {}
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;
    virtual ~MenuItem() = default;

    // Raised when the user chooses the item. A menu that only opens a drop-down raises nothing.
    std::function<void()> onClick;

    // The name that it was made with, such as "mnuFile".
    const std::string& Name() const { return mName; }

    // An ampersand marks the access key.
    const std::string& Caption() const { return mCaption; }
    void SetCaption(std::string_view caption) {
        ShowCaption(caption);
        mCaption = caption;
    }

    virtual void SetChecked(bool checked) = 0;

protected:
    virtual void ShowCaption(std::string_view caption) = 0;

private:
    std::string mName;
    std::string mCaption;
};

class Menus {
public:
    explicit Menus(FocusEvents& focus) : mFocus(focus) {}
    Menus(const Menus&) = delete;
    Menus& operator=(const Menus&) = delete;
    virtual ~Menus() = default;

    // Adds a menu: in the menu bar, or at the end of the drop-down of `parent`. `name` also is the caption until
    // another one is set. Throws std::invalid_argument when the name is taken.
    MenuItem& Add(MenuItem* parent, std::string_view name);

    // The menu of this name. Throws std::out_of_range when there is none.
    MenuItem& operator[](std::string_view name) const;

    // As if the user had chosen the item: the command has the keyboard as long as it runs.
    void Choose(const MenuItem& item);

    // Adds a line between the items of a drop-down.
    virtual void AddSeparator(MenuItem& parent) = 0;

protected:
    // Stands in the bar, or in the drop-down of `parent`. All items of a desktop are of its own class.
    virtual std::unique_ptr<MenuItem> Make(MenuItem* parent, std::string_view name) = 0;

    std::vector<std::unique_ptr<MenuItem>> mItems;

private:
    MenuItem* Find(std::string_view name) const;

    FocusEvents& mFocus;
};

} // namespace tessaly
