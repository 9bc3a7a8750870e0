// UTF-16 with the low byte first, as Windows writes it into files.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// Stands in decoded text for what is no character: a byte that UTF-8 does not have, so that IsUtf8 finds it.
inline constexpr char BrokenCharacter = '\xFF';

// `bytes` as UTF-8, with a BrokenCharacter for each lone surrogate and for a single byte at the end.
std::string DecodeUtf16(std::string_view bytes);

} // namespace tessaly
