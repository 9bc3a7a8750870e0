// One step in is what the text itself does: tabs, or as many blanks as it begins lines with.
#include "editing/Indenting.h"

#include "editing/Brackets.h"

#include <utility>

namespace tessaly {

namespace {

constexpr std::size_t LinesLookedAt = 200; // for what a step is

std::u16string IndentOf(const TextLines& lines, std::size_t line) {
    const std::u16string text = lines.Line(line);
    return text.substr(0, IndentLength(text));
}

// By how much `inner` goes further in than `outer`, "" for not at all.
std::u16string StepBetween(const std::u16string& outer, const std::u16string& inner) {
    if (inner.size() <= outer.size() || !inner.starts_with(outer)) {
        return u"";
    }
    return inner[outer.size()] == u'\t' ? u"\t" : inner.substr(outer.size());
}

// The step that is nearest above `line`, or else below it.
std::u16string StepAt(const TextLines& lines, std::size_t line) {
    const std::size_t first = line - std::min(line, LinesLookedAt);
    const std::size_t end = std::min(lines.Count(), line + LinesLookedAt);
    std::u16string step;
    std::u16string indent = IndentOf(lines, line);
    for (std::size_t at = line; step.empty() && at-- > first;) {
        if (const std::u16string text = lines.Line(at); !IsBlank(text)) {
            step = StepBetween(text.substr(0, IndentLength(text)), std::exchange(indent, IndentOf(lines, at)));
        }
    }
    indent = IndentOf(lines, line);
    for (std::size_t at = line + 1; step.empty() && at < end; ++at) {
        if (const std::u16string text = lines.Line(at); !IsBlank(text)) {
            step = StepBetween(std::exchange(indent, IndentOf(lines, at)), text.substr(0, IndentLength(text)));
        }
    }
    return step.empty() ? u"\t" : step;
}

bool IsBehindOpenBrace(const TextLines& lines, Place place) {
    const std::u16string text = lines.Line(place.line);
    const std::size_t last = place.column == 0 ? std::u16string::npos : text.find_last_not_of(u" \t", place.column - 1);
    return last != std::u16string::npos && text[last] == u'{' && PartsOf(lines, place.line)[last] == CPart::Code;
}

bool IsBeforeCloseBrace(const TextLines& lines, Place place) {
    const std::u16string text = lines.Line(place.line);
    const std::size_t first = text.find_first_not_of(u" \t", place.column);
    return first != std::u16string::npos && text[first] == u'}' && PartsOf(lines, place.line)[first] == CPart::Code;
}

// How many units in front of `line` one step out takes away.
std::size_t StepOut(std::u16string_view line, std::size_t tabWidth) {
    const std::size_t blanks = std::min(line.find_first_not_of(u' '), line.size());
    if (blanks >= tabWidth) {
        return tabWidth;
    }
    return blanks < line.size() && line[blanks] == u'\t' ? blanks + 1 : blanks;
}

} // namespace

LineRange LinesOf(const Selection& selection) {
    const Place begin = selection.Begin();
    const Place end = selection.End();
    const bool onlyEnds = end.column == 0 && end.line > begin.line;
    return {begin.line, end.line - (onlyEnds ? 1 : 0)};
}

Place MovedBy(const std::vector<Change>& changes, Place place) {
    Place moved = place;
    for (const Change& change : changes) {
        if (change.begin.line != place.line || change.begin.column >= place.column) {
            continue;
        }
        const std::size_t taken = std::min(change.end.column, place.column) - change.begin.column;
        moved.column += change.end.column <= place.column ? change.text.size() : 0;
        moved.column -= taken;
    }
    return moved;
}

Edit PressEnter(const TextLines& lines, const Selection& selection) {
    const Place begin = selection.Begin();
    Place end = selection.End();
    const std::u16string last = lines.Line(end.line);
    std::u16string indent = IndentOf(lines, begin.line);
    if (begin.column >= indent.size()) { // what goes to the new line begins with the indent alone
        end.column = std::min(last.find_first_not_of(u" \t", end.column), last.size());
    }
    indent.resize(std::min(indent.size(), begin.column));
    const bool isOpen = IsBehindOpenBrace(lines, begin);
    const bool isClosed = IsBeforeCloseBrace(lines, end);
    const std::u16string inner = isOpen ? indent + StepAt(lines, begin.line) : indent;
    std::u16string text = u"\n" + inner;
    Place after = {begin.line + 1, inner.size()};
    if (isOpen && isClosed) {
        text += u"\n" + indent;
    } else if (isClosed) {
        const std::optional<Place> brace = FindOpenBrace(lines, begin);
        const std::u16string outer = brace ? IndentOf(lines, brace->line) : indent;
        text = u"\n" + outer;
        after.column = outer.size();
    }
    return {{{begin, end, text}}, {after, after}};
}

std::optional<Edit> PressCloseBrace(const TextLines& lines, const Selection& selection) {
    const Place begin = selection.Begin();
    const std::u16string before = lines.Line(begin.line).substr(0, begin.column);
    if (!IsBlank(before) || lines.StateBefore(begin.line) != CLineState::Code) {
        return std::nullopt;
    }
    const std::optional<Place> brace = FindOpenBrace(lines, begin);
    const std::u16string indent = brace ? IndentOf(lines, brace->line) : before;
    if (indent.size() >= before.size()) {
        return std::nullopt;
    }
    const Place after = {begin.line, indent.size() + 1};
    return Edit{{{{begin.line, 0}, selection.End(), indent + u"}"}}, {after, after}};
}

std::optional<Edit> PressBackspace(const TextLines& lines, const Selection& selection, std::size_t tabWidth) {
    const Place caret = selection.caret;
    const std::u16string before = lines.Line(caret.line).substr(0, caret.column);
    if (!selection.IsEmpty() || !before.ends_with(u"  ") || !IsBlank(before)) {
        return std::nullopt;
    }
    std::size_t width = 0; // in columns of the screen
    for (const char16_t blank : before) {
        width = blank == u'\t' ? width / tabWidth * tabWidth + tabWidth : width + 1;
    }
    const std::size_t tab = before.rfind(u'\t');
    const std::size_t blanks = tab == std::u16string::npos ? before.size() : before.size() - tab - 1;
    const std::size_t taken = std::min(blanks, (width - 1) % tabWidth + 1);
    const Place after = {caret.line, caret.column - taken};
    return Edit{{{after, caret, u""}}, {after, after}};
}

std::optional<Edit> ShiftLines(const TextLines& lines, const Selection& selection, Shift shift, std::size_t tabWidth) {
    if (selection.anchor.line == selection.caret.line) {
        return std::nullopt;
    }
    Edit edit;
    const LineRange range = LinesOf(selection);
    for (std::size_t line = range.first; line <= range.last; ++line) {
        const std::u16string text = lines.Line(line);
        if (shift == Shift::In && !text.empty()) {
            edit.changes.push_back({{line, 0}, {line, 0}, u"\t"});
        } else if (const std::size_t taken = StepOut(text, tabWidth); shift == Shift::Out && taken > 0) {
            edit.changes.push_back({{line, 0}, {line, taken}, u""});
        }
    }
    edit.after = {MovedBy(edit.changes, selection.anchor), MovedBy(edit.changes, selection.caret)};
    return edit;
}

} // namespace tessaly
