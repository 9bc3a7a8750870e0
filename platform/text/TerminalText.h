// What a program writes for a terminal, made plain text.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// `text` without the sequences that colour and move, and without control characters other than LF, CR and tab. A
// sequence that does not end ends with its line. All other bytes stay, whether they are UTF-8 or not.
std::string WithoutTerminalSequences(std::string_view text);

} // namespace tessaly
