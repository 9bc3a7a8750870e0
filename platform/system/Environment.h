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

// The path by which a file is found wherever the program goes; `path` itself where the system cannot tell.
std::string FullPath(const std::string& path);

// Sets a variable for this process and those that it starts from now on; without a value it is removed.
void SetProcessEnvironment(const std::string& name, const std::optional<std::string>& value);

} // namespace tessaly
