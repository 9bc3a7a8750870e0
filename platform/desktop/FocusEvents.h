// The lost and gained events of the controls of one window, for every desktop: a desktop reports where the keyboard is
// and when a command runs; whom to tell what, and when, is decided here.
#pragma once

namespace tessaly {

// A control that can have the keyboard focus. The events throw nothing.
class FocusTarget {
public:
    virtual ~FocusTarget() = default;
    virtual void GainFocus() {}
    virtual void LoseFocus() {}
};

class FocusEvents {
public:
    // The keyboard has come to `target`, from another control or from outside. While a command runs its gained event
    // waits for the end of the outermost one.
    void MovedTo(FocusTarget& target);

    // The same, by a call of the program: its gained event comes at once.
    void MovedByProgram(FocusTarget& target);

    // The keyboard is with no control now: with a menu, a dialog, another window or another program.
    void Taken();

    // The window goes, or a control of it: from now on nothing is told.
    void End();

    // The control that has the keyboard, or to which it comes back; null when no control ever had it.
    FocusTarget* Owner() const { return mOwner; }

    // A command that the user gave runs as long as this lives. Where the user gave it by a menu, the tool bar or the
    // mouse, it has taken the keyboard; a key of the window leaves it where it is.
    enum class Keyboard { Stays, IsTaken };
    class Command {
    public:
        Command(FocusEvents& events, Keyboard keyboard);
        Command(const Command&) = delete;
        Command& operator=(const Command&) = delete;
        ~Command();

    private:
        FocusEvents& mEvents;
    };

private:
    void TellLost();
    void TellGained();

    FocusTarget* mOwner = nullptr;
    FocusTarget* mTold = nullptr; // of the gained event, and not of the lost one since
    int mCommands = 0;
    bool mIsHere = false; // the keyboard is with the owner
    bool mHasEnded = false;
};

} // namespace tessaly
