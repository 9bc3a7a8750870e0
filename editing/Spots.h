// What of a line is set apart because nobody would see it otherwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace tessaly {

struct Spot {
    enum class Kind : std::uint8_t {
        Bracket,     // at the caret, or its partner
        LoneBracket, // at the caret, without a partner
        Blank,       // at the end of a line, or one that only looks like a blank
        Lost,        // a character that a save would lose
        Match,       // what the user looks for
    };

    Kind kind = Kind::Blank;
    std::size_t begin = 0; // in units of UTF-16 from the beginning of the line
    std::size_t end = 0;

    bool operator==(const Spot&) const = default;
};

// Blanks and lost characters, each run of them once, in order. `isKept` tells whether a save keeps a character; it is
// asked for those outside ASCII. Without it all are kept.
std::vector<Spot> FindSpots(std::u16string_view line, const std::function<bool(char32_t character)>& isKept);

} // namespace tessaly
