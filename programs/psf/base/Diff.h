// The difference of two texts, line by line, as a unified diff.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::psf {

// With three lines around each change. The two names stand in its head. Lines end with LF; a CR before it belongs to
// the line. A missing LF at the end of a text is none. "" for equal texts. It is as short as can be unless there are
// thousands of changes.
std::string UnifiedDiff(std::string_view oldName, std::string_view newName, std::string_view oldText,
                        std::string_view newText);

} // namespace tessaly::psf
