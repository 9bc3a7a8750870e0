// The window classes of the program's own windows.
#pragma once

#include "platform/desktop/win32/Headers.h"

namespace tessaly::win32 {

// Registers the class `name`, whose windows have the program's icon, an arrow and the colour of dialogs. Nothing
// happens where it is registered already.
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure);

} // namespace tessaly::win32
