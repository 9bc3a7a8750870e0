#include "platform/win32/Win32Focus.h"

#include <algorithm>
#include <utility>

namespace tessaly {

void Win32Focus::Remove(Win32Child& child) {
    std::erase(mOrder, &child);
    if (mOwner == &child) {
        mOwner = nullptr;
    }
}

void Win32Focus::MovedTo(Win32Child& child) {
    if (mOwner == &child) {
        return;
    }
    Win32Child* const before = std::exchange(mOwner, &child);
    if (before != nullptr) {
        before->LoseFocus();
    }
    // The event may have moved the focus on.
    if (mOwner == &child) {
        child.GainFocus();
    }
}

// The owner keeps the focus even when it could not be given it any more.
bool Win32Focus::Return() {
    const auto first =
        std::find_if(mOrder.begin(), mOrder.end(), [](const Win32Child* child) { return child->CanHaveFocus(); });
    Win32Child* const owner = mOwner != nullptr ? mOwner : first != mOrder.end() ? *first : nullptr;
    if (owner == nullptr) {
        return false;
    }
    SetFocus(owner->Handle());
    return true;
}

void Win32Focus::MoveToNextStop(bool backwards) {
    const auto owner = std::find(mOrder.begin(), mOrder.end(), mOwner);
    std::vector<Win32Child*> behind(owner, mOrder.end());
    behind.insert(behind.end(), mOrder.begin(), owner);
    if (backwards) {
        std::reverse(behind.begin(), behind.end());
    }
    const auto next = std::find_if(behind.begin(), behind.end(), [this](const Win32Child* child) {
        return child != mOwner && child->IsTabStop() && child->CanHaveFocus();
    });
    if (next != behind.end()) {
        SetFocus((*next)->Handle());
    }
}

} // namespace tessaly
