// Where what stood in a text stands now that the text has been edited.
#pragma once

#include "platform/text/LineDiff.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Counted from 1: LF, CR LF and CR each end a line. A column counts UTF-16 units; 0 is none.
struct TextPosition {
    std::size_t line = 0;
    std::size_t column = 0;

    bool operator==(const TextPosition&) const = default;
};

// Blanks around lines and the kind of line ends make no difference. The texts must outlive it.
class NearestLines {
public:
    NearestLines(std::string_view before, std::string_view now);

    // The line of `now` that line `line` of `before` is today; of one that is gone, the nearest. Never 0, and never
    // behind the last line.
    std::size_t Find(std::size_t line) const;

    // The same with a column. That goes with the text that it stands in; in a line with other text it is the nearest.
    TextPosition Find(TextPosition position) const;

private:
    std::size_t MostAlike(std::size_t line, std::size_t begin, std::size_t end) const;

    std::vector<std::string_view> mBefore; // lines without their ends
    std::vector<std::string_view> mNow;
    std::vector<CommonLines> mCommon;
};

// The lines of a text without their ends; at least one.
std::vector<std::string_view> SplitEditorLines(std::string_view text);

} // namespace tessaly
