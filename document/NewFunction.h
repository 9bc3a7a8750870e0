// The rules for a function that a user adds: which names are accepted and the text that it starts with.
// They bind what is typed, not what a loaded file holds.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

enum class NameCheck { Accepted, BeginsWithDigit, BadCharacter };

// Goes through `name` from the front and reports the first fault: a digit as the first character, or a
// character other than A-Z, a-z and 0-9. An empty name is accepted here; it is dropped by whoever asked.
NameCheck CheckFunctionName(std::string_view name);

// The text of a new function: header line, brace, one empty line, brace; line breaks are lone line feeds.
std::string NewFunctionText(std::string_view name);

} // namespace tessaly
