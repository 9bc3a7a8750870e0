#include "platform/desktop/win32/Focus.h"

#include <algorithm>

namespace tessaly::win32 {

// The owner keeps the focus even when it could not be given it any more.
bool Focus::Return() {
    const auto first =
        std::find_if(mOrder.begin(), mOrder.end(), [](const Child* child) { return child->CanHaveFocus(); });
    Child* const owner = Owner() != nullptr ? Owner() : first != mOrder.end() ? *first : nullptr;
    if (owner == nullptr) {
        return false;
    }
    SetFocus(owner->Handle());
    return true;
}

void Focus::MoveToNextStop(bool backwards) {
    const auto owner = std::find(mOrder.begin(), mOrder.end(), Owner());
    std::vector<Child*> behind(owner, mOrder.end());
    behind.insert(behind.end(), mOrder.begin(), owner);
    if (backwards) {
        std::reverse(behind.begin(), behind.end());
    }
    const auto next = std::find_if(behind.begin(), behind.end(), [this](const Child* child) {
        return child != Owner() && child->IsTabStop() && child->CanHaveFocus();
    });
    if (next != behind.end()) {
        SetFocus((*next)->Handle());
    }
}

} // namespace tessaly::win32
