// Variables are plain bytes: on these systems that is UTF-8.
#include "platform/system/Environment.h"

#include <cstdlib>

namespace tessaly {

std::optional<std::string> ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace tessaly
