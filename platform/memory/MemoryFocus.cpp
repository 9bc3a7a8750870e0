// The focus has moved before the events tell so.
#include "platform/memory/MemoryFocus.h"

#include "platform/memory/TestFailure.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tessaly {

void MemoryFocus::MoveTo(MemoryFocusTarget& target) {
    if (mOwner == &target) {
        return;
    }
    MemoryFocusTarget* const before = std::exchange(mOwner, &target);
    if (before != nullptr) {
        before->LoseFocus();
    }
    // The event may have moved the focus on.
    if (mOwner == &target) {
        target.GainFocus();
    }
}

void MemoryFocus::MoveToNextStop() {
    const auto owner = std::find(mOrder.begin(), mOrder.end(), mOwner);
    std::vector<MemoryFocusTarget*> behind(owner, mOrder.end());
    behind.insert(behind.end(), mOrder.begin(), owner);
    const auto next = std::find_if(behind.begin(), behind.end(), [this](const MemoryFocusTarget* target) {
        return target != mOwner && target->IsTabStop() && target->CanHaveFocus();
    });
    if (next != behind.end()) {
        MoveTo(**next);
    }
}

void MemoryFocus::MoveToFirst() {
    const auto first = std::find_if(mOrder.begin(), mOrder.end(),
                                    [](const MemoryFocusTarget* target) { return target->CanHaveFocus(); });
    if (first != mOrder.end()) {
        MoveTo(**first);
    }
}

void MemoryFocus::CheckReachable(std::string_view action) const {
    if (IsBlocked()) {
        throw ImpossibleAction(std::string(action) + " behind a modal window");
    }
}

} // namespace tessaly
