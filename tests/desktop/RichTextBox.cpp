// The pane knows LF only, as controls do; LineBreaks remembers what the breaks were.
#include "tests/desktop/RichTextBox.h"

#include "platform/text/Utf8.h"
#include "tests/desktop/Keys.h"
#include "tests/desktop/TestFailure.h"

#include <algorithm>
#include <utility>

namespace tessaly::memory {

namespace {

std::size_t CharacterEnd(std::string_view text, std::size_t start) {
    std::size_t end = start + 1;
    while (end < text.size() && IsContinuation(text[end])) {
        ++end;
    }
    return end;
}

std::size_t CharacterBefore(std::string_view text, std::size_t end) {
    std::size_t start = end - 1;
    while (start > 0 && IsContinuation(text[start])) {
        --start;
    }
    return start;
}

// A character of four bytes is two units.
std::size_t Utf16Units(std::string_view text) {
    std::size_t units = 0;
    for (const char byte : text) {
        units += IsContinuation(byte) ? 0 : static_cast<unsigned char>(byte) >= 0xF0 ? 2 : 1;
    }
    return units;
}

std::string WithLineFeeds(std::string_view text) {
    LineBreaks breaks;
    breaks.Set(text);
    return breaks.Shown();
}

} // namespace

std::string RichTextBox::Text() const {
    CountCall();
    return mLines.Text();
}

void RichTextBox::SetText(std::string_view text) {
    CountCall();
    mLines.Set(text);
    mCaret = 0;
    mAnchor = 0;
    mUndo.clear();
    ForgetMarks();
    Raise(onChange);
}

float RichTextBox::CharacterWidth() const {
    CountCall();
    return 120;
}

void RichTextBox::SetTabStops(const std::vector<float>& stops) {
    CountCall();
    mTabStops = stops;
}

std::size_t RichTextBox::CaretPosition() const {
    CountCall();
    return Utf16Units(std::string_view(Shown()).substr(0, mCaret));
}

void RichTextBox::MoveCaret(std::size_t position) {
    CountCall();
    SetCaret(PlaceOf(position));
}

bool RichTextBox::Click() {
    CheckReachable("a click into the pane");
    if (FuncBodyAvailable()) {
        MoveHere();
    }
    return FuncBodyAvailable();
}

bool RichTextBox::Type(std::string_view text) {
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

bool RichTextBox::PressEnter() {
    return Type("\n");
}

bool RichTextBox::Backspace() {
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

bool RichTextBox::Paste(std::string_view text) {
    if (!TakesInput()) {
        return false;
    }
    ReplaceSelection(WithLineFeeds(text));
    return true;
}

bool RichTextBox::Undo() {
    if (!TakesInput() || mUndo.empty()) {
        return false;
    }
    const State state = std::move(mUndo.back());
    mUndo.pop_back();
    ShowEdited(state.shown);
    mCaret = state.caret;
    mAnchor = state.caret;
    Raise(onChange);
    return true;
}

void RichTextBox::SetCaret(std::size_t position) {
    if (position > Shown().size() || (position < Shown().size() && IsContinuation(Shown()[position]))) {
        throw ImpossibleAction("the caret cannot stand at " + std::to_string(position));
    }
    mCaret = position;
    mAnchor = position;
}

void RichTextBox::SelectAll() {
    mAnchor = 0;
    mCaret = Shown().size();
}

std::vector<std::string> RichTextBox::MarginShown() const {
    std::vector<std::string> lines;
    for (std::size_t line = 1; FuncBodyAvailable() && line <= LineCount(); ++line) {
        const Mark mark = Marks().On(line);
        lines.push_back(std::to_string(line) + (mark == Mark::Error     ? " error"
                                                : mark == Mark::Warning ? " warning"
                                                                        : ""));
    }
    return lines;
}

std::vector<std::string> RichTextBox::Underlined() const {
    std::vector<std::string> texts;
    for (const LineMark& mark : Marks().All()) {
        const std::size_t begin = PlaceOf(mark.begin);
        if (FuncBodyAvailable() && mark.begin < mark.end) {
            texts.push_back(Shown().substr(begin, PlaceOf(mark.end) - begin));
        }
    }
    return texts;
}

// The byte that this unit begins at, or the end.
std::size_t RichTextBox::PlaceOf(std::size_t position) const {
    const std::string_view shown = Shown();
    std::size_t end = 0;
    while (end < shown.size() && Utf16Units(shown.substr(0, end)) < position) {
        end = CharacterEnd(shown, end);
    }
    return end;
}

LineSpan RichTextBox::SpanOf(std::size_t line) const {
    const std::string_view shown = Shown();
    std::size_t begin = 0;
    for (; line > 1; --line) {
        begin = shown.find('\n', begin) + 1;
    }
    return {Utf16Units(shown.substr(0, begin)), Utf16Units(shown.substr(0, shown.find('\n', begin)))};
}

void RichTextBox::ShowEdited(const std::string& shown) {
    const Difference difference = mLines.Edit(shown);
    const std::string_view front = std::string_view(Shown()).substr(0, difference.start);
    FollowEdit({Utf16Units(front), Utf16Units(difference.removed), Utf16Units(difference.added), CountBreaks(front) + 1,
                CountBreaks(difference.removed), CountBreaks(difference.added)});
}

bool RichTextBox::TakeKey(int keyCode, int shift) {
    const bool isLetter = keyCode >= 'A' && keyCode <= 'Z';
    const bool isDigit = keyCode >= '0' && keyCode <= '9';
    if (keyCode == KeyBackspace) {
        Backspace();
    } else if (keyCode == KeyEnter) {
        PressEnter();
    } else if (isLetter && shift == 0) {
        Type(std::string(1, static_cast<char>(keyCode - 'A' + 'a')));
    } else if ((isLetter && shift == Shift) || (isDigit && shift == 0) || keyCode == KeyTab || keyCode == KeyBlank) {
        Type(std::string(1, static_cast<char>(keyCode)));
    }
    return true;
}

bool RichTextBox::TakesInput() const {
    CheckReachable("a key in the pane");
    return HasFocus() && FuncBodyAvailable();
}

// Replaces the text from `start` to before `end`, as the user, who can undo it.
void RichTextBox::Replace(std::size_t start, std::size_t end, std::string_view text) {
    std::string shown = Shown();
    mUndo.push_back({shown, mCaret});
    ShowEdited(shown.replace(start, end - start, text));
    mCaret = start + text.size();
    mAnchor = mCaret;
    Raise(onChange);
}

void RichTextBox::ReplaceSelection(std::string_view text) {
    Replace(std::min(mAnchor, mCaret), std::max(mAnchor, mCaret), text);
}

} // namespace tessaly::memory
