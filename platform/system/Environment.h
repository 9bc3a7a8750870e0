// The environment of this process, and what may stand in its place.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tessaly {

// The value of an environment variable, as UTF-8; no value when it is not set.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;

// The environment of this process.
std::optional<std::string> ProcessEnvironment(const std::string& name);

} // namespace tessaly
