// The pane knows LF only, as controls do. All that counts is in bytes, what the program asks for in units of UTF-16.
#include "tests/desktop/RichTextBox.h"

#include "platform/desktop/Window.h"
#include "platform/text/Utf16.h"
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
    return BreakList().Set(text);
}

std::size_t CountBreaks(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

std::u16string Units(std::string_view text) {
    std::u16string units;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = ReadUtf8(text, position);
        if (character >= FirstOfTwoUnits) {
            units += HighSurrogate(character);
            units += LowSurrogate(character);
        } else {
            units += static_cast<char16_t>(character);
        }
    }
    return units;
}

std::string Bytes(std::u16string_view units) {
    std::string text;
    for (std::size_t at = 0; at < units.size(); ++at) {
        const bool isPair = IsHighSurrogate(units[at]) && at + 1 < units.size();
        AppendUtf8(isPair ? JoinSurrogates(units[at], units[at + 1]) : units[at], text);
        at += isPair ? 1U : 0U;
    }
    return text;
}

} // namespace

std::string RichTextBox::ShownText() const {
    CountCall();
    return mShown;
}

void RichTextBox::SetText(std::string_view text) {
    CountCall();
    BreakList breaks;
    mShown = breaks.Set(text);
    mCaret = 0;
    mAnchor = 0;
    NoteNewText(std::move(breaks));
}

float RichTextBox::CharacterWidth() const {
    CountCall();
    return 120;
}

void RichTextBox::SetTabStops(const std::vector<float>& stops) {
    CountCall();
    mTabStops = stops;
}

std::size_t RichTextBox::Count() const {
    return CountBreaks(mShown) + 1;
}

std::u16string RichTextBox::Line(std::size_t index) const {
    return Units(LineBytes(index));
}

CLineState RichTextBox::StateBefore(std::size_t index) const {
    CLineState state = CLineState::Code;
    std::vector<CToken> tokens;
    for (std::size_t line = 0; line < index; ++line) {
        state = ScanCLine(Line(line), state, tokens);
    }
    return state;
}

Ends RichTextBox::SelectedEnds() const {
    const auto units = [this](std::size_t bytes) { return Utf16Units(std::string_view(mShown).substr(0, bytes)); };
    return {units(mAnchor), units(mCaret)};
}

void RichTextBox::SelectEnds(const Ends& ends) {
    CountCall();
    mAnchor = PlaceOf(ends.anchor);
    mCaret = PlaceOf(ends.caret);
}

void RichTextBox::ShowReplaced(std::size_t start, std::size_t end, std::u16string_view text) {
    CountCall();
    const std::size_t from = PlaceOf(start);
    mShown.replace(from, PlaceOf(end) - from, Bytes(text));
    mCaret = from;
    mAnchor = from;
}

void RichTextBox::Do(Clip step) {
    CountCall();
    if (step == Clip::Paste) {
        if (FuncBodyAvailable()) {
            ReplaceSelection(WithLineFeeds(Clipboard()));
        }
    } else if (mCaret != mAnchor) {
        const std::size_t start = std::min(mCaret, mAnchor);
        Clipboard() = mShown.substr(start, std::max(mCaret, mAnchor) - start);
        if (step == Clip::Cut) {
            ReplaceSelection("");
        }
    }
}

bool RichTextBox::Click() {
    CheckReachable("a click into the pane");
    if (FuncBodyAvailable()) {
        MoveHere();
    }
    return FuncBodyAvailable();
}

float RichTextBox::LeftOf(std::size_t position) const {
    const std::string_view before = std::string_view(mShown).substr(0, position);
    float across = 0;
    for (const char byte : before.substr(before.rfind('\n') + 1)) {
        const auto stop = std::upper_bound(mTabStops.begin(), mTabStops.end(), across);
        if (byte == '\t' && stop != mTabStops.end()) {
            across = *stop;
        } else if (!IsContinuation(byte)) {
            across += CharacterWidth();
        }
    }
    return across * static_cast<float>(Zoom()) / 100 - static_cast<float>(mScroll.across);
}

bool RichTextBox::CtrlClick(std::size_t position) {
    if (!Click()) {
        return false;
    }
    SetCaret(position);
    Raise(onCtrlClick);
    return true;
}

bool RichTextBox::RightClick(std::size_t position) {
    if (!Click()) {
        return false;
    }
    const auto [first, last] = std::minmax(mAnchor, mCaret);
    if (position < first || position >= last) {
        SetCaret(position);
    }
    Raise(onMenu, ScreenPlace{});
    return true;
}

bool RichTextBox::Type(std::string_view text) {
    const std::string typed = WithLineFeeds(text);
    for (std::size_t start = 0; start < typed.size();) {
        const std::size_t end = CharacterEnd(typed, start);
        const std::string_view character = std::string_view(typed).substr(start, end - start);
        if (character == "\n" ? !PressEnter() : !TakesInput()) {
            return false;
        }
        if (character != "\n" && (character < " " || !TakesKey({0, 0, Units(character).front()}))) {
            ReplaceSelection(character);
        }
        start = end;
    }
    return TakesInput();
}

bool RichTextBox::PressEnter() {
    return TakesInput() && (TakesKey({KeyEnter, 0, 0}) || Insert("\n"));
}

bool RichTextBox::Backspace() {
    return TakesInput() && (TakesKey({KeyBackspace, 0, 0}) || TakeBack());
}

bool RichTextBox::Paste(std::string_view text) {
    if (!TakesInput()) {
        return false;
    }
    Clipboard() = text;
    return TakeKey('V', Ctrl);
}

bool RichTextBox::Insert(std::string_view text) {
    ReplaceSelection(text);
    return true;
}

bool RichTextBox::TakeBack() {
    if (mCaret == 0 && mAnchor == 0) {
        return false;
    }
    if (mCaret != mAnchor) {
        ReplaceSelection("");
    } else {
        Replace(CharacterBefore(mShown, mCaret), mCaret, "");
    }
    return true;
}

void RichTextBox::SetCaret(std::size_t position) {
    if (position > mShown.size() || (position < mShown.size() && IsContinuation(mShown[position]))) {
        throw ImpossibleAction("the caret cannot stand at " + std::to_string(position));
    }
    mCaret = position;
    mAnchor = position;
    LookAtCaret();
}

std::vector<std::string> RichTextBox::MarginShown() const {
    std::vector<std::string> lines;
    for (std::size_t line = 1; FuncBodyAvailable() && line <= Count(); ++line) {
        const Mark mark = Marks().On(line);
        lines.push_back(std::to_string(line) + (mark == Mark::Error     ? " error"
                                                : mark == Mark::Warning ? " warning"
                                                                        : ""));
    }
    return lines;
}

std::uint32_t RichTextBox::ColourBehind(std::size_t position) const {
    const std::size_t line = CountBreaks(std::string_view(mShown).substr(0, position));
    const std::size_t before = mShown.substr(0, position).rfind('\n') + 1;
    const std::size_t column = Utf16Units(std::string_view(mShown).substr(before, position - before));
    std::uint32_t colour = line == CurrentLine() ? 1 : 0;
    for (const Spot& spot : SpotsOf(line)) {
        if (spot.begin <= column && column < spot.end) {
            colour = static_cast<std::uint32_t>(spot.kind) + 2;
        }
    }
    return colour;
}

std::vector<std::string> RichTextBox::Underlined() const {
    std::vector<std::string> texts;
    for (const LineMark& mark : Marks().All()) {
        const std::size_t begin = PlaceOf(mark.begin);
        if (FuncBodyAvailable() && mark.begin < mark.end) {
            texts.push_back(mShown.substr(begin, PlaceOf(mark.end) - begin));
        }
    }
    return texts;
}

// The byte that this unit begins at, or the end.
std::size_t RichTextBox::PlaceOf(std::size_t position) const {
    const std::string_view shown = mShown;
    std::size_t end = 0;
    while (end < shown.size() && Utf16Units(shown.substr(0, end)) < position) {
        end = CharacterEnd(shown, end);
    }
    return end;
}

std::string_view RichTextBox::LineBytes(std::size_t index) const {
    std::size_t begin = 0;
    for (; index > 0; --index) {
        begin = mShown.find('\n', begin) + 1;
    }
    return std::string_view(mShown).substr(begin, mShown.find('\n', begin) - begin);
}

LineSpan RichTextBox::SpanOf(std::size_t line) const {
    const std::string_view bytes = LineBytes(line - 1);
    const auto before = static_cast<std::size_t>(bytes.data() - mShown.data());
    const std::size_t begin = Utf16Units(std::string_view(mShown).substr(0, before));
    return {begin, begin + Utf16Units(bytes)};
}

std::size_t RichTextBox::LineAt(std::size_t position) const {
    return CountBreaks(std::string_view(mShown).substr(0, PlaceOf(position)));
}

bool RichTextBox::TakeKey(int keyCode, int shift) {
    const bool isLetter = keyCode >= 'A' && keyCode <= 'Z';
    const bool isDigit = keyCode >= '0' && keyCode <= '9';
    if (TakesInput() && IsMenuKey(keyCode, shift)) {
        Raise(onMenu, ScreenPlace{});
        return true;
    }
    if (!TakesInput() || TakesKey({keyCode, shift, 0})) {
        return true;
    }
    if (keyCode == KeyBackspace && shift == 0) {
        TakeBack();
    } else if (keyCode == KeyEnter && (shift & ~Shift) == 0) {
        Insert("\n");
    } else if (keyCode == 'A' && shift == Ctrl) {
        SelectAll();
    } else if (keyCode == 'C' && shift == Ctrl) {
        Do(Clip::Copy);
    } else if (keyCode == 'X' && shift == Ctrl) {
        Do(Clip::Cut);
    } else if (keyCode == 'V' && shift == Ctrl) {
        Do(Clip::Paste);
    } else if (isLetter && shift == 0) {
        Type(std::string(1, static_cast<char>(keyCode - 'A' + 'a')));
    } else if ((isLetter && shift == Shift) || (isDigit && shift == 0) ||
               ((keyCode == KeyTab || keyCode == KeyBlank) && (shift & ~Shift) == 0)) {
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
    const std::size_t position = Utf16Units(std::string_view(mShown).substr(0, start));
    std::u16string removed = Units(std::string_view(mShown).substr(start, end - start));
    mShown.replace(start, end - start, text);
    mCaret = start + text.size();
    mAnchor = mCaret;
    NoteEdit(position, std::move(removed), Units(text));
    LookAtCaret();
    Raise(onChange);
}

void RichTextBox::ReplaceSelection(std::string_view text) {
    Replace(std::min(mAnchor, mCaret), std::max(mAnchor, mCaret), text);
}

} // namespace tessaly::memory
