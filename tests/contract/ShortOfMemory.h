// A program that runs out of memory, as long as this lives: little more than it has already can be had.
#pragma once

#include <cstddef>
#include <vector>

#ifdef _WIN32
#include "platform/desktop/win32/Headers.h"
#else
#include <fstream>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace tessaly {

class ShortOfMemory {
public:
    // Only 32 bits of addresses can be used up on Windows, and the address sanitizer has its addresses from the start.
#if defined(TESSALY_SANITIZED) || defined(_WIN64)
    static constexpr bool IsPossible = false;
#else
    static constexpr bool IsPossible = true;
#endif

    // `room` bytes are left.
    explicit ShortOfMemory(std::size_t room) {
        UseUpAllBut(room);
    }
    ShortOfMemory(const ShortOfMemory&) = delete;
    ShortOfMemory& operator=(const ShortOfMemory&) = delete;
    ~ShortOfMemory() {
        GiveBack();
    }

private:
#ifdef _WIN32
    void UseUpAllBut(std::size_t room) {
        constexpr std::size_t mostBlocks = 65536;
        constexpr std::size_t largest = std::size_t{1} << 30;
        constexpr std::size_t smallest = std::size_t{1} << 16;
        mBlocks.reserve(mostBlocks);
        void* const kept = VirtualAlloc(nullptr, room, MEM_RESERVE, PAGE_NOACCESS);
        for (std::size_t size = largest; size >= smallest; size /= 2) {
            while (void* const block = VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS)) {
                mBlocks.push_back(block);
            }
        }
        VirtualFree(kept, 0, MEM_RELEASE);
    }

    void GiveBack() {
        for (void* const block : mBlocks) {
            VirtualFree(block, 0, MEM_RELEASE);
        }
    }

    std::vector<void*> mBlocks;
#else
    void UseUpAllBut(std::size_t room) {
        malloc_trim(0);
        getrlimit(RLIMIT_AS, &mBefore);
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        rlimit limit = mBefore;
        limit.rlim_cur = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + room;
        setrlimit(RLIMIT_AS, &limit);
    }

    void GiveBack() {
        setrlimit(RLIMIT_AS, &mBefore);
    }

    rlimit mBefore = {};
#endif
};

} // namespace tessaly
