// The greedy algorithm of Myers, between the lines that both texts begin and end with.
#include "programs/psf/Diff.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tessaly::psf {

namespace {

using Lines = std::vector<std::string_view>;

constexpr std::ptrdiff_t MostChanges = 1000; // what is remembered grows with the square
constexpr std::size_t Context = 3;

Lines SplitLines(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// What happens to a line: ' ' it stays, '-' it goes, '+' it comes.
struct Step {
    char kind;
    std::string_view line;
};
using Steps = std::vector<Step>;

void AddAll(Steps& steps, char kind, const Lines& lines, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
        steps.push_back({kind, lines[i]});
    }
}

// The lines from `begin` on, up to `oldEnd` and `newEnd`.
class Middle {
public:
    Middle(const Lines& oldLines, const Lines& newLines, std::size_t begin, std::size_t oldEnd, std::size_t newEnd)
        : mOld(oldLines.data() + begin),
          mNew(newLines.data() + begin),
          mOldSize(static_cast<std::ptrdiff_t>(oldEnd - begin)),
          mNewSize(static_cast<std::ptrdiff_t>(newEnd - begin)) {}

    // False when there are too many changes.
    bool Find(Steps& steps) {
        const std::ptrdiff_t most = std::min(mOldSize + mNewSize, MostChanges);
        std::vector<std::ptrdiff_t> reach(static_cast<std::size_t>(2 * most + 3), 0);
        const auto at = [&reach, most](std::ptrdiff_t diagonal) -> std::ptrdiff_t& {
            return reach[static_cast<std::size_t>(diagonal + most + 1)];
        };
        for (std::ptrdiff_t changes = 0; changes <= most; ++changes) {
            for (std::ptrdiff_t diagonal = -changes; diagonal <= changes; diagonal += 2) {
                const bool isDown =
                    diagonal == -changes || (diagonal != changes && at(diagonal - 1) < at(diagonal + 1));
                std::ptrdiff_t x = isDown ? at(diagonal + 1) : at(diagonal - 1) + 1;
                while (x < mOldSize && x - diagonal < mNewSize && mOld[x] == mNew[x - diagonal]) {
                    ++x;
                }
                at(diagonal) = x;
                if (x >= mOldSize && x - diagonal >= mNewSize) {
                    Trace(steps, changes);
                    return true;
                }
            }
            // What the next round looks at: diagonals -changes to changes.
            mReaches.emplace_back(reach.begin() + (most + 1 - changes), reach.begin() + (most + 2 + changes));
        }
        return false;
    }

private:
    // From the end back, one change in each round.
    void Trace(Steps& steps, std::ptrdiff_t changes) {
        Steps backwards;
        std::ptrdiff_t x = mOldSize;
        std::ptrdiff_t y = mNewSize;
        for (; changes > 0; --changes) {
            const std::vector<std::ptrdiff_t>& reach = mReaches[static_cast<std::size_t>(changes - 1)];
            const auto at = [&reach, changes](std::ptrdiff_t diagonal) {
                return reach[static_cast<std::size_t>(diagonal + changes - 1)];
            };
            const std::ptrdiff_t diagonal = x - y;
            const bool isDown = diagonal == -changes || (diagonal != changes && at(diagonal - 1) < at(diagonal + 1));
            const std::ptrdiff_t previous = isDown ? diagonal + 1 : diagonal - 1;
            const std::ptrdiff_t before = at(previous);
            for (const std::ptrdiff_t begin = isDown ? before : before + 1; x > begin; --x, --y) {
                backwards.push_back({' ', mOld[x - 1]});
            }
            backwards.push_back(isDown ? Step{'+', mNew[--y]} : Step{'-', mOld[--x]});
        }
        for (; x > 0; --x) {
            backwards.push_back({' ', mOld[x - 1]});
        }
        steps.insert(steps.end(), backwards.rbegin(), backwards.rend());
    }

    const std::string_view* mOld;
    const std::string_view* mNew;
    std::ptrdiff_t mOldSize;
    std::ptrdiff_t mNewSize;
    std::vector<std::vector<std::ptrdiff_t>> mReaches; // by number of changes: how far each diagonal came
};

Steps FindSteps(const Lines& oldLines, const Lines& newLines) {
    const std::size_t shorter = std::min(oldLines.size(), newLines.size());
    std::size_t begin = 0;
    while (begin < shorter && oldLines[begin] == newLines[begin]) {
        ++begin;
    }
    std::size_t same = 0; // at the end
    while (same < shorter - begin && oldLines[oldLines.size() - same - 1] == newLines[newLines.size() - same - 1]) {
        ++same;
    }
    const std::size_t oldEnd = oldLines.size() - same;
    const std::size_t newEnd = newLines.size() - same;
    Steps steps;
    AddAll(steps, ' ', oldLines, 0, begin);
    if (!Middle(oldLines, newLines, begin, oldEnd, newEnd).Find(steps)) {
        AddAll(steps, '-', oldLines, begin, oldEnd);
        AddAll(steps, '+', newLines, begin, newEnd);
    }
    AddAll(steps, ' ', oldLines, oldEnd, oldLines.size());
    return steps;
}

// "7,3", "7" for a single line; of no lines, the number of the line before them.
std::string LineRange(std::size_t linesBefore, std::size_t count) {
    const std::string first = std::to_string(count == 0 ? linesBefore : linesBefore + 1);
    return count == 1 ? first : first + "," + std::to_string(count);
}

// Where the hunk that begins at the change `at` ends: behind the lines after its last change.
std::size_t HunkEnd(const Steps& steps, std::size_t at) {
    std::size_t last = at;
    for (std::size_t i = at; i < steps.size() && i <= last + 2 * Context + 1; ++i) {
        last = steps[i].kind != ' ' ? i : last;
    }
    return std::min(last + Context + 1, steps.size());
}

} // namespace

std::string UnifiedDiff(std::string_view oldName, std::string_view newName, std::string_view oldText,
                        std::string_view newText) {
    const Lines oldLines = SplitLines(oldText);
    const Lines newLines = SplitLines(newText);
    const Steps steps = FindSteps(oldLines, newLines);
    std::string diff;
    std::size_t oldBefore = 0;
    std::size_t newBefore = 0;
    std::size_t written = 0;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].kind == ' ') {
            continue;
        }
        if (diff.empty()) {
            diff.append("--- ").append(oldName).append("\n+++ ").append(newName).append("\n");
        }
        const std::size_t begin = std::max(written, i - std::min(i, Context));
        const std::size_t end = HunkEnd(steps, i);
        oldBefore += begin - written; // all of them stay
        newBefore += begin - written;
        std::string body;
        std::size_t oldCount = 0;
        std::size_t newCount = 0;
        for (std::size_t j = begin; j < end; ++j) {
            body.append(1, steps[j].kind).append(steps[j].line).append("\n");
            oldCount += steps[j].kind != '+' ? 1 : 0;
            newCount += steps[j].kind != '-' ? 1 : 0;
        }
        diff += "@@ -" + LineRange(oldBefore, oldCount) + " +" + LineRange(newBefore, newCount) + " @@\n" + body;
        oldBefore += oldCount;
        newBefore += newCount;
        written = end;
        i = end - 1;
    }
    return diff;
}

} // namespace tessaly::psf
