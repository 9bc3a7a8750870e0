// Of each change the lines that go stand in front of those that come.
#include "programs/psf/base/Diff.h"

#include "platform/text/Ascii.h"
#include "platform/text/LineDiff.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tessaly::psf {

namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t Context = 3;

Lines SplitLines(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        lines.push_back(TakeLine(text));
    }
    return lines;
}

// What happens to a line: ' ' it stays, '-' it goes, '+' it comes.
struct Step {
    char kind;
    std::string_view line;
};
using Steps = std::vector<Step>;

Steps FindSteps(const Lines& oldLines, const Lines& newLines) {
    Steps steps;
    std::size_t oldLine = 0;
    std::size_t newLine = 0;
    const auto change = [&](std::size_t oldEnd, std::size_t newEnd) {
        for (; oldLine < oldEnd; ++oldLine) {
            steps.push_back({'-', oldLines[oldLine]});
        }
        for (; newLine < newEnd; ++newLine) {
            steps.push_back({'+', newLines[newLine]});
        }
    };
    for (const CommonLines& common : FindCommonLines(oldLines, newLines)) {
        change(common.oldLine, common.newLine);
        for (std::size_t i = 0; i < common.count; ++i, ++newLine) {
            steps.push_back({' ', oldLines[oldLine++]});
        }
    }
    change(oldLines.size(), newLines.size());
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
