// The settings as a registry whose changes are written back to the user's settings file.
#pragma once

#include "platform/settings/RegistryStore.h"
#include "platform/settings/SettingsFile.h"

#include <map>
#include <string>
#include <string_view>

namespace tessaly {

class SettingsRegistry final : public Registry {
public:
    // Reads the settings files. What is wrong in there is left out without a word.
    SettingsRegistry(SequentialFiles& files, Environment environment);

    // Any key can be opened and made with any rights, and a key alone changes no file.
    std::int32_t OpenKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;
    std::int32_t QueryValue(Handle key, std::string_view valueName, std::uint32_t& type, char* data,
                            std::uint32_t& size) override;
    std::int32_t CreateKey(std::uint32_t root, std::string_view keyPath, std::uint32_t access, Handle& key) override;

    // Puts the value into the user's own file, too, which is replaced as a whole or not at all and keeps everything
    // else as it was; it is made where there is none. A value that is as it was already is not written. AccessDenied
    // when the file cannot be written or cannot carry the value.
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;
    std::int32_t CloseKey(Handle key) noexcept override;

private:
    struct Place {
        std::uint32_t root = 0;
        std::string path;
    };

    bool WriteBack(const Place& place, std::string_view valueName, std::uint32_t type, std::string_view bytes);

    SequentialFiles& mFiles;
    Environment mEnvironment;
    RegistryStore mStore;
    std::map<Handle, Place> mOpen;
};

} // namespace tessaly
