// Text out of files, as a terminal may have it: control characters in a name would be obeyed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaly::psf {

// The bytes of the character of `text` at `position`, which moves behind it. "?" stands for a control character, and
// for one that changes the direction of the text. Bytes that are no UTF-8 count as characters of an 8-bit terminal.
std::string_view NextPrintable(std::string_view text, std::size_t& position);

// `text` with all its characters like that.
std::string Printable(std::string_view text);

// The same for a text of many lines, whose line ends and tabs stay.
std::string PrintableLines(std::string_view text);

} // namespace tessaly::psf
