// What two people made of one text, brought together line by line.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

struct MergedText {
    std::string text;
    bool hasConflict = false;
};

// Both changes of `base` in one text. Lines that both changed in different ways stand one behind the other, with lines
// of "<<<<<<< ours", "=======" and ">>>>>>> theirs" around them. Whether a line ends with LF or CR LF counts for
// nothing when lines are compared; each keeps its end. The result has no line break at its end.
MergedText MergeLines(std::string_view base, std::string_view ours, std::string_view theirs);

// Whether the texts have the same lines, whatever ends them.
bool HaveSameLines(std::string_view a, std::string_view b);

} // namespace tessaly
