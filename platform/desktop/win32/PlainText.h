// Between the program's text and the one that a rich edit control shows for it.
#pragma once

#include <string>

namespace tessaly::win32 {

// Makes of a text whose line breaks are LFs one for the control. Returns whether there are pictures in it now.
bool ShowControlCharacters(std::wstring& text);

// The text for the control's, in UTF-8.
std::string PlainText(std::wstring text, bool hasPictures);

} // namespace tessaly::win32
