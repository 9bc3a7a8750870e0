// Finding follows the rules for the XDG base directories; what the file says is read elsewhere.
#include "platform/posix/SettingsFile.h"

#include "platform/SequentialFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

namespace tessaly {

namespace {

constexpr std::string_view PathInFolder = "/tessaly/settings.reg";

// No settings need more, and a device file would never end.
constexpr std::size_t LargestFile = std::size_t{16} * 1024 * 1024;

// "" for a variable that is not set: these variables count only when they are not empty.
std::string Variable(const Environment& environment, const std::string& name) {
    return environment(name).value_or("");
}

bool IsFile(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::optional<std::string> FindInFolder(std::string_view folder) {
    if (!folder.starts_with('/')) {
        return std::nullopt;
    }
    std::string path(folder);
    path += PathInFolder;
    return IsFile(path) ? std::optional(path) : std::nullopt;
}

std::string HomeFolder(const Environment& environment) {
    const std::string folder = Variable(environment, "XDG_CONFIG_HOME");
    return folder.starts_with('/') ? folder : Variable(environment, "HOME") + "/.config";
}

std::string ReadWhole(SequentialFiles& files, const std::string& path) {
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

} // namespace

std::optional<std::string> ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<std::string> FindSettingsFile(const Environment& environment) {
    std::string path = Variable(environment, "TESSALY_SETTINGS");
    if (!path.empty()) {
        return path;
    }
    std::string folders = Variable(environment, "XDG_CONFIG_DIRS");
    if (folders.empty()) {
        folders = "/etc/xdg";
    }
    std::optional<std::string> found = FindInFolder(HomeFolder(environment));
    for (std::string_view rest = folders; !found && !rest.empty();) {
        const std::size_t colon = std::min(rest.find(':'), rest.size());
        found = FindInFolder(rest.substr(0, colon));
        rest.remove_prefix(std::min(colon + 1, rest.size()));
    }
    return found;
}

std::vector<RegistryTextError> ReadSettingsFile(SequentialFiles& files, const std::string& path, RegistryStore& store) {
    std::string bytes;
    try {
        bytes = ReadWhole(files, path);
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_such_file_or_directory) {
            return {};
        }
        return {{0, "the settings file cannot be read: " + error.code().message()}};
    }
    return ReadRegistryText(bytes, store);
}

} // namespace tessaly
