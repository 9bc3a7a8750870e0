// Brackets and their partners in C. Those in comments and literals have none, and those of a preprocessor line have
// theirs in the same line.
#pragma once

#include "editing/Text.h"

#include <optional>

namespace tessaly {

enum class CPart : char { Code, Preprocessor, Hidden }; // Hidden: a comment or a literal

// What each unit of a line belongs to.
std::vector<CPart> PartsOf(const TextLines& lines, std::size_t line);

struct BracketPair {
    Place bracket;
    std::optional<Place> partner; // none where it has none

    bool operator==(const BracketPair&) const = default;
};

// The round, square or curly bracket behind the caret, or else the one in front of it. No value without one,
// nor where its partner is not among the next thousand lines.
std::optional<BracketPair> FindBracket(const TextLines& lines, Place caret);

// The "{" in code that is open at `place`, which the next "}" would close. It is looked for as far.
std::optional<Place> FindOpenBrace(const TextLines& lines, Place place);

} // namespace tessaly
