// All targets are memory::FocusTarget: nobody else reports any here.
#include "tests/desktop/Focus.h"

#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <string>

namespace tessaly::memory {

void Focus::MoveToNextStop() {
    const auto owner = std::find(mOrder.begin(), mOrder.end(), Owner());
    std::vector<FocusTarget*> behind(owner, mOrder.end());
    behind.insert(behind.end(), mOrder.begin(), owner);
    const auto next = std::find_if(behind.begin(), behind.end(), [this](const FocusTarget* target) {
        return target != Owner() && target->IsTabStop() && target->CanHaveFocus();
    });
    if (next != behind.end()) {
        events.MovedTo(**next);
    }
}

void Focus::MoveToFirst() {
    const auto first =
        std::find_if(mOrder.begin(), mOrder.end(), [](const FocusTarget* target) { return target->CanHaveFocus(); });
    if (first != mOrder.end()) {
        events.MovedTo(**first);
    }
}

void Focus::Block() {
    ++mBlocks;
    events.Taken();
}

void Focus::Unblock() {
    if (--mBlocks == 0 && Owner() != nullptr) {
        events.MovedTo(*Owner());
    }
}

void Focus::CheckReachable(std::string_view action) const {
    if (IsBlocked()) {
        throw ImpossibleAction(std::string(action) + " behind a modal window");
    }
}

} // namespace tessaly::memory
