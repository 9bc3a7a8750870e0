// Steps that were undone stay in the list until something else is done.
#include "platform/desktop/TextHistory.h"

#include <utility>

namespace tessaly {

namespace {

// One character, which may have two units, and no line break.
bool IsTyped(const Stretch& stretch) {
    return !stretch.text.empty() && stretch.text.size() <= 2 && stretch.breaks.empty();
}

} // namespace

void TextHistory::Forget() {
    mSteps.clear();
    mDone = 0;
    mIsTyping = false;
}

void TextHistory::Add(Step step, By by) {
    mSteps.resize(mDone);
    const bool isTyping = by == By::Typing && step.parts.size() == 1;
    if (!isTyping || !Join(step)) {
        mSteps.push_back(std::move(step));
        mDone = mSteps.size();
    }
    mIsTyping = isTyping;
}

// Puts a character that was typed or taken away to the last step, if it goes on there.
bool TextHistory::Join(const Step& step) {
    if (!mIsTyping || mSteps.empty()) {
        return false;
    }
    Replacement& last = mSteps.back().parts.front();
    const Replacement& next = step.parts.front();
    const bool isInsertion = next.removed.text.empty() && last.removed.text.empty();
    const bool isRemoval = next.added.text.empty() && last.added.text.empty();
    if (isInsertion && IsTyped(next.added) && last.added.breaks.empty() &&
        next.start == last.start + last.added.text.size()) {
        last.added.text += next.added.text;
    } else if (isRemoval && IsTyped(next.removed) && last.removed.breaks.empty() &&
               next.start + next.removed.text.size() == last.start) {
        last.removed.text.insert(0, next.removed.text);
        last.start = next.start;
    } else if (isRemoval && IsTyped(next.removed) && last.removed.breaks.empty() && next.start == last.start) {
        last.removed.text += next.removed.text;
    } else {
        return false;
    }
    mSteps.back().after = step.after;
    return true;
}

const Step& TextHistory::Undo() {
    mIsTyping = false;
    return mSteps[--mDone];
}

const Step& TextHistory::Redo() {
    mIsTyping = false;
    return mSteps[mDone++];
}

} // namespace tessaly
