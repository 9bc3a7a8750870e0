// Between the program's text and the one that a rich edit control shows for it.
#pragma once

#include <string>
#include <string_view>

namespace tessaly::win32 {

// Makes of a text whose line breaks are LFs one for the control. Returns whether there are pictures in it now.
bool ShowControlCharacters(std::wstring& text);

// The same the other way, for some of the text.
std::u16string ToUnits(std::wstring_view text, bool hasPictures);

} // namespace tessaly::win32
