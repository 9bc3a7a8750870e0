// What was done to a text, step by step, so that it can be undone and done again.
#pragma once

#include "platform/text/LineBreaks.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tessaly {

// A stretch of text, in which each break is an LF, and what its breaks really are.
struct Stretch {
    std::u16string text;
    std::vector<LineBreak> breaks;
};

// In place of `removed`, which began at this unit of the text, stands `added`.
struct Replacement {
    std::size_t start = 0;
    std::size_t firstBreak = 0; // of those that came and went, counted from 0
    Stretch removed;
    Stretch added;
};

// A selection: where it began, and the caret. In units of UTF-16 from the beginning of the text, each break being one.
struct Ends {
    std::size_t anchor = 0;
    std::size_t caret = 0;

    bool operator==(const Ends&) const = default;
};

// Replacements in the order in which they were done, with the selection in front of them and behind.
struct Step {
    std::vector<Replacement> parts;
    Ends before;
    Ends after;
};

class TextHistory {
public:
    void Forget();

    // Something was done; what had been undone is forgotten. Typed characters that stand side by side are one step, and
    // so are those that were taken away one after the other.
    enum class By { Typing, Command };
    void Add(Step step, By by);

    bool CanUndo() const { return mDone > 0; }
    bool CanRedo() const { return mDone < mSteps.size(); }

    // The step that is undone or done again, which counts as such from now on. Only to be called where it can be.
    const Step& Undo();
    const Step& Redo();

private:
    bool Join(const Step& step);

    std::vector<Step> mSteps;
    std::size_t mDone = 0; // how many of them are not undone
    bool mIsTyping = false;
};

} // namespace tessaly
