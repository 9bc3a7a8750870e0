// The keyboard focus of one window, and the order in which the Tab key goes round its controls.
#pragma once

#include "platform/desktop/FocusEvents.h"

#include <string_view>
#include <vector>

namespace tessaly::memory {

// What can have the focus.
class FocusTarget : public tessaly::FocusTarget {
public:
    virtual bool CanHaveFocus() const = 0;
    virtual bool IsTabStop() const = 0;

    // A key reaches the control; `shift` as for Window::onKeyDown. False when it has no use for it.
    virtual bool TakeKey(int /*keyCode*/, int /*shift*/) { return false; }
};

class Focus {
public:
    // Where the keyboard and the commands of the window are told.
    FocusEvents events;

    // Puts a control behind the others in the order of the Tab key.
    void Add(FocusTarget& target) { mOrder.push_back(&target); }

    // Moves the focus to the next control, in a circle, where the Tab key stops; it stays when there is none.
    void MoveToNextStop();

    // Moves the focus to the first control that can have it, wherever the Tab key stops.
    void MoveToFirst();

    FocusTarget* Owner() const { return static_cast<FocusTarget*>(events.Owner()); }

    // While something else has the keyboard, such as a dialog, nothing can be done in the window.
    void Block();
    void Unblock();
    bool IsBlocked() const { return mBlocks > 0; }

    // Throws ImpossibleAction while the window is blocked; `action` says what the test wanted to do.
    void CheckReachable(std::string_view action) const;

private:
    std::vector<FocusTarget*> mOrder;
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
