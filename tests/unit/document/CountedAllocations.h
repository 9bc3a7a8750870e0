// Every allocation of the program that links this is counted and can be made to fail.
#pragma once

#include <cstddef>

namespace tessaly {

struct AllocationCount {
    std::size_t live = 0;             // bytes in use
    std::size_t peak = 0;             // the most that were
    std::size_t leftUntilFailure = 0; // the allocation that this counts down to fails; 0 = none does
};

AllocationCount& Allocations();

} // namespace tessaly
