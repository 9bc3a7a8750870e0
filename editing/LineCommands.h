// Commands for the lines that a selection touches, or the caret stands in.
#pragma once

#include "editing/Text.h"

#include <optional>

namespace tessaly {

// Puts "//" in front of the lines, or takes it away where all have it. Around a part of one line it is "/*" and "*/".
std::optional<Edit> ToggleComment(const TextLines& lines, const Selection& selection);

// Changes places with the line above or below. No value at the end of the text.
enum class Direction { Up, Down };
std::optional<Edit> MoveLines(const TextLines& lines, const Selection& selection, Direction direction);

// Puts the lines behind themselves once more, and selects there what was selected.
Edit DuplicateLines(const TextLines& lines, const Selection& selection);

// Takes the lines away. The caret keeps its column where there is one.
Edit DeleteLines(const TextLines& lines, const Selection& selection);

} // namespace tessaly
