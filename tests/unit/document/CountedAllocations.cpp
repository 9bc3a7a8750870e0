// Replaces operator new and delete. In a file of its own: a compiler that saw both ends would call it a mismatch.
#include "tests/unit/document/CountedAllocations.h"

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

namespace {

// The bytes of a block, with what the C library rounded up.
std::size_t SizeOf(void* memory) {
#ifdef _WIN32
    return memory == nullptr ? 0 : _msize(memory);
#else
    return malloc_usable_size(memory);
#endif
}

} // namespace

void* operator new(std::size_t size) {
    tessaly::AllocationCount& count = tessaly::Allocations();
    if (count.leftUntilFailure > 0 && --count.leftUntilFailure == 0) {
        throw std::bad_alloc();
    }
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    count.live += SizeOf(memory);
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
    tessaly::Allocations().live -= SizeOf(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
