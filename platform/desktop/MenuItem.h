// The menus of the main window, and the one that comes up where the user asks for one: see Control::onMenu.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/FocusEvents.h"
#include "platform/desktop/Raise.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
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

    // The menu of this name, or its number, from 0 in the order of adding. Throws std::out_of_range when there is none.
    MenuItem& operator[](std::string_view name) const { return *mItems[Number(name)]; }
    std::size_t Number(std::string_view name) const;

    // As if the user had chosen the item with this number: the command has the keyboard as long as it runs. Nothing
    // happens where there is none.
    void Choose(std::size_t number);

    // Adds a line between the items of a drop-down.
    void AddSeparator(MenuItem& parent) { Make(&parent, ""); }

protected:
    // Stands in the bar, or in the drop-down of `parent`. All items of a desktop are of its own class. One without a
    // name is a line, and null.
    virtual std::unique_ptr<MenuItem> Make(MenuItem* parent, std::string_view name) = 0;

    std::vector<std::unique_ptr<MenuItem>> mItems;

private:
    std::size_t Find(std::string_view name) const;

    FocusEvents& mFocus;
};

struct PopupRow {
    std::string text; // an ampersand marks the access key; "" for a line between rows
    std::string keys; // those that do the same, beside it; may be ""
    bool isEnabled = true;

    bool operator==(const PopupRow&) const = default;
};

class PopupMenu {
public:
    using Choice = std::function<void(std::size_t row)>;

    explicit PopupMenu(FocusEvents& focus) : mFocus(focus) {}
    PopupMenu(const PopupMenu&) = delete;
    PopupMenu& operator=(const PopupMenu&) = delete;
    virtual ~PopupMenu() = default;

    // Shows these rows, of which one at least is no line, with a corner at `place`, as far as the screen allows. Calls
    // `choose` with the number from 0 of the row that the user chooses, before this returns or later. It is not called
    // when he leaves the menu. The menu has the keyboard, and so has the command as long as `choose` runs. What that
    // throws ends there.
    void Show(const std::vector<PopupRow>& rows, ScreenPlace place, Choice choose) {
        mChoose = std::move(choose);
        ShowRows(rows, place);
    }

protected:
    virtual void ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) = 0;

    // The user has chosen this row, and the menu is gone.
    void TellChoice(std::size_t row) {
        const FocusEvents::Command command(mFocus, FocusEvents::Keyboard::IsTaken);
        Raise(std::exchange(mChoose, nullptr), row);
    }

private:
    FocusEvents& mFocus;
    Choice mChoose;
};

} // namespace tessaly
