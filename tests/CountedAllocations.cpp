// Replaces operator new and delete. In a file of its own: a compiler that saw both ends would call it a mismatch.
#include "tests/CountedAllocations.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace tessaly {

AllocationCount& Allocations() {
    static AllocationCount count;
    return count;
}

} // namespace tessaly

void* operator new(std::size_t size) {
    tessaly::AllocationCount& count = tessaly::Allocations();
    if (count.leftUntilFailure > 0 && --count.leftUntilFailure == 0) {
        throw std::bad_alloc();
    }
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    count.live += malloc_usable_size(memory);
    count.peak = std::max(count.peak, count.live);
    return memory;
}

// What std::stable_sort and its like ask for.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    tessaly::Allocations().live -= malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
