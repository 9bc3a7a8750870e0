// The controls of the bar over the pane in memory, and what a user can do with them.
#pragma once

#include "platform/desktop/BarControls.h"
#include "tests/desktop/Control.h"
#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <string>
#include <string_view>

namespace tessaly::memory {

class TextBox final : public Control<tessaly::TextBox>, public KeyTarget {
public:
    using Control::Control;

    std::string Text() const override { return mText; }
    Size PreferredSize() const override { return {0, 330}; }

    // The user clicks into it.
    void Click() {
        CheckVisible("a click into a line of text");
        MoveHere();
    }

    // The user types at the end, or in place of all where that is selected. False without the focus.
    bool Type(std::string_view text) {
        if (!HasFocus()) {
            return false;
        }
        mText = (mIsSelected ? "" : mText) + std::string(text);
        mIsSelected = false;
        Raise(onChange);
        return true;
    }

    bool TakeKey(int keyCode, int /*shift*/) override { return keyCode != KeyTab; }

private:
    void ShowText(std::string_view text) override {
        CountCall();
        mText = text;
        mIsSelected = true;
    }

    std::string mText;
    bool mIsSelected = false;
};

class Button final : public Control<tessaly::Button> {
public:
    Button(Faults& faults, Focus& focus, ButtonKind kind = ButtonKind::Push) : Control(faults, focus), mKind(kind) {}

    void SetCaption(std::string_view caption) override {
        CountCall();
        mCaption = caption;
    }
    bool IsChecked() const override { return mIsChecked; }
    Size PreferredSize() const override { return {300 + 120 * static_cast<float>(mCaption.size()), 330}; }

    // The user presses it.
    void Press() {
        CheckVisible("a click on a button");
        MoveHere();
        mIsChecked = mKind == ButtonKind::Check && !mIsChecked;
        TellClick();
    }

    const std::string& Caption() const { return mCaption; }

private:
    ButtonKind mKind;
    std::string mCaption;
    bool mIsChecked = false;
};

struct PaneBar {
    PaneBar(Faults& theFaults, Focus& theFocus) : faults(theFaults), focus(theFocus) { controls.Hide(); }

    Faults& faults;
    Focus& focus;
    Label wantedLabel{faults, focus};
    TextBox wanted{faults, focus};
    Label count{faults, focus};
    Button matchCase{faults, focus, ButtonKind::Check};
    Button wholeWord{faults, focus, ButtonKind::Check};
    Button previous{faults, focus};
    Button next{faults, focus};
    Button close{faults, focus};
    Label replacementLabel{faults, focus};
    TextBox replacement{faults, focus};
    Button replaceOne{faults, focus};
    Button replaceAll{faults, focus};
    const BarControls controls{wantedLabel, wanted,           count,       matchCase,  wholeWord, previous, next,
                               close,       replacementLabel, replacement, replaceOne, replaceAll};
};

} // namespace tessaly::memory
