// Opens a help file with what Windows has for its kind.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <string>

namespace tessaly::win32 {

// .chm by HTML Help, .hlp by WinHelp, anything else, or where the first of these cannot show it, by its file
// association. Nothing is told of a failure: the user sees that no help comes up.
void OpenHelpFile(HWND window, const std::string& path);

} // namespace tessaly::win32
