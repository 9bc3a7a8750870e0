// What every control in memory has in common, put on top of its interface, and labels.
#pragma once

#include "platform/desktop/Control.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <string>
#include <string_view>

namespace tessaly::memory {

// What a key of the user can go to.
class KeyTarget {
public:
    virtual ~KeyTarget() = default;

    // `shift` as for Window::onKeyDown. False when it has no use for the key.
    virtual bool TakeKey(int keyCode, int shift) = 0;
};

template <class Interface>
class Control : public Interface {
public:
    Control(Faults& faults, Focus& focus) : Interface(focus.controls), mFaults(faults), mFocus(focus) {}

    void TakeKeyboard() override {
        CountCall();
        mFocus.isWithMessages = false;
    }

    bool HasFocus() const { return mFocus.controls.Owner() == this; }

    // Where it is on the screen.
    const Extent& Place() const { return mPlace; }

protected:
    // To be called first in everything that a control could fail in.
    void CountCall() const { mFaults.Count(); }

    void Show(const Extent& place) override { mPlace = place; }
    void ShowVisible(bool /*visible*/) override { CountCall(); }
    void MoveHere() {
        mFocus.isWithMessages = false;
        mFocus.controls.focus.MovedTo(*this);
    }
    std::string& Clipboard() { return mFocus.clipboard; }
    void CheckReachable(std::string_view action) const { mFocus.CheckReachable(action); }
    void CheckVisible(std::string_view action) const {
        CheckReachable(action);
        if (!this->IsVisible()) {
            throw ImpossibleAction(std::string(action) + " that is not there");
        }
    }

private:
    Faults& mFaults;
    Focus& mFocus;
    Extent mPlace;
};

class Label final : public Control<tessaly::Label> {
public:
    using Control::Control;

    void SetCaption(std::string_view caption) override {
        CountCall();
        mCaption = caption;
    }
    Size PreferredSize() const override {
        CountCall();
        return {0, 240};
    }

    const std::string& Caption() const { return mCaption; }

private:
    std::string mCaption;
};

} // namespace tessaly::memory
