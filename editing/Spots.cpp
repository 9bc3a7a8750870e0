// A line of ASCII without blanks at its end has no spots: nearly all are so, and each is looked at when it is drawn.
#include "editing/Spots.h"

#include "platform/text/Utf16.h"

#include <optional>

namespace tessaly {

namespace {

constexpr char16_t NoBreakSpace = 0xA0;

std::optional<Spot::Kind> KindOf(char32_t character, const std::function<bool(char32_t)>& isKept) {
    if (character < 0x80) {
        return std::nullopt;
    }
    if (isKept && !isKept(character)) {
        return Spot::Kind::Lost;
    }
    return character == NoBreakSpace ? std::optional(Spot::Kind::Blank) : std::nullopt;
}

void Add(std::vector<Spot>& spots, Spot spot) {
    if (!spots.empty() && spots.back().kind == spot.kind && spots.back().end == spot.begin) {
        spots.back().end = spot.end;
    } else {
        spots.push_back(spot);
    }
}

} // namespace

std::vector<Spot> FindSpots(std::u16string_view line, const std::function<bool(char32_t character)>& isKept) {
    std::vector<Spot> spots;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const std::size_t begin = at;
        char32_t character = line[at];
        if (IsHighSurrogate(character) && at + 1 < line.size()) {
            character = JoinSurrogates(character, line[++at]);
        }
        if (const std::optional<Spot::Kind> kind = KindOf(character, isKept)) {
            Add(spots, {*kind, begin, at + 1});
        }
    }
    const std::size_t text = line.find_last_not_of(u" \t") + 1; // 0 where there is none
    if (text < line.size()) {
        Add(spots, {Spot::Kind::Blank, text, line.size()});
    }
    return spots;
}

} // namespace tessaly
