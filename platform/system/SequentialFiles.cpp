// A whole file at once, whatever the system.
#include "platform/system/SequentialFiles.h"

#include <algorithm>
#include <system_error>

namespace tessaly {

// For many files one after the other: room that grows bit by bit leaves holes, and room that nobody uses is no memory.
void ReadWhole(SequentialFiles& files, const std::string& path, std::string& bytes, std::size_t largest) {
    constexpr std::size_t least = 65536;
    constexpr std::size_t spare = std::size_t{1} << 20U;
    const std::unique_ptr<InputFile> file = files.OpenForInput(path);
    const auto known = static_cast<std::size_t>(std::min<std::uint64_t>(file->Size(), largest - 1));
    std::size_t room = known == 0 ? least : known + 1;
    std::size_t size = 0;
    while (true) {
        if (bytes.capacity() < room && size == 0) {
            std::string().swap(bytes); // or both would be there for a while
            bytes.reserve(room + std::min(room, spare));
        }
        bytes.resize(room);
        const std::size_t count = file->Read(bytes.data() + size, bytes.size() - size);
        size += count;
        if (size > largest) {
            throw std::system_error(std::make_error_code(std::errc::file_too_large));
        }
        if (count == 0) {
            break;
        }
        room = size < room ? room : 2 * room;
    }
    bytes.resize(size);
    file->Close();
}

std::string ReadWhole(SequentialFiles& files, const std::string& path, std::size_t largest) {
    std::string bytes;
    ReadWhole(files, path, bytes, largest);
    return bytes;
}

} // namespace tessaly
