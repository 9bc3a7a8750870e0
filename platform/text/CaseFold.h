// "Without regard to case", as function names are compared.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// `text` with every capital letter replaced by its small one, so that two texts that differ in case only
// become equal. Only one-to-one pairs of Unicode's simple case mapping count: "Ä" and "ä" meet, sharp s
// stays itself, and a text never changes its number of characters.
std::string FoldCase(std::string_view text);

// True when `key` (ASCII) occurs anywhere in `text`, without regard to case.
bool ContainsKey(std::string_view text, std::string_view key);

} // namespace tessaly
