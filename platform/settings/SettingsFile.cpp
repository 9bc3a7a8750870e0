// Finding follows the rules for the XDG base directories; what the file says is read elsewhere.
#include "platform/settings/SettingsFile.h"

#include "platform/settings/RegistryStore.h"
#include "platform/system/UserFolders.h"

#include <filesystem>
#include <optional>
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

std::vector<std::string> SettingsFiles(const Environment& environment) {
    if (const std::string path = Variable(environment, "TESSALY_SETTINGS"); !path.empty()) {
        return {path};
    }
    std::vector<std::string> files;
    for (std::string path : ConfigFolders(environment)) {
        path += PathInFolder;
        if (IsFile(path)) {
            files.insert(files.begin(), path);
        }
    }
    return files;
}

std::string UserSettingsFile(const Environment& environment) {
    const std::string path = Variable(environment, "TESSALY_SETTINGS");
    return !path.empty() ? path : ConfigFolder(environment) + "/settings.reg";
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
