// What the keys of the pane do to its text.
#pragma once

#include "editing/Text.h"
#include "platform/desktop/RichTextBox.h"

#include <optional>

namespace tessaly {

// What a key, or a typed character, does to the text with this selection. No value: what it does in every editor, and
// nothing for a key that has no meaning there.
std::optional<Edit> EditOf(const PaneKey& key, const TextLines& lines, const Selection& selection);

} // namespace tessaly
