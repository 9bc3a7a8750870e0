// A list comes up with what was known when it did, and narrows while the word in it goes on.
#include "ui/TypingHelp.h"

#include "editing/ParameterHint.h"
#include "platform/desktop/Window.h"
#include "platform/text/Ascii.h"
#include "platform/text/Utf16.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

constexpr std::size_t MostNamesShown = 200; // whoever wants another one types on
constexpr std::size_t RowsInPage = 8;
constexpr char16_t Deleted = u'\b';

// The character that a save would lose on either side of `column`; "" without one.
std::u16string_view LostBeside(std::u16string_view line, std::size_t column, const std::vector<Spot>& spots) {
    for (const std::size_t at : {column, column - 1}) {
        const auto spot = std::find_if(spots.begin(), spots.end(), [at](const Spot& each) {
            return each.kind == Spot::Kind::Lost && each.begin <= at && at < each.end;
        });
        if (spot != spots.end()) {
            const std::size_t begin = at > 0 && IsLowSurrogate(line[at]) && IsHighSurrogate(line[at - 1]) ? at - 1 : at;
            const bool isPair =
                IsHighSurrogate(line[begin]) && begin + 1 < spot->end && IsLowSurrogate(line[begin + 1]);
            return line.substr(begin, isPair ? 2 : 1);
        }
    }
    return {};
}

// The texts one below the other, in lines that fit on any screen.
std::string InLines(const std::vector<std::string>& texts) {
    constexpr std::size_t widest = 100; // bytes
    constexpr std::size_t most = 12;
    std::string lines;
    std::size_t count = 0;
    for (std::string_view rest : texts) {
        while (!rest.empty()) {
            std::string_view line = Utf8Front(rest, widest);
            if (line.size() < rest.size() && line.find(' ', 1) != std::string_view::npos) {
                line = line.substr(0, line.rfind(' '));
            }
            if (count == most) {
                return lines + "\n\xE2\x80\xA6";
            }
            lines.append(count++ == 0 ? "" : "\n").append(line);
            rest = TrimFront(rest.substr(line.size()));
        }
    }
    return lines;
}

bool IsMoving(int keyCode) {
    return keyCode >= KeyPageUp && keyCode <= KeyDown;
}

} // namespace

TypingHelp::TypingHelp(RichTextBox& pane, Suggestions& suggestions, Known known)
    : mPane(pane),
      mSuggestions(suggestions),
      mAsk(std::move(known)) {
    mSuggestions.onPick = [this](std::size_t row) { Accept(row); };
    mSuggestions.onTip = [this](std::size_t line, std::optional<std::size_t> column) { return TipAt(line, column); };
}

bool TypingHelp::TakeKey(const PaneKey& key) {
    mTyped = key.character;
    if (key.character != 0 || IsModifierKey(key.keyCode)) {
        return false;
    }
    if (key.keyCode == KeyBlank && key.shift == 2) {
        Open(mPane.Selected().caret);
        return true;
    }
    if (mSuggestions.IsListShown() && TakeListKey(key)) {
        return true;
    }
    if (key.keyCode == KeyEscape && mSuggestions.IsHintShown()) {
        Close();
        return true;
    }
    if ((key.keyCode == KeyBackspace || key.keyCode == KeyDelete || key.keyCode == KeyEnter) && key.shift == 0) {
        mTyped = Deleted;
    } else if (IsMoving(key.keyCode) || (key.shift & ~1) != 0) {
        Close();
    }
    return false;
}

// Enter for a word that is whole already is meant for the text.
bool TypingHelp::TakeListKey(const PaneKey& key) {
    const std::size_t row = mSuggestions.Selected();
    if (key.shift != 0) {
        return false;
    }
    switch (key.keyCode) {
    case KeyUp:
        mSuggestions.Select(row - std::min<std::size_t>(row, 1));
        return true;
    case KeyDown:
        mSuggestions.Select(row + 1);
        return true;
    case KeyPageUp:
        mSuggestions.Select(row - std::min(row, RowsInPage));
        return true;
    case KeyPageDown:
        mSuggestions.Select(row + RowsInPage);
        return true;
    case KeyEscape:
        mSuggestions.HideList();
        return true;
    case KeyEnter:
    case KeyTab:
        if (mCompletion->names[row]->name == mCompletion->typed) {
            mSuggestions.HideList();
            return false;
        }
        Accept(row);
        return true;
    default:
        return false;
    }
}

void TypingHelp::FollowChange() {
    const char16_t typed = std::exchange(mTyped, u'\0');
    if (typed == 0) {
        Close();
        return;
    }
    const Place caret = mPane.Selected().caret;
    if (mSuggestions.IsListShown()) {
        Narrow(caret);
    } else if (typed != Deleted && IsThirdLetter(mPane, caret)) {
        Open(caret);
    }
    if (typed == u'(') {
        mKnown = mAsk(caret);
        mSuggestions.HideList();
    }
    if (typed == u'(' || mSuggestions.IsHintShown()) {
        ShowHint(caret);
    }
}

void TypingHelp::Close() {
    mSuggestions.HideList();
    mSuggestions.HideHint();
    mKnown.clear();
    mCompletion.reset();
}

// What marks say, and below it what is known of the character. That cannot be asked for anew while it is shown.
std::string TypingHelp::TipAt(std::size_t line, std::optional<std::size_t> column) {
    if (!mPane.FuncBodyAvailable() || mSuggestions.IsListShown() || mSuggestions.IsHintShown() ||
        line >= mPane.Count()) {
        return "";
    }
    std::string tip = InLines(mPane.MarksSay(line, column));
    const std::string ofCharacter = column ? TipOfCharacter({line, *column}) : "";
    return tip + (tip.empty() || ofCharacter.empty() ? "" : "\n") + ofCharacter;
}

// What is lost there, or else the declaration of the name.
std::string TypingHelp::TipOfCharacter(Place place) {
    const std::u16string line = mPane.Line(place.line);
    const std::size_t column = std::min(place.column, line.size());
    if (const auto lost = LostBeside(line, column, mPane.SpotsOf(place.line)); !lost.empty()) {
        return mPane.tellLost(lost);
    }
    const Word word = WordBeside(line, column);
    if (word.Length() == 0) {
        return "";
    }
    const std::optional<NamedPlace> found = NameAt(mPane, place, mAsk({place.line, word.end}));
    return found ? found->name->declaration : "";
}

// The word that is being typed is none of the names.
void TypingHelp::Open(Place caret) {
    const std::u16string line = mPane.Line(caret.line);
    mKnown = mAsk({caret.line, WordBeside(line, caret.column).begin});
    mCompletion.reset();
    Narrow(caret);
}

void TypingHelp::Narrow(Place caret) {
    std::optional<Completion> completion = CompletionAt(mPane, caret, mKnown);
    const bool isSameWord = completion && (!mCompletion || mCompletion->begin == completion->begin);
    const bool isWhole = isSameWord && completion->names.size() == 1 && completion->names[0]->name == completion->typed;
    if (!isSameWord || isWhole) {
        mSuggestions.HideList();
        return;
    }
    std::vector<SuggestedName> rows;
    for (const CName* const name : completion->names) {
        if (rows.size() < MostNamesShown) {
            rows.push_back({name->name, name->declaration});
        }
    }
    mCompletion = std::move(completion);
    mSuggestions.ShowList(rows, mCompletion->begin);
}

void TypingHelp::ShowHint(Place caret) {
    if (const std::optional<ParameterHint> hint = ParameterHintAt(mPane, caret, mKnown)) {
        mSuggestions.ShowHint({hint->declaration, hint->begin, hint->end}, hint->open);
    } else {
        mSuggestions.HideHint();
    }
}

// It counts as typing: the parameters stay.
void TypingHelp::Accept(std::size_t row) {
    const std::u16string name = ToUtf16(mCompletion->names.at(row)->name);
    const Place after = {mCompletion->begin.line, mCompletion->begin.column + name.size()};
    mSuggestions.HideList();
    mTyped = Deleted;
    mPane.Do({{{mCompletion->begin, mCompletion->end, name}}, {after, after}});
}

} // namespace tessaly
