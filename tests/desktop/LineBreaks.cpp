// An edit is the stretch in which the old and the new text differ.
#include "tests/desktop/LineBreaks.h"

#include "platform/text/Utf8.h"

#include <algorithm>
#include <utility>

namespace tessaly::memory {

std::size_t CountBreaks(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

void LineBreaks::Set(std::string_view text) {
    BreakList breaks;
    mShown = breaks.Set(text);
    mBreaks = std::move(breaks);
}

Difference LineBreaks::Edit(std::string_view shown) {
    const std::string_view before = mShown;
    const std::size_t shorter = std::min(before.size(), shown.size());
    auto front = static_cast<std::size_t>(
        std::mismatch(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(shorter), shown.begin()).first -
        before.begin());
    while (front > 0 && ((front < before.size() && IsContinuation(before[front])) ||
                         (front < shown.size() && IsContinuation(shown[front])))) {
        --front;
    }
    std::size_t back = 0;
    while (back < shorter - front && before[before.size() - 1 - back] == shown[shown.size() - 1 - back]) {
        ++back;
    }
    while (back > 0 && IsContinuation(before[before.size() - back])) {
        --back;
    }
    Difference difference = {front, std::string(before.substr(front, before.size() - front - back)),
                             std::string(shown.substr(front, shown.size() - front - back))};
    mBreaks.Replace(CountBreaks(before.substr(0, front)), CountBreaks(difference.removed),
                    CountBreaks(difference.added));
    mShown = shown;
    return difference;
}

} // namespace tessaly::memory
