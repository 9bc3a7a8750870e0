// A registry export file from the disk into a registry in memory.
#include "platform/settings/ReadSettingsFile.h"

#include "platform/system/SequentialFiles.h"

#include <cstddef>
#include <memory>
#include <system_error>

namespace tessaly {

namespace {

// No settings need more, and a device file would never end.
constexpr std::size_t LargestFile = std::size_t{16} * 1024 * 1024;

} // namespace

std::string ReadWholeFile(SequentialFiles& files, const std::string& path) {
    const std::unique_ptr<InputFile> file = files.OpenForInput(path);
    std::string bytes;
    std::string buffer(65536, '\0');
    while (const std::size_t count = file->Read(buffer.data(), buffer.size())) {
        bytes.append(buffer, 0, count);
        if (bytes.size() > LargestFile) {
            throw std::system_error(std::make_error_code(std::errc::file_too_large));
        }
    }
    file->Close();
    return bytes;
}

std::vector<RegistryTextError> ReadSettingsFile(SequentialFiles& files, const std::string& path, RegistryStore& store) {
    std::string bytes;
    try {
        bytes = ReadWholeFile(files, path);
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_such_file_or_directory) {
            return {};
        }
        return {{0, "the settings file cannot be read: " + error.code().message()}};
    }
    return ReadRegistryText(bytes, store);
}

} // namespace tessaly
