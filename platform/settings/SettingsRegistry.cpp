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

RegistryStore ReadStore(SequentialFiles& files, const Environment& environment) {
    RegistryStore store;
    ReadSettings(files, environment, store);
    return store;
}

} // namespace

SettingsRegistry::SettingsRegistry(SequentialFiles& files, Environment environment)
    : RegistryStore(ReadStore(files, environment)),
      mFiles(files),
      mEnvironment(std::move(environment)) {}

std::int32_t SettingsRegistry::SetValue(Handle key, std::string_view valueName, std::uint32_t type,
                                        std::string_view bytes) {
    const KeyName* const name = NameOf(key);
    if (name == nullptr) {
        return BadHandle;
    }
    if (Holds(key, valueName, type, bytes)) {
        return Success;
    }
    return WriteBack(*name, valueName, type, bytes) ? RegistryStore::SetValue(key, valueName, type, bytes)
                                                    : AccessDenied;
}

bool SettingsRegistry::WriteBack(const KeyName& key, std::string_view valueName, std::uint32_t type,
                                 std::string_view bytes) {
    const std::string path = UserSettingsFile(mEnvironment);
    try {
        const auto changed = SetInRegistryText(ReadIfThere(mFiles, path), key.root, key.path, valueName, type, bytes);
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
