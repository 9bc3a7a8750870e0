// The forms in which tools write positions of a file, for those who read their output line by line.
#pragma once

#include "diagnostics/FileSpellings.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace tessaly {

// A position in a file, somewhere in a line of output.
struct FilePosition {
    std::size_t begin = 0; // of the file's name, or of the quote in front of it
    std::size_t end = 0;   // behind the numbers or the closing parenthesis
    std::size_t line = 0;
    std::size_t column = 0; // 0 for none
    bool hasColonColumn = false;
    bool isQuoted = false;
};

// Reads ":LINE", ":LINE:COL", "(LINE)" or "(LINE,COL)" at `position.end`, and moves that behind it. False when it is
// not there.
bool ReadNumbers(std::string_view line, FilePosition& position);

// The first position in `file` whose base name begins at or behind `from`.
std::optional<FilePosition> FindPosition(const FileSpellings& file, std::string_view line, std::size_t from);

// What stands behind a position at the front of a line, from the colon on; no value when that is no message.
std::optional<std::string_view> MessageBehind(std::string_view line, std::size_t end);

// Whether `prefix` is the name of a linker in front of what it says, such as "/usr/bin/ld: ".
bool IsLinkerPrefix(std::string_view prefix);

// Whether the tools themselves give the position between `prefix` and `rest`. It is not at the front of a line, and
// might stand in the source that they quote.
bool IsInsidePosition(std::string_view prefix, std::string_view rest);

bool IsNameCharacter(char character);

// Where `name` stands in `text` by itself, not as a part of another, at or behind `from`; npos when it does not.
std::size_t FindName(std::string_view text, std::string_view name, std::size_t from = 0);

// The name that begins at or behind `at` in quotes; `at` moves behind it. "" when there is none.
std::string_view NextQuotedName(std::string_view message, std::size_t& at);

} // namespace tessaly
