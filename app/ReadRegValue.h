// A setting as text, whatever type it is stored with.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

class Registry;

// The value `valueName` of the key `keyPath` below `root`. A string loses its last character, which is taken for the
// terminating NUL. One stored without a NUL loses a real character, kept on purpose. A number in decimal, read as
// signed: 0xFFFFFFFF gives "-1". "" when there is no such key or value, for other types and when anything fails,
// exceptions of the registry included. Every key that is opened is closed again.
std::string ReadRegValue(Registry& registry, std::uint32_t root, std::string_view keyPath, std::string_view valueName);

} // namespace tessaly
