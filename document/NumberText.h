// Reading a whole number from a text as NumFuncs= wants it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessaly {

// `text` as a 32-bit integer: blanks and tabs around it, a sign, digits with a "." and a fraction, and an
// exponent are taken; a fraction is rounded, half to even. No value for anything else (hexadecimal, grouping, text
// after the number, nothing at all) and for a number beyond 32 bits.
std::optional<std::int32_t> ToInteger(std::string_view text);

} // namespace tessaly
