// The pane knows LF only, as controls do; LineBreaks remembers what the breaks were.
#include "tests/desktop/RichTextBox.h"

#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t CharacterEnd(std::string_view text, std::size_t start) {
    std::size_t end = start + 1;
    while (end < text.size() && ContinuesCharacter(text[end])) {
        ++end;
    }
    return end;
}

std::size_t CharacterBefore(std::string_view text, std::size_t end) {
    std::size_t start = end - 1;
    while (start > 0 && ContinuesCharacter(text[start])) {
        --start;
    }
    return start;
}

std::string WithLineFeeds(std::string_view text) {
    LineBreaks breaks;
    breaks.Set(text);
    return breaks.Shown();
}

} // namespace

std::string MemoryRichTextBox::Text() const {
    CountCall();
    return mLines.Text();
}

void MemoryRichTextBox::SetText(std::string_view text) {
    CountCall();
    mLines.Set(text);
    mCaret = 0;
    mAnchor = 0;
    mUndo.clear();
    if (onChange) {
        onChange();
    }
}

bool MemoryRichTextBox::FuncBodyAvailable() const {
    CountCall();
    return mFuncBodyAvailable;
}

void MemoryRichTextBox::SetFuncBodyAvailable(bool available) {
    CountCall();
    mFuncBodyAvailable = available;
}

float MemoryRichTextBox::CharacterWidth() const {
    CountCall();
    return 120;
}

void MemoryRichTextBox::SetTabStops(const std::vector<float>& stops) {
    CountCall();
    mTabStops = stops;
}

bool MemoryRichTextBox::Click() {
    CheckReachable("a click into the pane");
    if (mFuncBodyAvailable) {
        TakeFocus();
    }
    return mFuncBodyAvailable;
}

bool MemoryRichTextBox::Type(std::string_view text) {
    const std::string typed = WithLineFeeds(text);
    for (std::size_t start = 0; start < typed.size();) {
        if (!TakesInput()) {
            return false;
        }
        const std::size_t end = CharacterEnd(typed, start);
        ReplaceSelection(std::string_view(typed).substr(start, end - start));
        start = end;
    }
    return TakesInput();
}

bool MemoryRichTextBox::PressEnter() {
    return Type("\n");
}

bool MemoryRichTextBox::Backspace() {
    if (!TakesInput() || (mCaret == 0 && mAnchor == 0)) {
        return false;
    }
    if (mCaret != mAnchor) {
        ReplaceSelection("");
    } else {
        Replace(CharacterBefore(Shown(), mCaret), mCaret, "");
    }
    return true;
}

bool MemoryRichTextBox::Paste(std::string_view text) {
    if (!TakesInput()) {
        return false;
    }
    ReplaceSelection(WithLineFeeds(text));
    return true;
}

bool MemoryRichTextBox::Undo() {
    if (!TakesInput() || mUndo.empty()) {
        return false;
    }
    const State state = std::move(mUndo.back());
    mUndo.pop_back();
    mLines.Edit(state.shown);
    mCaret = state.caret;
    mAnchor = state.caret;
    if (onChange) {
        onChange();
    }
    return true;
}

void MemoryRichTextBox::SetCaret(std::size_t position) {
    if (position > Shown().size() || (position < Shown().size() && ContinuesCharacter(Shown()[position]))) {
        throw ImpossibleAction("the caret cannot stand at " + std::to_string(position));
    }
    mCaret = position;
    mAnchor = position;
}

void MemoryRichTextBox::SelectAll() {
    mAnchor = 0;
    mCaret = Shown().size();
}

void MemoryRichTextBox::LoseFocus() {
    if (onLostFocus) {
        onLostFocus();
    }
}

void MemoryRichTextBox::GainFocus() {
    if (onGotFocus) {
        onGotFocus();
    }
}

bool MemoryRichTextBox::TakeKey(int keyCode, int shift) {
    const bool isLetter = keyCode >= 'A' && keyCode <= 'Z';
    const bool isDigit = keyCode >= '0' && keyCode <= '9';
    if (keyCode == MemoryKeyBackspace) {
        Backspace();
    } else if (keyCode == MemoryKeyEnter) {
        PressEnter();
    } else if (isLetter && shift == 0) {
        Type(std::string(1, static_cast<char>(keyCode - 'A' + 'a')));
    } else if ((isLetter && shift == MemoryShift) || (isDigit && shift == 0) || keyCode == MemoryKeyTab ||
               keyCode == MemoryKeyBlank) {
        Type(std::string(1, static_cast<char>(keyCode)));
    }
    return true;
}

bool MemoryRichTextBox::TakesInput() const {
    CheckReachable("a key in the pane");
    return HasFocus() && mFuncBodyAvailable;
}

// Replaces what stands from `start` to before `end`, as the user, who can undo it.
void MemoryRichTextBox::Replace(std::size_t start, std::size_t end, std::string_view text) {
    std::string shown = Shown();
    mUndo.push_back({shown, mCaret});
    mLines.Edit(shown.replace(start, end - start, text));
    mCaret = start + text.size();
    mAnchor = mCaret;
    if (onChange) {
        onChange();
    }
}

void MemoryRichTextBox::ReplaceSelection(std::string_view text) {
    Replace(std::min(mAnchor, mCaret), std::max(mAnchor, mCaret), text);
}

} // namespace tessaly
