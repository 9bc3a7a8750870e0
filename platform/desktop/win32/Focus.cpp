#include "platform/desktop/win32/Focus.h"

#include <algorithm>

namespace tessaly {

// The owner keeps the focus even when it could not be given it any more.
bool Win32Focus::Return() {
    const auto first =
        std::find_if(mOrder.begin(), mOrder.end(), [](const Win32Child* child) { return child->CanHaveFocus(); });
    Win32Child* const owner = Owner() != nullptr ? Owner() : first != mOrder.end() ? *first : nullptr;
    if (owner == nullptr) {
        return false;
    }
    SetFocus(owner->Handle());
    return true;
}

void Win32Focus::MoveToNextStop(bool backwards) {
    const auto owner = std::find(mOrder.begin(), mOrder.end(), Owner());
    std::vector<Win32Child*> behind(owner, mOrder.end());
    behind.insert(behind.end(), mOrder.begin(), owner);
    if (backwards) {
        std::reverse(behind.begin(), behind.end());
    }
    const auto next = std::find_if(behind.begin(), behind.end(), [this](const Win32Child* child) {
        return child != Owner() && child->IsTabStop() && child->CanHaveFocus();
    });
    if (next != behind.end()) {
        SetFocus((*next)->Handle());
    }
}

} // namespace tessaly
