// A whole file at once, whatever the system.
#include "platform/system/SequentialFiles.h"

#include <array>
#include <system_error>

namespace tessaly {

void ReadWhole(SequentialFiles& files, const std::string& path, std::string& bytes, std::size_t largest) {
    const std::unique_ptr<InputFile> file = files.OpenForInput(path);
    bytes.clear();
    const auto buffer = std::make_unique_for_overwrite<std::array<char, 65536>>();
    while (const std::size_t count = file->Read(buffer->data(), buffer->size())) {
        bytes.append(buffer->data(), count);
        if (bytes.size() > largest) {
            throw std::system_error(std::make_error_code(std::errc::file_too_large));
        }
    }
    file->Close();
}

std::string ReadWhole(SequentialFiles& files, const std::string& path, std::size_t largest) {
    std::string bytes;
    ReadWhole(files, path, bytes, largest);
    return bytes;
}

} // namespace tessaly
