// The settings as a registry whose changes are written back to the user's settings file.
#pragma once

#include "platform/settings/RegistryStore.h"
#include "platform/settings/SettingsFile.h"

#include <string>
#include <string_view>

namespace tessaly {

class SettingsRegistry final : public RegistryStore {
public:
    // Reads the settings files. What is wrong in there is left out without a word.
    SettingsRegistry(SequentialFiles& files, Environment environment);

    // A key alone changes no file. Puts the value into the user's own file, too, which is replaced as a whole or not at
    // all and keeps everything else as it was; it is made where there is none. A value that is as it was already is not
    // written. AccessDenied when the file cannot be written or cannot carry the value.
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;

private:
    bool WriteBack(const KeyName& key, std::string_view valueName, std::uint32_t type, std::string_view bytes);

    SequentialFiles& mFiles;
    Environment mEnvironment;
};

} // namespace tessaly
