// Changing one value in the text of a registry export file and nothing else.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

// The file `file`, given as its bytes, with the value `name` of the key `keyPath` below `root` set to `bytes` of the
// type `type`; a file without a byte gets its first line, too. Everything else stays byte for byte as it was: the
// encoding, line ends, comments, the order, and what is wrong in there. Where the value is there it is changed in its
// place, where the key is there it is added behind the key's other values, else the key is added at the end. No value
// when the file cannot carry it: a name with a line break or a NUL, a string that is not UTF-8.
std::optional<std::string> SetInRegistryText(std::string_view file, std::uint32_t root, std::string_view keyPath,
                                             std::string_view name, std::uint32_t type, std::string_view bytes);

} // namespace tessaly
