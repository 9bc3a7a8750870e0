// A text as the keys see it: lines, places in them and a selection. What keys do to it is told, not done.
#pragma once

#include "syntax/CSyntax.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace tessaly {

// Both count from 0; the column counts units of UTF-16.
struct Place {
    std::size_t line = 0;
    std::size_t column = 0;

    bool operator==(const Place&) const = default;
    bool operator<(const Place& other) const { return std::tie(line, column) < std::tie(other.line, other.column); }
};

// From where it began to the caret; nothing is selected where they are the same.
struct Selection {
    Place anchor;
    Place caret;

    Place Begin() const { return std::min(anchor, caret); }
    Place End() const { return std::max(anchor, caret); }
    bool IsEmpty() const { return anchor == caret; }
    bool operator==(const Selection&) const = default;
};

// The lines that a pane shows. A text has at least one.
class TextLines {
public:
    virtual ~TextLines() = default;

    virtual std::size_t Count() const = 0;

    // Without the break at its end.
    virtual std::u16string Line(std::size_t index) const = 0;

    // What the line begins in.
    virtual CLineState StateBefore(std::size_t index) const = 0;
};

// What comes in place of the text between two places. A line feed stands for a line break.
struct Change {
    Place begin;
    Place end;
    std::u16string text;

    bool operator==(const Change&) const = default;
};

// Changes in their order, apart from each other, in places of the text before all of them; one step to undo. `after` is
// the selection then, in places of the new text.
struct Edit {
    std::vector<Change> changes;
    Selection after;

    bool operator==(const Edit&) const = default;
};

// Blanks and tabs in front of a line.
inline std::size_t IndentLength(std::u16string_view line) {
    return std::min(line.find_first_not_of(u" \t"), line.size());
}

inline bool IsBlank(std::u16string_view line) {
    return IndentLength(line) == line.size();
}

} // namespace tessaly
