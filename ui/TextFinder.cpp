// The pane selects what is found, wherever the keyboard is, and sets all matches apart.
#include "ui/TextFinder.h"

#include "platform/text/Utf16.h"
#include "ui/Command.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tessaly {

namespace {

using Purpose = FindBar::Purpose;

std::optional<Purpose> PurposeOf(int keyCode, int shift) {
    constexpr int control = 2;
    constexpr int controlWithShift = 3;
    if (keyCode == 'F' && shift == controlWithShift) {
        return Purpose::Everywhere;
    }
    if (shift != control) {
        return std::nullopt;
    }
    switch (keyCode) {
    case 'F':
        return Purpose::Find;
    case 'H':
        return Purpose::Replace;
    case 'G':
        return Purpose::Line;
    default:
        return std::nullopt;
    }
}

} // namespace

TextFinder::TextFinder(Desktop& desktop) : mDesktop(desktop), mPane(desktop.FuncBody()), mBar(desktop) {
    mBar.onChange = [this] { Find(); };
    mBar.onGo = [this](bool isForward) { Go(isForward); };
    mBar.onReplaceOne = [this] { ReplaceOne(); };
    mBar.onReplaceAll = [this] { ReplaceAll(); };
    mBar.onClosed = [this] { Closed(); };
}

bool TextFinder::IsFinding() const {
    return mBar.OpenFor() == Purpose::Find || mBar.OpenFor() == Purpose::Replace;
}

bool TextFinder::TakeKey(int keyCode, int shift) {
    const std::optional<Purpose> purpose = PurposeOf(keyCode, shift);
    if (!purpose) {
        return mBar.TakeKey(keyCode, shift);
    }
    if (mPane.FuncBodyAvailable() || purpose == Purpose::Everywhere) {
        Attempt([&] { Open(*purpose); });
    }
    return true;
}

void TextFinder::Open(Purpose purpose) {
    mBar.Open(purpose, FirstContent(purpose));
    mIsBehind = true;
    WhenIdle();
}

// What is selected in one line, and the number of the line.
std::optional<std::string> TextFinder::FirstContent(Purpose purpose) const {
    const Selection selected = mPane.Selected();
    if (purpose == Purpose::Line) {
        return std::to_string(selected.caret.line + 1);
    }
    if (selected.IsEmpty() || selected.anchor.line != selected.caret.line || !mPane.FuncBodyAvailable()) {
        return std::nullopt;
    }
    return ToUtf8(mPane.TextBetween(selected.Begin(), selected.End()));
}

void TextFinder::NoteItem() {
    mIsBehind = true;
    if (!mPane.FuncBodyAvailable() && mBar.OpenFor() != Purpose::Everywhere) {
        mBar.Close();
    }
}

void TextFinder::WhenIdle() {
    if (!mIsBehind || !IsFinding()) {
        return;
    }
    mIsBehind = false;
    mMatches = FindAll(mPane.Text(), mBar.Wanted(), mBar.Options());
    mPane.SetMatches(mMatches);
    ShowCount();
}

// As the user types, from where the selection begins: so it grows with what is typed.
void TextFinder::Find() {
    mIsBehind = true;
    WhenIdle();
    if (IsFinding()) {
        const Place begin = mPane.Selected().Begin();
        mPane.Select({begin, begin}); // where there is no match, the last one does not look like it
        SelectNext(begin, true);
    }
}

void TextFinder::Go(bool isForward) {
    if (mBar.OpenFor() == Purpose::Line) {
        GoToLine();
    } else if (mBar.OpenFor() == Purpose::Everywhere) {
        GoEverywhere();
    } else {
        WhenIdle();
        SelectNext(isForward ? mPane.Selected().End() : mPane.Selected().Begin(), isForward);
    }
}

// The nearest line that is there. What is no number leads nowhere.
void TextFinder::GoToLine() {
    const std::string wanted = mBar.Wanted();
    std::size_t line = 0;
    const auto [end, error] = std::from_chars(wanted.data(), wanted.data() + wanted.size(), line);
    if (error == std::errc::invalid_argument || end != wanted.data() + wanted.size()) {
        return;
    }
    const std::size_t last = mPane.Count();
    const Place begin = {error == std::errc() ? std::clamp<std::size_t>(line, 1, last) - 1 : last - 1, 0};
    mBar.Close();
    mPane.Select({begin, begin});
}

void TextFinder::GoEverywhere() {
    const std::string wanted = mBar.Wanted();
    const std::size_t count = onEverywhere(wanted, mBar.Options());
    mBar.ShowCount(wanted.empty() ? "" : count > 0 ? std::to_string(count) : Words(OwnText::NothingFound));
}

void TextFinder::SelectNext(Place from, bool isForward) {
    if (!mMatches.empty()) {
        const Match& match = mMatches[NextMatch(mMatches, from, isForward)];
        mPane.Select({match.begin, match.End()});
    }
    ShowCount();
}

// The match that is selected; where none is, the next one is selected first.
void TextFinder::ReplaceOne() {
    WhenIdle();
    const Selection selected = mPane.Selected();
    const auto match = std::find_if(mMatches.begin(), mMatches.end(), [&](const Match& each) {
        return each.begin == selected.Begin() && each.End() == selected.End();
    });
    if (match != mMatches.end()) {
        Replace({*match});
        WhenIdle();
    }
    SelectNext(mPane.Selected().End(), true);
}

void TextFinder::ReplaceAll() {
    WhenIdle();
    if (mMatches.empty()) {
        return;
    }
    const std::string count = std::to_string(mMatches.size());
    Replace(mMatches);
    WhenIdle();
    mBar.ShowCount(count + Words(OwnText::Replaced));
}

void TextFinder::Replace(const std::vector<Match>& matches) {
    mPane.Do(tessaly::ReplaceAll(matches, ToUtf16(mBar.Replacement())));
    mIsBehind = true;
    onEdited();
}

// Which of them is selected, if one is.
void TextFinder::ShowCount() {
    if (mBar.Wanted().empty()) {
        mBar.ShowCount("");
        return;
    }
    if (mMatches.empty()) {
        mBar.ShowCount(Words(OwnText::NothingFound));
        return;
    }
    const Selection selected = mPane.Selected();
    const auto match = std::find_if(mMatches.begin(), mMatches.end(),
                                    [&](const Match& each) { return each.begin == selected.Begin(); });
    const bool isSelected = match != mMatches.end() && match->End() == selected.End();
    const std::string number = isSelected ? std::to_string(match - mMatches.begin() + 1) : "-";
    mBar.ShowCount(number + Words(OwnText::MatchOf) + std::to_string(mMatches.size()));
}

void TextFinder::SetLanguage(std::uint8_t language) {
    mLanguage = language;
    mBar.SetLanguage(language);
    if (IsFinding()) {
        ShowCount();
    }
}

void TextFinder::Closed() {
    mMatches.clear();
    mPane.SetMatches({});
    if (mPane.FuncBodyAvailable()) {
        mPane.SetFocus();
    } else {
        mDesktop.CodeTree().SetFocus();
    }
}

} // namespace tessaly
