// One kind of break is remembered for each LF shown.
#include "platform/text/LineBreaks.h"

#include <algorithm>

namespace tessaly {

std::string BreakList::Set(std::string_view text) {
    std::string shown;
    mBreaks.clear();
    shown.reserve(text.size());
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        shown.append(text.substr(start, end - start));
        start = end;
        if (end < text.size()) {
            const bool crLf = text.substr(end, 2) == "\r\n";
            mBreaks.push_back(crLf ? LineBreak::CrLf : text[end] == '\n' ? LineBreak::Lf : LineBreak::Cr);
            shown += '\n';
            start += crLf ? 2 : 1;
        }
    }
    return shown;
}

std::vector<LineBreak> BreakList::Replace(std::size_t first, std::size_t removed, const std::vector<LineBreak>& added) {
    first = std::min(first, mBreaks.size());
    std::vector<LineBreak> gone = Some(first, std::min(removed, mBreaks.size() - first));
    const auto place = mBreaks.begin() + static_cast<std::ptrdiff_t>(first);
    mBreaks.insert(mBreaks.erase(place, place + static_cast<std::ptrdiff_t>(gone.size())), added.begin(), added.end());
    return gone;
}

std::vector<LineBreak> BreakList::Some(std::size_t first, std::size_t count) const {
    const auto begin = mBreaks.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

std::string BreakList::Apply(std::string_view shown) const {
    constexpr std::string_view breaks[] = {"\r\n", "\n", "\r"};
    std::string text;
    text.reserve(shown.size() + mBreaks.size());
    std::size_t start = 0;
    for (const LineBreak kind : mBreaks) {
        const std::size_t end = std::min(shown.find('\n', start), shown.size());
        text.append(shown, start, end - start);
        // A lone LF right behind a lone CR, where an edit has brought them together, would make one break of two.
        const bool joins = kind == LineBreak::Lf && text.ends_with('\r');
        text.append(breaks[static_cast<std::size_t>(joins ? LineBreak::CrLf : kind)]);
        start = std::min(end + 1, shown.size());
    }
    return text.append(shown, start);
}

} // namespace tessaly
