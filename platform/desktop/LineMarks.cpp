// Whole lines in front of an edit and behind it are what they were, wherever they stand now.
#include "platform/desktop/LineMarks.h"

#include <algorithm>

namespace tessaly {

void LineMarks::Set(std::span<const LineMark> marks, std::size_t lineCount, const FindLine& find) {
    mMarks.clear();
    for (LineMark mark : marks) {
        if (mark.mark == Mark::None || mark.line < 1 || mark.line > lineCount) {
            continue;
        }
        const LineSpan span = find(mark.line);
        mark.begin = std::clamp(mark.begin, span.begin, span.end);
        mark.end = std::clamp(mark.end, mark.begin, span.end);
        mMarks.push_back({mark, span});
    }
}

bool LineMarks::Follow(const TextEdit& edit, const FindLine& find) {
    if (mMarks.empty() || (edit.removed == 0 && edit.added == 0)) {
        return false;
    }
    const std::size_t start = edit.start;
    const std::size_t end = start + edit.removed; // in the text as it was
    const bool leavesLineInFront = find(edit.line).end == start;
    const bool leavesLineBehind = find(edit.line + edit.addedBreaks).begin == start + edit.added;
    bool isOneGone = false;
    std::erase_if(mMarks, [&](Marked& marked) {
        auto& [mark, line] = marked;
        if (line.end < start || (line.end == start && leavesLineInFront)) {
            return false;
        }
        const bool isWhole = line.begin > end || (line.begin == end && leavesLineBehind);
        if (!isWhole && ((start <= line.begin && end > line.end) || (start < line.begin && end >= line.end))) {
            isOneGone = true;
            return true;
        }
        if (isWhole || line.begin > start || (mark.begin >= end && mark.begin < mark.end)) {
            mark.line += edit.addedBreaks - edit.removedBreaks; // unsigned, as all of these: it comes out right
        }
        if (isWhole) {
            for (std::size_t* const position : {&mark.begin, &mark.end, &line.begin, &line.end}) {
                *position += edit.added - edit.removed;
            }
        } else {
            isOneGone = isOneGone || mark.begin < mark.end;
            line = find(mark.line);
            mark.begin = line.begin;
            mark.end = line.begin;
        }
        return false;
    });
    return isOneGone;
}

Mark LineMarks::On(std::size_t line) const {
    Mark gravest = Mark::None;
    for (const Marked& marked : mMarks) {
        gravest = marked.mark.line == line ? std::max(gravest, marked.mark.mark) : gravest;
    }
    return gravest;
}

std::vector<LineMark> LineMarks::All() const {
    std::vector<LineMark> marks;
    for (const Marked& marked : mMarks) {
        marks.push_back(marked.mark);
    }
    return marks;
}

} // namespace tessaly
