// The number at the front of a text, whatever stands behind it, and the conversions to whole numbers.
// ToByte is the strict one: a text that is not a number from end to end is refused.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessaly {

// The number that `text` begins with; 0 when it begins with none. Blanks, tabs and line feeds do not count, not even
// between digits: "1 2" is 12. Taken are a sign, digits with a "." and a fraction, and an exponent with e, E, d or D.
// Or, after the sign, hexadecimal digits behind "&H" or octal ones behind "&O". These do not wrap to negative numbers:
// "&HFFFF" is 65535. A "," ends the number, and an exponent without digits does not belong to it. A number too large
// for a double gives the largest one.
double LenientValue(std::string_view text);

// `number` rounded half to even. Throws std::range_error when the result has no place in 32 bits, and for NaN. Nobody
// here can go on with that: callers let it pass to the command that they are part of, which ends.
std::int32_t RoundToInteger(double number);

// `text` as a number from 0 to 255; a fraction is rounded, half to even. It must be a decimal number as ToInteger takes
// it. Throws std::invalid_argument when it is not, as for "" and numbers outside 32 bits. Throws std::range_error when
// the rounded number is not in 0 to 255. Callers skip the step that wanted the byte.
std::uint8_t ToByte(std::string_view text);

} // namespace tessaly
