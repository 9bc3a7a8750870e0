// Where the focus goes in the main window when nobody says so.
#pragma once

#include "platform/desktop/win32/Child.h"

#include <vector>

namespace tessaly::win32 {

class Focus {
public:
    explicit Focus(const FocusEvents& events) : mEvents(events) {}

    void Add(Child& child) { mOrder.push_back(&child); }
    void Remove(Child& child) { std::erase(mOrder, &child); }

    // The window is active again: the control that had the focus gets it, or the first one that can have it. Returns
    // false where there is none.
    bool Return();

    // The Tab key: the next control where it stops, in a circle; nothing when there is none.
    void MoveToNextStop(bool backwards);

private:
    // All targets are win32::Child: nobody else is reported here.
    Child* Owner() const { return static_cast<Child*>(mEvents.Owner()); }

    const FocusEvents& mEvents;
    std::vector<Child*> mOrder;
};

} // namespace tessaly::win32
