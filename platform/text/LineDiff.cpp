// The shortest way from one text to the other is searched from both ends at once; where the searches meet, the task
// falls into two (Eugene Myers 1986).
#include "platform/text/LineDiff.h"

#include <algorithm>
#include <unordered_map>

namespace tessaly {

namespace {

// Steps of one search. With more, the time would grow with the square of the changes.
constexpr std::ptrdiff_t MostSteps = 1000;

using Codes = std::span<const int>; // lines, by numbers that are equal for equal lines

struct Point {
    std::ptrdiff_t x;
    std::ptrdiff_t y;
};

// How far a search has come on each diagonal x - y.
class Front {
public:
    explicit Front(std::ptrdiff_t steps) : mMiddle(steps + 1), mReached(static_cast<std::size_t>(2 * steps + 3), -1) {
        At(1) = 0;
    }

    std::ptrdiff_t& At(std::ptrdiff_t diagonal) { return mReached[static_cast<std::size_t>(mMiddle + diagonal)]; }

    // -1 for a diagonal that is not reached.
    std::ptrdiff_t Reached(std::ptrdiff_t diagonal) const {
        const std::ptrdiff_t at = mMiddle + diagonal;
        return at < 0 || at >= std::ssize(mReached) ? -1 : mReached[static_cast<std::size_t>(at)];
    }

    // Goes one step to `diagonal` and from there along equal lines. `isEqual(x, y)`.
    std::ptrdiff_t Advance(std::ptrdiff_t diagonal, Point end, const auto& isEqual) {
        const std::ptrdiff_t down = Reached(diagonal + 1);
        const std::ptrdiff_t right = Reached(diagonal - 1);
        std::ptrdiff_t x = down >= 0 && down - diagonal <= end.y ? down : -1;
        x = right >= 0 && right < end.x ? std::max(x, right + 1) : x;
        while (x >= 0 && x < end.x && x - diagonal < end.y && isEqual(x, x - diagonal)) {
            ++x;
        }
        At(diagonal) = x;
        return x;
    }

private:
    std::ptrdiff_t mMiddle;
    std::vector<std::ptrdiff_t> mReached;
};

// A point on a shortest way from the fronts of `a` and `b` to their ends, or on a good one. The first lines of both
// differ, and the last ones.
Point FindMiddle(Codes a, Codes b) {
    const Point end{std::ssize(a), std::ssize(b)};
    const std::ptrdiff_t delta = end.x - end.y;
    const std::ptrdiff_t steps = std::min((end.x + end.y + 1) / 2, MostSteps);
    Front forward(steps);
    Front backward(steps);
    const auto at = [](Codes codes, std::ptrdiff_t i) { return codes[static_cast<std::size_t>(i)]; };
    Point best{0, 0};
    for (std::ptrdiff_t step = 0; step <= steps; ++step) {
        for (std::ptrdiff_t diagonal = -step; diagonal <= step; diagonal += 2) {
            const std::ptrdiff_t x =
                forward.Advance(diagonal, end, [&](auto i, auto j) { return at(a, i) == at(b, j); });
            const std::ptrdiff_t other = delta % 2 != 0 ? backward.Reached(delta - diagonal) : -1;
            if (x >= 0 && other >= 0 && x + other >= end.x) {
                return {x, x - diagonal};
            }
            best = x >= 0 && 2 * x - diagonal > best.x + best.y ? Point{x, x - diagonal} : best;
        }
        for (std::ptrdiff_t diagonal = -step; diagonal <= step; diagonal += 2) {
            const std::ptrdiff_t x = backward.Advance(
                diagonal, end, [&](auto i, auto j) { return at(a, end.x - 1 - i) == at(b, end.y - 1 - j); });
            const std::ptrdiff_t other = delta % 2 == 0 ? forward.Reached(delta - diagonal) : -1;
            if (x >= 0 && other >= 0 && x + other >= end.x) {
                return {end.x - x, end.y - (x - diagonal)};
            }
        }
    }
    return best;
}

class LineMatcher {
public:
    LineMatcher(std::span<const std::string_view> oldLines, std::span<const std::string_view> newLines) {
        std::unordered_map<std::string_view, int> codes;
        for (const std::string_view line : oldLines) {
            codes.emplace(line, static_cast<int>(codes.size()));
        }
        // A line that the other text does not have takes no part.
        std::vector<bool> isShared(codes.size());
        for (std::size_t i = 0; i < newLines.size(); ++i) {
            if (const auto code = codes.find(newLines[i]); code != codes.end()) {
                mNew.push_back(code->second);
                mNewLines.push_back(i);
                isShared[static_cast<std::size_t>(code->second)] = true;
            }
        }
        for (std::size_t i = 0; i < oldLines.size(); ++i) {
            if (const int code = codes.at(oldLines[i]); isShared[static_cast<std::size_t>(code)]) {
                mOld.push_back(code);
                mOldLines.push_back(i);
            }
        }
    }

    std::vector<CommonLines> Run() {
        Compare(0, mOld.size(), 0, mNew.size());
        return std::move(mCommon);
    }

private:
    void Compare(std::size_t oldBegin, std::size_t oldEnd, std::size_t newBegin, std::size_t newEnd) {
        while (oldBegin < oldEnd && newBegin < newEnd && mOld[oldBegin] == mNew[newBegin]) {
            Match(oldBegin++, newBegin++);
        }
        std::size_t last = 0;
        while (oldBegin < oldEnd && newBegin < newEnd && mOld[oldEnd - 1] == mNew[newEnd - 1]) {
            --oldEnd;
            --newEnd;
            ++last;
        }
        if (oldBegin < oldEnd && newBegin < newEnd) {
            const Point middle = FindMiddle(Codes(mOld).subspan(oldBegin, oldEnd - oldBegin),
                                            Codes(mNew).subspan(newBegin, newEnd - newBegin));
            const std::size_t oldMiddle = oldBegin + static_cast<std::size_t>(middle.x);
            const std::size_t newMiddle = newBegin + static_cast<std::size_t>(middle.y);
            Compare(oldBegin, oldMiddle, newBegin, newMiddle);
            Compare(oldMiddle, oldEnd, newMiddle, newEnd);
        }
        for (; last > 0; --last) {
            Match(oldEnd++, newEnd++);
        }
    }

    void Match(std::size_t oldIndex, std::size_t newIndex) {
        const std::size_t oldLine = mOldLines[oldIndex];
        const std::size_t newLine = mNewLines[newIndex];
        if (!mCommon.empty() && mCommon.back().oldLine + mCommon.back().count == oldLine &&
            mCommon.back().newLine + mCommon.back().count == newLine) {
            ++mCommon.back().count;
        } else {
            mCommon.push_back({oldLine, newLine, 1});
        }
    }

    std::vector<int> mOld; // the shared lines of each text
    std::vector<int> mNew;
    std::vector<std::size_t> mOldLines; // and their numbers
    std::vector<std::size_t> mNewLines;
    std::vector<CommonLines> mCommon;
};

} // namespace

std::vector<CommonLines> FindCommonLines(std::span<const std::string_view> oldLines,
                                         std::span<const std::string_view> newLines) {
    return LineMatcher(oldLines, newLines).Run();
}

} // namespace tessaly
