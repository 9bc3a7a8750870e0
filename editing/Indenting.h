// What Enter, Backspace, the Tab key and "}" do to the blanks in front of lines. No value: the key does what it does
// without this. A tab stop is every `tabWidth` columns.
#pragma once

#include "editing/Text.h"

#include <optional>

namespace tessaly {

// The new line begins where the old one does; behind "{" one step further in, and a "}" behind the caret gets a line of
// its own.
Edit PressEnter(const TextLines& lines, const Selection& selection);

// "}" in front of everything else in its line goes back to where the line of its "{" begins.
std::optional<Edit> PressCloseBrace(const TextLines& lines, const Selection& selection);

// Blanks in front of a line go back to the tab stop before.
std::optional<Edit> PressBackspace(const TextLines& lines, const Selection& selection, std::size_t tabWidth);

// The lines of a selection that has several move in by a tab, or out by one.
enum class Shift { In, Out };
std::optional<Edit> ShiftLines(const TextLines& lines, const Selection& selection, Shift shift, std::size_t tabWidth);

// The lines that a selection touches, the first and the last one. One in which it only ends at the beginning is none of
// several.
struct LineRange {
    std::size_t first = 0;
    std::size_t last = 0;
};
LineRange LinesOf(const Selection& selection);

// Where `place` is behind changes that keep every line.
Place MovedBy(const std::vector<Change>& changes, Place place);

} // namespace tessaly
