// An edit is the stretch in which the old and the new text differ.
#include "tests/desktop/LineBreaks.h"

#include <algorithm>
#include <utility>

namespace tessaly::memory {

namespace {

std::size_t CountBreaks(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace

void LineBreaks::Set(std::string_view text) {
    BreakList breaks;
    mShown = breaks.Set(text);
    mBreaks = std::move(breaks);
}

void LineBreaks::Edit(std::string_view shown) {
    const std::string_view before = mShown;
    const std::size_t shorter = std::min(before.size(), shown.size());
    const auto front = static_cast<std::size_t>(
        std::mismatch(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(shorter), shown.begin()).first -
        before.begin());
    std::size_t back = 0;
    while (back < shorter - front && before[before.size() - 1 - back] == shown[shown.size() - 1 - back]) {
        ++back;
    }
    const std::size_t kept = CountBreaks(before.substr(0, front));
    const std::size_t removed = CountBreaks(before.substr(front, before.size() - front - back));
    const std::size_t added = CountBreaks(shown.substr(front, shown.size() - front - back));
    mBreaks.Replace(kept, removed, added);
    mShown = shown;
}

} // namespace tessaly::memory
