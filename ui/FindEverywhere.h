// Finds a text in all members of a document.
#pragma once

#include "diagnostics/Diagnostics.h"
#include "document/VornSrcObj.h"
#include "editing/Find.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

struct FoundPlaces {
    std::vector<Diagnostic> places;           // notes, with the text of their line
    std::size_t count = 0;                    // of all, also of those that are left out
    std::map<std::string, std::string> texts; // in which the places are, by member
};

// A member with the text that it has now, whatever the document holds; "" for no such member.
struct ShownMember {
    std::string name;
    std::string text;
};

// In document order, `most` of them.
FoundPlaces FindEverywhere(const VornSrcObj& document, const ShownMember& shown, std::string_view wanted,
                           FindOptions options, std::size_t most);

} // namespace tessaly
