// Breaks between lines that stay beside each other are left alone, so that they stay what they are in the file.
#include "editing/LineCommands.h"

#include "editing/Indenting.h"

namespace tessaly {

namespace {

constexpr std::u16string_view LineComment = u"//";

bool HasLineComment(std::u16string_view line) {
    return line.substr(IndentLength(line)).starts_with(LineComment);
}

Edit WithSelectionMoved(std::vector<Change> changes, const Selection& selection) {
    const Selection after = {MovedBy(changes, selection.anchor), MovedBy(changes, selection.caret)};
    return {std::move(changes), after};
}

// "/* PART */" or, from that, "PART"; selected again. No value where a comment cannot be around the part.
std::optional<Edit> CommentPart(const TextLines& lines, const Selection& selection) {
    const Place begin = selection.Begin();
    const Place end = selection.End();
    const std::u16string text = lines.Line(begin.line);
    const std::u16string part = text.substr(begin.column, end.column - begin.column);
    const std::u16string rest = text.substr(0, begin.column) + text.substr(end.column);
    std::u16string changed;
    if (part.size() >= 4 && part.starts_with(u"/*") && part.find(u"*/") == part.size() - 2) {
        changed = part.substr(2, part.size() - 4);
        if (changed.size() >= 2 && changed.front() == u' ' && changed.back() == u' ') {
            changed = changed.substr(1, changed.size() - 2);
        }
    } else if (IsBlank(rest) || part.find(u"*/") != std::u16string::npos || part.find(u"/*") != std::u16string::npos) {
        return std::nullopt;
    } else {
        changed = u"/* " + part + u" */";
    }
    const Place last = {begin.line, begin.column + changed.size()};
    const bool isForward = selection.anchor < selection.caret;
    return Edit{{{begin, end, changed}}, isForward ? Selection{begin, last} : Selection{last, begin}};
}

} // namespace

std::optional<Edit> ToggleComment(const TextLines& lines, const Selection& selection) {
    if (!selection.IsEmpty() && selection.anchor.line == selection.caret.line) {
        if (std::optional<Edit> edit = CommentPart(lines, selection)) {
            return edit;
        }
    }
    const LineRange range = LinesOf(selection);
    std::size_t column = std::u16string::npos;
    bool hasAll = true;
    for (std::size_t line = range.first; line <= range.last; ++line) {
        const std::u16string text = lines.Line(line);
        if (!IsBlank(text)) {
            column = std::min(column, IndentLength(text));
            hasAll = hasAll && HasLineComment(text);
        }
    }
    if (column == std::u16string::npos) {
        return std::nullopt;
    }
    std::vector<Change> changes;
    for (std::size_t line = range.first; line <= range.last; ++line) {
        const std::u16string text = lines.Line(line);
        if (IsBlank(text)) {
            continue;
        }
        if (hasAll) {
            const std::size_t begin = IndentLength(text);
            const std::size_t end = begin + LineComment.size();
            changes.push_back({{line, begin}, {line, end + (text.substr(end, 1) == u" " ? 1U : 0U)}, u""});
        } else {
            changes.push_back({{line, column}, {line, column}, u"// "});
        }
    }
    return WithSelectionMoved(std::move(changes), selection);
}

std::optional<Edit> MoveLines(const TextLines& lines, const Selection& selection, Direction direction) {
    const auto [first, last] = LinesOf(selection);
    const bool isUp = direction == Direction::Up;
    if (isUp ? first == 0 : last + 1 == lines.Count()) {
        return std::nullopt;
    }
    const std::size_t other = isUp ? first - 1 : last + 1;
    const std::u16string text = lines.Line(other);
    const Place end = {last, lines.Line(last).size()};
    Edit edit;
    if (isUp) {
        edit.changes = {{{other, 0}, {first, 0}, u""}, {end, end, u"\n" + text}};
    } else {
        edit.changes = {{{first, 0}, {first, 0}, text + u"\n"}, {end, {other, text.size()}, u""}};
    }
    edit.after = selection;
    for (Place* const place : {&edit.after.anchor, &edit.after.caret}) {
        place->line = isUp ? place->line - 1 : place->line + 1;
    }
    // A selection that ended in front of the line that moved would end behind the text.
    const std::size_t lastLine = lines.Count() - 1;
    for (Place* const place : {&edit.after.anchor, &edit.after.caret}) {
        if (place->line > lastLine) {
            *place = {lastLine, lines.Line(last).size()};
        }
    }
    return edit;
}

Edit DuplicateLines(const TextLines& lines, const Selection& selection) {
    const auto [first, last] = LinesOf(selection);
    std::u16string text;
    for (std::size_t line = first; line <= last; ++line) {
        text += u"\n" + lines.Line(line);
    }
    const Place end = {last, lines.Line(last).size()};
    Edit edit{{{end, end, text}}, selection};
    const std::size_t count = last + 1 - first;
    edit.after.anchor.line += count;
    edit.after.caret.line += count;
    return edit;
}

Edit DeleteLines(const TextLines& lines, const Selection& selection) {
    const auto [first, last] = LinesOf(selection);
    const std::size_t column = selection.Begin().column;
    const Place end = {last, lines.Line(last).size()};
    if (last + 1 < lines.Count()) {
        const Place after = {first, std::min(column, lines.Line(last + 1).size())};
        return {{{{first, 0}, {last + 1, 0}, u""}}, {after, after}};
    }
    if (first > 0) {
        const std::size_t length = lines.Line(first - 1).size();
        const Place after = {first - 1, std::min(column, length)};
        return {{{{first - 1, length}, end, u""}}, {after, after}};
    }
    return {{{{0, 0}, end, u""}}, {}};
}

} // namespace tessaly
