// What every pane does with an edit, whoever made it: line breaks, marks and history follow the text.
#include "platform/desktop/RichTextBox.h"

#include "platform/desktop/Window.h"
#include "platform/text/Utf16.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

// Of a text that comes from outside.
Stretch Fresh(std::u16string text) {
    const auto breaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\n'));
    return {std::move(text), std::vector<LineBreak>(breaks, LineBreak::CrLf)};
}

bool IsBreaksAlone(const Stretch& stretch) {
    return stretch.text.size() == stretch.breaks.size();
}

} // namespace

void RichTextBox::MoveCaret(std::size_t position) {
    position = std::min(position, Length());
    SelectEnds({position, position});
    LookAtCaret();
}

Selection RichTextBox::Selected() const {
    const Ends ends = SelectedEnds();
    return {PlaceAt(ends.anchor), PlaceAt(ends.caret)};
}

void RichTextBox::Select(const Selection& selection) {
    SelectEnds({PositionOf(selection.anchor), PositionOf(selection.caret)});
    LookAtCaret();
}

void RichTextBox::SelectAll() {
    SelectEnds({0, Length()});
    LookAtCaret();
}

std::size_t RichTextBox::PositionOf(Place place) const {
    if (place.line >= Count()) {
        return Length();
    }
    const LineSpan span = SpanOf(place.line + 1);
    return std::min(span.begin + place.column, span.end);
}

Place RichTextBox::PlaceAt(std::size_t position) const {
    const std::size_t line = LineAt(position);
    return {line, position - SpanOf(line + 1).begin};
}

std::u16string RichTextBox::TextBetween(Place begin, Place end) const {
    std::u16string text;
    for (std::size_t line = begin.line; line <= std::min(end.line, Count() - 1); ++line) {
        const std::u16string whole = Line(line);
        const std::size_t from = line == begin.line ? std::min(begin.column, whole.size()) : 0;
        const std::size_t to = line == end.line ? end.column : whole.size();
        text += line == begin.line ? u"" : u"\n";
        text += std::u16string_view(whole).substr(from, to - from);
    }
    return text;
}

void RichTextBox::Do(const Edit& edit) {
    if (!mFuncBodyAvailable || edit.changes.empty()) {
        return;
    }
    GoThrough([&] {
        Step step;
        step.before = SelectedEnds();
        for (std::size_t i = edit.changes.size(); i > 0; --i) { // so that the places before stay what they are
            const Change& change = edit.changes[i - 1];
            const std::size_t start = PositionOf(change.begin);
            step.parts.push_back(Put(start, PositionOf(change.end), LineAt(start), Fresh(change.text)));
        }
        step.after = {PositionOf(edit.after.anchor), PositionOf(edit.after.caret)};
        SelectEnds(step.after);
        mHistory.Add(std::move(step), TextHistory::By::Command);
    });
}

bool RichTextBox::Undo() {
    if (!CanUndo()) {
        return false;
    }
    GoThrough([this] {
        const Step& step = mHistory.Undo();
        for (std::size_t i = step.parts.size(); i > 0; --i) {
            const Replacement& part = step.parts[i - 1];
            Put(part.start, part.start + part.added.text.size(), part.firstBreak, part.removed);
        }
        SelectEnds(step.before);
    });
    return true;
}

bool RichTextBox::Redo() {
    if (!CanRedo()) {
        return false;
    }
    GoThrough([this] {
        const Step& step = mHistory.Redo();
        for (const Replacement& part : step.parts) {
            Put(part.start, part.start + part.removed.text.size(), part.firstBreak, part.added);
        }
        SelectEnds(step.after);
    });
    return true;
}

PaneSight RichTextBox::TakeSight() {
    return {SelectedEnds(), Scrolled(), std::exchange(mHistory, {})};
}

void RichTextBox::GiveSight(PaneSight sight) {
    const std::size_t length = Length();
    SelectEnds({std::min(sight.selected.anchor, length), std::min(sight.selected.caret, length)});
    ScrollTo({std::min(sight.scroll.firstLine, Count() - 1), sight.scroll.across});
    mHistory = std::move(sight.history);
    LookAtCaret();
}

// What fails half-way cannot be undone any more.
void RichTextBox::GoThrough(const std::function<void()>& work) {
    try {
        ShowTogether(work);
    } catch (const std::exception&) {
        mHistory.Forget();
        Raise(onChange);
        throw;
    }
    LookAtCaret();
    Raise(onChange);
}

Replacement RichTextBox::Put(std::size_t start, std::size_t end, std::size_t firstBreak, const Stretch& added) {
    Replacement part{start, firstBreak, Fresh(TextBetween(PlaceAt(start), PlaceAt(end))), added};
    ShowReplaced(start, end, added.text);
    part.removed.breaks = mBreaks.Replace(firstBreak, part.removed.breaks.size(), added.breaks);
    FollowEdit(start, part.removed, part.added);
    return part;
}

void RichTextBox::NoteNewText(BreakList breaks) {
    mBreaks = std::move(breaks);
    mHistory.Forget();
    SetLineMarks({});
    SetMatches({});
    LookAtCaret();
    Raise(onChange);
}

void RichTextBox::NoteEdit(std::size_t start, std::u16string removed, std::u16string added) {
    Replacement part{start, LineAt(start), Fresh(std::move(removed)), Fresh(std::move(added))};
    if (IsBreaksAlone(part.removed) && IsBreaksAlone(part.added) &&
        (part.removed.text.empty() || part.added.text.empty())) {
        part.firstBreak += BreaksBehind(start + part.added.text.size());
    }
    part.removed.breaks = mBreaks.Replace(part.firstBreak, part.removed.breaks.size(), part.added.breaks);
    FollowEdit(start, part.removed, part.added);
    const std::size_t before = start + part.removed.text.size();
    const std::size_t after = start + part.added.text.size();
    mHistory.Add({{std::move(part)}, {before, before}, {after, after}}, TextHistory::By::Typing);
}

// How many there are in a row.
std::size_t RichTextBox::BreaksBehind(std::size_t position) const {
    std::size_t line = LineAt(position);
    std::size_t count = 0;
    while (line + 1 < Count() && SpanOf(line + 1).end == position + count) {
        ++line;
        ++count;
    }
    return count;
}

void RichTextBox::FollowEdit(std::size_t start, const Stretch& removed, const Stretch& added) {
    SetMatches({});
    if (mMarks.AreNone()) {
        return;
    }
    const TextEdit edit = {
        start, removed.text.size(), added.text.size(), LineAt(start) + 1, removed.breaks.size(), added.breaks.size()};
    if (mMarks.Follow(edit, [this](std::size_t line) { return SpanOf(line); })) {
        ShowSpots(std::nullopt);
    }
}

void RichTextBox::SetMatches(std::vector<Match> matches) {
    if (matches != mMatches) {
        mMatches = std::move(matches);
        ShowSpots(std::nullopt);
    }
}

void RichTextBox::LookAtCaret() {
    try {
        const Place caret = Selected().caret;
        const std::u16string line = Line(caret.line);
        const bool isBehindBlanks = caret.column == line.size() && !line.empty() && IsBlank({&line.back(), 1});
        const CaretSight before = std::exchange(mCaret, {caret.line, isBehindBlanks, FindBracket(*this, caret)});
        Describe();
        if (mCaret == before) {
            return;
        }
        for (const CaretSight& sight : {before, mCaret}) {
            ShowSpots(sight.line);
            if (sight.brackets) {
                ShowSpots(sight.brackets->bracket.line);
                ShowSpots(sight.brackets->partner.value_or(sight.brackets->bracket).line);
            }
        }
    } catch (const std::exception&) {
        return; // it is no reason for a key to fail
    }
}

std::vector<std::string> RichTextBox::MarksSay(std::size_t line, std::optional<std::size_t> column) const {
    std::vector<std::string> texts;
    for (const LineMark& mark : mFuncBodyAvailable ? mMarks.All() : std::vector<LineMark>()) {
        const auto isIn = [&mark](std::size_t position) {
            return mark.begin < mark.end && mark.begin <= position && position <= mark.end;
        };
        if (mark.line == line + 1 && (!column || isIn(SpanOf(mark.line).begin + *column))) {
            texts.push_back(mark.text);
        }
    }
    return texts;
}

// One character that would be lost stands for all of them.
void RichTextBox::Describe() {
    std::string description;
    const auto add = [&description](const std::string& text) {
        description += (description.empty() || text.empty() ? "" : "; ") + text;
    };
    for (const std::string& text : MarksSay(mCaret.line)) {
        add(text);
    }
    const std::vector<Spot> spots = SpotsOf(mCaret.line);
    const auto lost =
        std::find_if(spots.begin(), spots.end(), [](const Spot& spot) { return spot.kind == Spot::Kind::Lost; });
    if (lost != spots.end() && tellLost) {
        const std::u16string line = Line(mCaret.line);
        add(tellLost(std::u16string_view(line).substr(lost->begin, IsHighSurrogate(line[lost->begin]) ? 2 : 1)));
    }
    if (description != mDescription) {
        mDescription = std::move(description);
        ShowDescription(mDescription);
    }
}

std::vector<Spot> RichTextBox::SpotsOf(std::size_t line, const std::function<LineSpan()>& seen) const {
    if (!mFuncBodyAvailable || line >= Count()) {
        return {};
    }
    std::vector<Spot> spots = FindSpots(Line(line), keeps);
    if (line == mCaret.line && mCaret.isBehindBlanks && !spots.empty()) {
        spots.pop_back();
    }
    const auto first =
        std::lower_bound(mMatches.begin(), mMatches.end(), line,
                         [](const Match& match, std::size_t wanted) { return match.begin.line < wanted; });
    for (auto match = first; match != mMatches.end() && match->begin.line == line; ++match) {
        spots.push_back({Spot::Kind::Match, match->begin.column, match->End().column});
    }
    if (mCaret.brackets) {
        const auto add = [&](Place place) {
            if (place.line == line) {
                const bool isAlone = !mCaret.brackets->partner;
                spots.push_back(
                    {isAlone ? Spot::Kind::LoneBracket : Spot::Kind::Bracket, place.column, place.column + 1});
            }
        };
        add(mCaret.brackets->bracket);
        add(mCaret.brackets->partner.value_or(Place{Count(), 0}));
    }
    constexpr std::size_t manySpots = 500;
    if (spots.size() > manySpots && seen) {
        const LineSpan columns = seen();
        std::erase_if(spots, [&](const Spot& spot) { return spot.end < columns.begin || spot.begin > columns.end; });
    }
    return spots;
}

// Some wheels tell parts of a step.
void RichTextBox::TellCtrlWheel(int delta) {
    constexpr int step = 120;
    mWheel += delta;
    const int steps = mWheel / step;
    mWheel -= steps * step;
    if (steps != 0) {
        Raise(onCtrlWheel, steps);
    }
}

bool RichTextBox::TakesKey(const PaneKey& key) {
    if (!mFuncBodyAvailable) {
        return false;
    }
    bool isTaken = Raise(onKey, key);
    if (!isTaken && ((key.keyCode == 'Z' && key.shift == 2) || (key.keyCode == KeyBackspace && key.shift == 4))) {
        Undo();
        isTaken = true;
    } else if (!isTaken && ((key.keyCode == 'Y' && key.shift == 2) || (key.keyCode == 'Z' && key.shift == 3))) {
        Redo();
        isTaken = true;
    }
    return isTaken;
}

} // namespace tessaly
