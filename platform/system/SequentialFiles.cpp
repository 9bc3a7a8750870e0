// A whole file at once, whatever the system.
#include "platform/system/SequentialFiles.h"

#include <system_error>

namespace tessaly {

std::string ReadWhole(SequentialFiles& files, const std::string& path, std::size_t largest) {
    const std::unique_ptr<InputFile> file = files.OpenForInput(path);
    std::string bytes;
    std::string buffer(65536, '\0');
    while (const std::size_t count = file->Read(buffer.data(), buffer.size())) {
        bytes.append(buffer, 0, count);
        if (bytes.size() > largest) {
            throw std::system_error(std::make_error_code(std::errc::file_too_large));
        }
    }
    file->Close();
    return bytes;
}

} // namespace tessaly
