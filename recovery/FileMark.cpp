// FNV-1a: first the byte, then the multiplication.
#include "recovery/FileMark.h"

#include "platform/system/SequentialFiles.h"

#include <system_error>

namespace tessaly {

FileMark MarkOf(std::string_view bytes) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
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
