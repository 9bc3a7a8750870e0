// Variables are plain bytes: on these systems that is UTF-8.
#include "platform/system/Environment.h"

#include <cstdlib>
#include <filesystem>

namespace tessaly {

std::optional<std::string> ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::string FullPath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error);
    return error ? path : full.string();
}

void SetProcessEnvironment(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
}

} // namespace tessaly
