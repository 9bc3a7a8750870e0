// Lines that both texts have are certain. Between them, likeness decides, and else the distance.
#include "diagnostics/NearestLines.h"

#include "platform/text/Ascii.h"
#include "platform/text/Utf8.h"

#include <algorithm>

namespace tessaly {

namespace {

// A changed line is looked for among so many.
constexpr std::size_t MostAlikeLines = 100;

std::vector<std::string_view> Trimmed(std::vector<std::string_view> lines) {
    std::transform(lines.begin(), lines.end(), lines.begin(), [](std::string_view line) { return Trim(line); });
    return lines;
}

std::size_t CommonFront(std::string_view a, std::string_view b) {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

std::size_t CommonBack(std::string_view a, std::string_view b) {
    return static_cast<std::size_t>(std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin());
}

// How much of the longer of two lines stands in both, in hundredths.
std::size_t Likeness(std::string_view a, std::string_view b) {
    const std::size_t longer = std::max(a.size(), b.size());
    const std::size_t front = CommonFront(a, b);
    const std::size_t back = CommonBack(a.substr(front), b.substr(front));
    return longer == 0 ? 100 : (front + back) * 100 / longer;
}

// The UTF-16 units of `text`.
std::size_t Units(std::string_view text) {
    std::size_t units = 0;
    for (std::size_t at = 0; at < text.size();) {
        units += ReadUtf8OrReplacement(text, at) > 0xFFFF ? 2 : 1;
    }
    return units;
}

// Where the UTF-16 unit number `units`, counted from 0, is in `text`, in bytes.
std::size_t ByteAt(std::string_view text, std::size_t units) {
    std::size_t at = 0;
    for (std::size_t passed = 0; at < text.size() && passed < units;) {
        passed += ReadUtf8OrReplacement(text, at) > 0xFFFF ? 2 : 1;
    }
    return at;
}

// Where in `now` that stands which stood at `column` of `before`.
std::size_t NearestColumn(std::string_view before, std::string_view now, std::size_t column) {
    const std::size_t at = ByteAt(before, column - 1);
    if (at <= CommonFront(before, now)) {
        return column;
    }
    const std::size_t behind = before.size() - at;
    if (behind <= CommonBack(before, now)) {
        return Units(now.substr(0, now.size() - behind)) + 1;
    }
    return std::min(column, Units(now) + 1);
}

} // namespace

std::vector<std::string_view> SplitEditorLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t begin = 0;
    for (std::size_t end = text.find_first_of("\r\n"); end != std::string_view::npos;
         end = text.find_first_of("\r\n", begin)) {
        lines.push_back(text.substr(begin, end - begin));
        begin = end + (text.substr(end).starts_with("\r\n") ? 2 : 1);
    }
    lines.push_back(text.substr(begin));
    return lines;
}

NearestLines::NearestLines(std::string_view before, std::string_view now)
    : mBefore(SplitEditorLines(before)),
      mNow(SplitEditorLines(now)),
      mCommon(FindCommonLines(Trimmed(mBefore), Trimmed(mNow))) {}

std::size_t NearestLines::Find(std::size_t line) const {
    const std::size_t wanted = std::clamp<std::size_t>(line, 1, mBefore.size()) - 1;
    // What is common behind the line and what is common in front of it.
    const auto next = std::upper_bound(mCommon.begin(), mCommon.end(), wanted,
                                       [](std::size_t value, const CommonLines& each) { return value < each.oldLine; });
    std::size_t oldBegin = 0;
    std::size_t newBegin = 0;
    if (next != mCommon.begin()) {
        const CommonLines& common = *std::prev(next);
        if (wanted < common.oldLine + common.count) {
            return common.newLine + (wanted - common.oldLine) + 1;
        }
        oldBegin = common.oldLine + common.count;
        newBegin = common.newLine + common.count;
    }
    const std::size_t newEnd = next == mCommon.end() ? mNow.size() : next->newLine;
    if (newBegin == newEnd) { // the line is gone
        return std::min(newBegin, mNow.size() - 1) + 1;
    }
    const std::size_t alike = MostAlike(wanted, newBegin, newEnd);
    return (alike < newEnd ? alike : std::min(newBegin + (wanted - oldBegin), newEnd - 1)) + 1;
}

// The line of `now` from `begin` on that is most like a line of `before`; `end` when none is like it.
std::size_t NearestLines::MostAlike(std::size_t line, std::size_t begin, std::size_t end) const {
    std::size_t best = end;
    std::size_t bestLikeness = 50;
    for (std::size_t i = begin; i < std::min(end, begin + MostAlikeLines); ++i) {
        const std::size_t likeness = Likeness(Trim(mBefore[line]), Trim(mNow[i]));
        if (likeness > bestLikeness) {
            best = i;
            bestLikeness = likeness;
        }
    }
    return best;
}

TextPosition NearestLines::Find(TextPosition position) const {
    const std::size_t line = Find(position.line);
    if (position.column == 0 || position.line == 0 || position.line > mBefore.size()) {
        return {line, 0};
    }
    return {line, NearestColumn(mBefore[position.line - 1], mNow[line - 1], position.column)};
}

} // namespace tessaly
