// The library finds what goes and what comes. Its own hunks are not used: they number empty stretches wrongly. Nor does
// it order the lines of a change, for which it takes a time that grows with the square of their number.
#include "programs/psf/Diff.h"

#include <algorithm>
#include <cstddef>
#include <dtl/dtl.hpp>
#include <vector>

namespace tessaly::psf {

namespace {

using Lines = std::vector<std::string_view>;

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

Steps FindSteps(const Lines& oldLines, const Lines& newLines) {
    dtl::Diff<std::string_view, Lines> diff(oldLines, newLines);
    diff.compose();
    Steps steps;
    for (const auto& [line, step] : diff.getSes().getSequence()) {
        steps.push_back({step.type == dtl::SES_ADD ? '+' : step.type == dtl::SES_DELETE ? '-' : ' ', line});
    }
    for (auto change = steps.begin(); change != steps.end();) {
        const auto end = std::find_if(change, steps.end(), [](const Step& step) { return step.kind == ' '; });
        std::stable_partition(change, end, [](const Step& step) { return step.kind == '-'; });
        change = end == steps.end() ? end : end + 1;
    }
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
