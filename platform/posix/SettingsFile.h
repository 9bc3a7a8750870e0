// The settings where there is no Windows registry: a registry export file that the user keeps.
// The file is only read; it is looked for anew whenever somebody asks.
#pragma once

#include "platform/RegistryText.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaly {

class RegistryStore;
class SequentialFiles;

// The value of an environment variable; no value when it is not set.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;

// The environment of this process.
std::optional<std::string> ProcessEnvironment(const std::string& name);

// The path of the settings file. $TESSALY_SETTINGS when that is set and not empty, whether the file exists or not.
// Else the first file of these that exists: $XDG_CONFIG_HOME/tessaly/settings.reg, in $HOME/.config when that is
// not set, and the same in each folder of $XDG_CONFIG_DIRS, by default /etc/xdg. Relative paths in these variables
// are passed over, as the rules for the XDG base directories want it. No value when there is no such file.
std::optional<std::string> FindSettingsFile(const Environment& environment);

// Reads the settings file `path` into `store` and returns what is wrong with it, nothing when all is well. A missing
// file is an empty registry and not wrong. A file that cannot be read, or is larger than 16 MB, is one error and
// leaves `store` as it is.
std::vector<RegistryTextError> ReadSettingsFile(SequentialFiles& files, const std::string& path, RegistryStore& store);

} // namespace tessaly
