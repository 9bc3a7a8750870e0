// The collision rule of function names, for a whole list at once.
#pragma once

#include <string_view>
#include <vector>

namespace tessaly {

// For each name whether adding the names one after the other to an empty table would refuse it: whether an earlier
// one that was not refused begins with it, without regard to case.
std::vector<bool> FindCollisions(const std::vector<std::string_view>& names);

} // namespace tessaly
