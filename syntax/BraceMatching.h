// Which braces of a text have no partner. Where it is one among several, the indentation tells which one is meant.
#pragma once

#include "syntax/COutline.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessaly {

struct BraceEvent {
    // Else stands for every branch of the preprocessor behind the first that may be taken.
    enum class Kind : std::uint8_t { Open, Close, If, Else, EndIf };
    Kind kind = Kind::Open;
    std::size_t line = 0;
    std::size_t indent = 0; // of the line
    bool isFirst = false;   // in the line
};

// The braces without a partner, in the order of their lines. Branches of the preprocessor are taken one for the other:
// each begins with what was open at its "#if", and behind them counts what the first one left.
std::vector<OpenEnd> MatchBraces(const std::vector<BraceEvent>& events);

} // namespace tessaly
