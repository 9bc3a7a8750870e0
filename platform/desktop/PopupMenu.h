// The menu that comes up where the user asks for one: see Control::onMenu.
#pragma once

#include "platform/desktop/Control.h"
#include "platform/desktop/Raise.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tessaly {

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
