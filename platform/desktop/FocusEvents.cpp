// What is true is noted before an event tells of it: the handler may move the focus on.
#include "platform/desktop/FocusEvents.h"

#include <utility>

namespace tessaly {

void FocusEvents::MovedTo(FocusTarget& target) {
    if (mHasEnded) {
        return;
    }
    mOwner = &target;
    mIsHere = true;
    if (mTold != mOwner) {
        TellLost();
    }
    if (mCommands == 0) {
        TellGained();
    }
}

void FocusEvents::MovedByProgram(FocusTarget& target) {
    MovedTo(target);
    if (mOwner == &target) { // else the lost event has moved it on
        TellGained();
    }
}

void FocusEvents::Taken() {
    mIsHere = false;
    TellLost();
}

void FocusEvents::End() {
    mHasEnded = true;
    mOwner = nullptr;
    mTold = nullptr;
}

void FocusEvents::TellLost() {
    if (FocusTarget* const told = std::exchange(mTold, nullptr)) {
        told->LoseFocus();
    }
}

void FocusEvents::TellGained() {
    if (mIsHere && mTold == nullptr && !mHasEnded) {
        mTold = mOwner;
        mTold->GainFocus();
    }
}

FocusEvents::Command::Command(FocusEvents& events, Keyboard keyboard) : mEvents(events) {
    ++mEvents.mCommands;
    if (keyboard == Keyboard::IsTaken) {
        mEvents.TellLost();
    }
}

FocusEvents::Command::~Command() {
    if (--mEvents.mCommands == 0) {
        mEvents.TellGained();
    }
}

} // namespace tessaly
