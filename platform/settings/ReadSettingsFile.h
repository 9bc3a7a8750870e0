// Settings that stand in a registry export file. The file is only read.
#pragma once

#include "platform/settings/RegistryText.h"

#include <string>
#include <vector>

namespace tessaly {

class RegistryStore;
class SequentialFiles;

// The bytes of a file. Throws std::system_error when it cannot be read, or is larger than 16 MB.
std::string ReadWholeFile(SequentialFiles& files, const std::string& path);

// Reads the settings file `path` into `store` and returns what is wrong with it, nothing when all is well. A missing
// file is an empty registry and not wrong. A file that cannot be read, or is larger than 16 MB, is one error and
// leaves `store` as it is.
std::vector<RegistryTextError> ReadSettingsFile(SequentialFiles& files, const std::string& path, RegistryStore& store);

} // namespace tessaly
