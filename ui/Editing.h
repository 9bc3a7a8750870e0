// What the keys of the pane do to its text.
#pragma once

#include "editing/Text.h"
#include "platform/desktop/RichTextBox.h"
#include "platform/text/CodePage.h"

#include <optional>

namespace tessaly {

// What a key, or a typed character, does to the text with this selection. No value: what it does in every editor, and
// nothing for a key that has no meaning there.
std::optional<Edit> EditOf(const PaneKey& key, const TextLines& lines, const Selection& selection);

// Whether a file in this code page keeps a character as it is.
bool Keeps(const CodePage& codePage, char32_t character);

} // namespace tessaly
