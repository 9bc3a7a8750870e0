// Four lanes take the words in turns: one multiplication waits for the one before it.
#include "recovery/FileMark.h"

#include "platform/system/SequentialFiles.h"

#include <array>
#include <cstring>
#include <system_error>

namespace tessaly {

namespace {

constexpr std::uint64_t Basis = 0xCBF29CE484222325U; // FNV's, as the prime is
constexpr std::uint64_t Prime = 0x100000001B3U;

// Different words, or different hashes, never give the same hash. The shift has high bits count for low ones, or two
// changed bits could cancel each other.
std::uint64_t Add(std::uint64_t hash, std::uint64_t word) {
    constexpr int half = 32;
    const std::uint64_t product = (hash ^ word) * Prime;
    return product ^ product >> half;
}

// Up to eight bytes in the machine's order.
std::uint64_t Word(std::string_view bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), bytes.size());
    return word;
}

} // namespace

FileMark MarkOf(std::string_view bytes) {
    constexpr std::size_t wordSize = 8;
    std::array<std::uint64_t, 4> lanes = {Basis, Basis, Basis, Basis};
    std::string_view rest = bytes;
    for (; rest.size() >= wordSize * lanes.size(); rest.remove_prefix(wordSize * lanes.size())) {
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            lanes[lane] = Add(lanes[lane], Word({rest.data() + lane * wordSize, wordSize}));
        }
    }
    for (std::size_t lane = 0; !rest.empty(); ++lane) {
        const std::string_view word = rest.substr(0, wordSize);
        lanes[lane] = Add(lanes[lane], Word(word));
        rest.remove_prefix(word.size());
    }
    std::uint64_t hash = Basis;
    for (const std::uint64_t lane : lanes) {
        hash = Add(hash, lane);
    }
    return {bytes.size(), hash};
}

std::optional<FileMark> MarkOfFile(SequentialFiles& files, const std::string& path) {
    try {
        return MarkOf(ReadWhole(files, path));
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

} // namespace tessaly
