// What tells one content of a file from another on this machine: its size and a hash of 64 bits. That guards against
// damage, not against an enemy. Contents of one size that differ within eight bytes in a row, counted from the
// beginning in eights, never have one hash.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

class SequentialFiles;

struct FileMark {
    std::uint64_t size = 0;
    std::uint64_t hash = 0;

    bool operator==(const FileMark&) const = default;
};

FileMark MarkOf(std::string_view bytes);

// The mark of a file as it is now; no value when it cannot be read.
std::optional<FileMark> MarkOfFile(SequentialFiles& files, const std::string& path);

} // namespace tessaly
