// The main window in memory can be blocked, by what comes up over it.
#pragma once

#include "platform/desktop/Control.h"
#include "tests/desktop/TestFailure.h"

#include <string>
#include <string_view>
#include <utility>

namespace tessaly::memory {

class Focus {
public:
    explicit Focus(Controls& ofWindow) : controls(ofWindow) {}

    // While something else has the keyboard, such as a dialog, nothing can be done in the window.
    void Block() {
        ++mBlocks;
        controls.focus.Taken();
    }
    void Unblock() {
        if (--mBlocks == 0 && controls.Owner() != nullptr) {
            controls.focus.MovedTo(*controls.Owner());
        }
    }
    bool IsBlocked() const { return mBlocks > 0; }

    // The keyboard goes to the messages window, until something of the main window takes it or it is given back.
    void GoToMessages() {
        isWithMessages = true;
        controls.focus.Taken();
    }
    void LeaveMessages() {
        if (std::exchange(isWithMessages, false) && controls.Owner() != nullptr) {
            controls.focus.MovedTo(*controls.Owner());
        }
    }
    bool isWithMessages = false;

    // Throws ImpossibleAction while the window is blocked; `action` says what the test wanted to do.
    void CheckReachable(std::string_view action) const {
        if (IsBlocked()) {
            throw ImpossibleAction(std::string(action) + " behind a modal window");
        }
    }

    Controls& controls;
    std::string clipboard; // of all windows

private:
    int mBlocks = 0;
};

// Blocks a window as long as it lives.
class Block {
public:
    explicit Block(Focus& focus) : mFocus(focus) { mFocus.Block(); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    ~Block() { mFocus.Unblock(); }

private:
    Focus& mFocus;
};

} // namespace tessaly::memory
