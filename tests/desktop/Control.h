// What every control in memory has in common, put on top of its interface.
#pragma once

#include "platform/desktop/Control.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <stdexcept>
#include <string_view>

namespace tessaly::memory {

// Whether the user can work in a control with the keyboard.
enum class Keyboard { Used, Unused };

template <class Interface>
class Control : public Interface, public FocusTarget {
public:
    Control(Faults& faults, Focus& focus, Keyboard keyboard) : mFaults(faults), mFocus(focus), mKeyboard(keyboard) {
        mFocus.Add(*this);
    }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    ~Control() override = default;

    Extent GetExtent() const override {
        CountCall();
        return mExtent;
    }

    void SetExtent(const Extent& extent) override {
        CountCall();
        mExtent = extent;
    }

    bool HasTabStop() const override {
        CountCall();
        return mKeyboard == Keyboard::Used;
    }

    void SetTabStop(bool stop) override {
        CountCall();
        if (mKeyboard == Keyboard::Unused) {
            throw std::logic_error("the control has no tab stop");
        }
        mIsTabStop = stop;
    }

    void SetFocus() override {
        CountCall();
        if (!CanHaveFocus()) {
            throw std::runtime_error("the control cannot have the focus");
        }
        mFocus.events.MovedByProgram(*this);
    }

    bool CanHaveFocus() const override { return mKeyboard == Keyboard::Used; }
    bool IsTabStop() const override { return mKeyboard == Keyboard::Used && mIsTabStop; }
    bool HasFocus() const { return mFocus.Owner() == this; }

protected:
    // To be called first in every call of the interface.
    void CountCall() const { mFaults.Count(); }

    const Extent& OwnExtent() const { return mExtent; }
    void TakeFocus() { mFocus.events.MovedTo(*this); }
    FocusEvents& Events() { return mFocus.events; }
    void CheckReachable(std::string_view action) const { mFocus.CheckReachable(action); }

private:
    Faults& mFaults;
    Focus& mFocus;
    Keyboard mKeyboard;
    Extent mExtent;
    bool mIsTabStop = true;
};

} // namespace tessaly::memory
