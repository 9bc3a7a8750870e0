// Finding follows the rules for the XDG base directories; what the file says is read elsewhere.
#include "platform/posix/SettingsFile.h"

#include "platform/RegistryStore.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

namespace tessaly {

namespace {

constexpr std::string_view PathInFolder = "/tessaly/settings.reg";

// "" for a variable that is not set: these variables count only when they are not empty.
std::string Variable(const Environment& environment, const std::string& name) {
    return environment(name).value_or("");
}

bool IsFile(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string UserFolder(const Environment& environment) {
    const std::string folder = Variable(environment, "XDG_CONFIG_HOME");
    return folder.starts_with('/') ? folder : Variable(environment, "HOME") + "/.config";
}

std::optional<std::string> FindInFolder(std::string_view folder) {
    if (!folder.starts_with('/')) {
        return std::nullopt;
    }
    std::string path(folder);
    path += PathInFolder;
    return IsFile(path) ? std::optional(path) : std::nullopt;
}

// The user's own first.
std::vector<std::string> ConfigFolders(const Environment& environment) {
    std::string folders = Variable(environment, "XDG_CONFIG_DIRS");
    if (folders.empty()) {
        folders = "/etc/xdg";
    }
    std::vector<std::string> list = {UserFolder(environment)};
    for (std::string_view rest = folders; !rest.empty();) {
        const std::size_t colon = std::min(rest.find(':'), rest.size());
        list.emplace_back(rest.substr(0, colon));
        rest.remove_prefix(std::min(colon + 1, rest.size()));
    }
    return list;
}

// Puts the user's home folder in place of "~", and makes the folders above the path.
void ExpandHome(std::string& text, const std::string& home) {
    if (text.starts_with("~/") && !home.empty()) {
        text.replace(0, 1, home);
        const std::filesystem::path path(text.substr(0, text.find('\0')));
        std::error_code ignored; // whoever writes the file will be told
        std::filesystem::create_directories(path.parent_path(), ignored);
    }
}

} // namespace

std::optional<std::string> ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::vector<std::string> SettingsFiles(const Environment& environment) {
    if (const std::string path = Variable(environment, "TESSALY_SETTINGS"); !path.empty()) {
        return {path};
    }
    std::vector<std::string> files;
    for (const std::string& folder : ConfigFolders(environment)) {
        if (const std::optional<std::string> file = FindInFolder(folder)) {
            files.insert(files.begin(), *file);
        }
    }
    return files;
}

std::string UserSettingsFile(const Environment& environment) {
    const std::string path = Variable(environment, "TESSALY_SETTINGS");
    return !path.empty() ? path : UserFolder(environment) + std::string(PathInFolder);
}

std::vector<std::string> ReadSettings(SequentialFiles& files, const Environment& environment, RegistryStore& store) {
    const std::string home = Variable(environment, "HOME");
    std::vector<std::string> problems;
    for (const std::string& path : SettingsFiles(environment)) {
        for (const RegistryTextError& error : ReadSettingsFile(files, path, store)) {
            problems.push_back(ErrorText(path, error));
        }
        if (path != UserSettingsFile(environment)) {
            store.ChangeStrings([&home](std::string& text) { ExpandHome(text, home); });
        }
    }
    return problems;
}

} // namespace tessaly
