// Finding a text in another one, and putting something else in its place.
#pragma once

#include "editing/Text.h"

#include <string_view>

namespace tessaly {

struct FindOptions {
    bool isWholeWord = false; // no letter, digit or "_" beside it
    bool isCaseSensitive = false;
};

// A place where it was found. A match is in one line.
struct Match {
    Place begin;
    std::size_t length = 0; // in units of UTF-16

    Place End() const { return {begin.line, begin.column + length}; }
    bool operator==(const Match&) const = default;
};

// All matches of `pattern` in `text`, both UTF-8, in order and apart from each other. LF, CR LF and CR each end a line.
// None for an empty pattern and for one with a line break.
std::vector<Match> FindAll(std::string_view text, std::string_view pattern, FindOptions options);

// The match behind `place`, or in front of it, around the ends of the text. `matches` are not empty. A forward search
// finds one that begins at `place`, a backward one finds one that ends there.
std::size_t NextMatch(const std::vector<Match>& matches, Place place, bool isForward);

// Puts `replacement` in the place of all matches, of which there is one at least; selects the last one.
Edit ReplaceAll(const std::vector<Match>& matches, const std::u16string& replacement);

} // namespace tessaly
