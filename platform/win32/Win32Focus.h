// Which control of the main window has the focus, as the program sees it: that another window comes up in front, or
// another program, is no change.
#pragma once

#include "platform/win32/Win32Child.h"

#include <vector>

namespace tessaly {

class Win32Focus {
public:
    void Add(Win32Child& child) { mOrder.push_back(&child); }
    void Remove(Win32Child& child);

    // Windows has given the focus to `child`: raises the events if it is another one than before.
    void MovedTo(Win32Child& child);

    // The window is active again: the control that had the focus gets it, or the first one that can have it. Returns
    // false where there is none.
    bool Return();

    // The Tab key: the next control where it stops, in a circle; nothing when there is none.
    void MoveToNextStop(bool backwards);

    Win32Child* Owner() const { return mOwner; }

private:
    std::vector<Win32Child*> mOrder;
    Win32Child* mOwner = nullptr;
};

} // namespace tessaly
