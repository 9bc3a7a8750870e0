// The file is read anew for every change: somebody may have edited it while the program was running.
#include "platform/settings/SettingsRegistry.h"

#include "platform/settings/RegistryText.h"
#include "platform/system/AtomicFile.h"
#include "platform/system/UserFolders.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace tessaly {

namespace {

namespace fs = std::filesystem;

// No settings need more, and a device file would never end.
constexpr std::size_t LargestSettingsFile = std::size_t{16} * 1024 * 1024;

// No value for a file that is not there. One that is there and cannot be read must not be taken for that: it would be
// replaced.
std::optional<std::string> ReadIfThere(SequentialFiles& files, const std::string& path) {
    try {
        return ReadWhole(files, path, LargestSettingsFile);
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_such_file_or_directory) {
            return std::nullopt;
        }
        throw;
    }
}

} // namespace

std::vector<std::string> SettingsFiles(const Environment& environment) {
    if (const std::string path = environment("TESSALY_SETTINGS").value_or(""); !path.empty()) {
        return {path};
    }
    std::vector<std::string> files;
    for (const std::string& folder : ConfigFolders(environment)) {
        const std::string path = folder + "/tessaly/settings.reg";
        std::error_code ignored; // then it is no file
        if (fs::is_regular_file(path, ignored)) {
            files.insert(files.begin(), path);
        }
    }
    return files;
}

std::string UserSettingsFile(const Environment& environment) {
    const std::string path = environment("TESSALY_SETTINGS").value_or("");
    return !path.empty() ? path : ConfigFolder(environment) + "/settings.reg";
}

SettingsRegistry::SettingsRegistry(SequentialFiles& files, Environment environment, const OnProblem& onProblem)
    : mFiles(files),
      mEnvironment(std::move(environment)) {
    for (const std::string& path : SettingsFiles(mEnvironment)) {
        Read(path, onProblem);
        if (path != UserSettingsFile(mEnvironment)) {
            ExpandHomes();
        }
    }
}

void SettingsRegistry::Read(const std::string& path, const OnProblem& onProblem) {
    try {
        if (const std::optional<std::string> bytes = ReadIfThere(mFiles, path)) {
            for (const RegistryTextError& error : ReadRegistryText(*bytes, *this)) {
                onProblem(path + ":" + std::to_string(error.line) + ": " + error.text);
            }
        }
    } catch (const std::system_error& error) {
        onProblem(path + ": the settings file cannot be read: " + error.code().message());
    }
}

// Puts the user's home folder in place of "~", and makes the folders above the path.
void SettingsRegistry::ExpandHomes() {
    const std::string home = mEnvironment("HOME").value_or("");
    for (auto& [key, values] : keys) {
        for (auto& [name, value] : values) {
            if (value.type == StringType && value.bytes.starts_with("~/") && !home.empty()) {
                value.bytes.replace(0, 1, home);
                const fs::path path(value.bytes.substr(0, value.bytes.find('\0')));
                std::error_code ignored; // whoever writes the file will be told
                fs::create_directories(path.parent_path(), ignored);
            }
        }
    }
}

std::int32_t SettingsRegistry::SetValue(Handle key, std::string_view valueName, std::uint32_t type,
                                        std::string_view bytes) {
    const Key* const opened = OpenedAs(key);
    if (opened == nullptr) {
        return BadHandle;
    }
    const Value value = {type, std::string(bytes)};
    const Value* const old = Find(*opened, valueName);
    if (old != nullptr && *old == value) {
        return Success;
    }
    try {
        const std::string path = UserSettingsFile(mEnvironment);
        const auto changed = SetInRegistryText(ReadIfThere(mFiles, path).value_or(""), *opened, valueName, value);
        if (!changed) {
            return AccessDenied;
        }
        fs::create_directories(fs::absolute(path).parent_path());
        const auto write = [this, &changed](const std::string& newPath) {
            const std::unique_ptr<OutputFile> file = mFiles.OpenForOutput(newPath);
            file->Write(*changed);
            file->Close();
            return true;
        };
        return ReplaceWhole(path, Existing::ReplaceLinked, write)
                   ? AccessDenied
                   : RegistryStore::SetValue(key, valueName, type, bytes);
    } catch (const std::system_error&) { // reading or writing, of the files as well as of std::filesystem
        return AccessDenied;
    }
}

} // namespace tessaly
