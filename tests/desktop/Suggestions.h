// What comes up beside the caret, in memory, and what a user can do with it.
#pragma once

#include "platform/desktop/Suggestions.h"
#include "tests/desktop/Faults.h"
#include "tests/desktop/Focus.h"

#include <string>
#include <vector>

namespace tessaly::memory {

class Suggestions final : public tessaly::Suggestions {
public:
    Suggestions(Faults& faults, Focus& focus) : mFaults(faults), mFocus(focus) {}

    // The user clicks a name that is shown, or something else.
    void Click(std::size_t row) {
        mFocus.CheckReachable("a click on a name");
        TellPick(row);
    }
    void ClickElsewhere() { TellElsewhere(); }

    // The tool tip that the user sees when the mouse rests at a place of the pane's text, or in the margin beside it.
    std::string TipAt(Place place, bool isMargin) { return AskTip(place, isMargin); }

    // What the user sees.
    const std::vector<SuggestedName>& Names() const { return mNames; }
    std::size_t SelectedName() const { return mRow; }
    const HintText& Hint() const { return mHint; }

private:
    void ShowNames(const std::vector<SuggestedName>& names, Place /*place*/) override {
        mFaults.Count();
        mNames = names;
    }
    void ShowSelected(std::size_t row) override { mRow = row; }
    void ShowHintText(const HintText& hint, Place /*place*/) override {
        mFaults.Count();
        mHint = hint;
    }

    Faults& mFaults;
    Focus& mFocus;
    std::vector<SuggestedName> mNames;
    std::size_t mRow = 0;
    HintText mHint;
};

} // namespace tessaly::memory
