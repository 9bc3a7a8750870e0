// The file is read anew for every change: somebody may have edited it while the program was running.
#include "platform/settings/SettingsRegistry.h"

#include "platform/settings/RegistryEdit.h"
#include "platform/system/AtomicFile.h"
#include "platform/system/SequentialFiles.h"

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace tessaly {

namespace {

// "" for a file that is not there. One that is there and cannot be read must not be taken for that: it would be
// replaced.
std::string ReadIfThere(SequentialFiles& files, const std::string& path) {
    try {
        return ReadWhole(files, path, LargestSettingsFile);
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_such_file_or_directory) {
            return {};
        }
        throw;
    }
}

} // namespace

SettingsRegistry::SettingsRegistry(SequentialFiles& files, Environment environment)
    : mFiles(files),
      mEnvironment(std::move(environment)) {
    ReadSettings(mFiles, mEnvironment, mStore);
}

std::int32_t SettingsRegistry::OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access,
                                       Handle& key) {
    const std::int32_t error = mStore.OpenKey(root, keyPath, access, key);
    if (error == Success) {
        mOpen[key] = {root, std::string(keyPath)};
    }
    return error;
}

std::int32_t SettingsRegistry::QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                                          std::uint32_t& size) {
    return mStore.QueryValue(key, valueName, type, data, size);
}

std::int32_t SettingsRegistry::CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access,
                                         Handle& key) {
    const std::int32_t error = mStore.CreateKey(root, keyPath, access, key);
    if (error == Success) {
        mOpen[key] = {root, std::string(keyPath)};
    }
    return error;
}

std::int32_t SettingsRegistry::SetValue(Handle key, std::string_view valueName, std::uint32_t type,
                                        std::string_view bytes) {
    const auto open = mOpen.find(key);
    if (open == mOpen.end()) {
        return BadHandle;
    }
    if (mStore.Holds(key, valueName, type, bytes)) {
        return Success;
    }
    return WriteBack(open->second, valueName, type, bytes) ? mStore.SetValue(key, valueName, type, bytes)
                                                           : AccessDenied;
}

std::int32_t SettingsRegistry::CloseKey(Handle key) noexcept {
    mOpen.erase(key);
    return mStore.CloseKey(key);
}

bool SettingsRegistry::WriteBack(const Place& place, std::string_view valueName, std::uint32_t type,
                                 std::string_view bytes) {
    const std::string path = UserSettingsFile(mEnvironment);
    try {
        const auto changed =
            SetInRegistryText(ReadIfThere(mFiles, path), place.root, place.path, valueName, type, bytes);
        if (!changed) {
            return false;
        }
        std::filesystem::create_directories(std::filesystem::absolute(path).parent_path());
        return !ReplaceWhole(path, Existing::Replace, [this, &changed](const std::string& newPath) {
            const std::unique_ptr<OutputFile> file = mFiles.OpenForOutput(newPath);
            file->Write(*changed);
            file->Close();
            return true;
        });
    } catch (const std::system_error&) { // reading or writing, of the files as well as of std::filesystem
        return false;
    }
}

} // namespace tessaly
