// The names that fit what is being typed.
#pragma once

#include "editing/Names.h"

#include <optional>
#include <vector>

namespace tessaly {

struct Completion {
    Place begin; // of the word that a name comes in place of
    Place end;
    std::string typed; // of that word, in front of the caret

    // Best first: names that begin with what is typed, with the same letters before those with others; then names of
    // which a later part begins with it, as "Timer" in "StartTimer" and in "START_TIMER". Among them the alphabet
    // counts. Names with "_" in front come only where one is typed.
    std::vector<const CName*> names;
};

// What can stand at `caret`. No value in comments, literals and numbers, and where nothing fits.
std::optional<Completion> CompletionAt(const TextLines& lines, Place caret, const KnownNames& names);

// Whether a list may come by itself: the third letter of a word has been typed, at its end.
bool IsThirdLetter(const TextLines& lines, Place caret);

} // namespace tessaly
