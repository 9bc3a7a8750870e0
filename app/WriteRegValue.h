// Stores a setting from its text, as a string or a number.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly {

class Registry;

// Stores `valueText` as the value `valueName` of the key `keyPath` below `root`; the key is made if it is missing.
// "0" when that worked, "-1" when it did not, also for an empty `valueText`, with which nothing is opened.
// `typeName` is one of these, to the letter:
// - "String": a string with its terminating NUL. The NUL is appended to `valueText` itself: the caller gets it back one
//   character longer, even if the write fails.
// - "Number": the number that LenientValue finds in `valueText`, rounded half to even, in 32 bits. Throws
//   std::range_error when it has no place there; the key then stays open.
// - Any other name: "0", and nothing is written.
// No rights are asked for with the key, so on today's Windows every write is refused and the answer is "-1". The key
// stays open after a write that failed. Both kept on purpose.
std::string WriteRegValue(Registry& registry, std::uint32_t root, std::string_view keyPath, std::string_view typeName,
                          std::string_view valueName, std::string& valueText);

} // namespace tessaly
