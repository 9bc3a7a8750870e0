// How two documents differ for their user. Stored prototypes do not count.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class VornSrcObj;

// A text without the line breaks at its end.
std::string_view WithoutLastBreaks(std::string_view text);

// The names of the members whose texts differ, or that one of the two does not have: first those of `a` in their order,
// then those of `b` alone. A text that is saved and loaded gains a line break at its end, so those do not count.
std::vector<std::string> DifferingMembers(const VornSrcObj& a, const VornSrcObj& b);

// Whether all texts are equal, line breaks at their ends included, and the functions have one order.
bool AreSame(const VornSrcObj& a, const VornSrcObj& b);

} // namespace tessaly
