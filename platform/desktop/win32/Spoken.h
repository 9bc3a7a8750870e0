// What a screen reader says of an item of a tree beside its text.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <string>

namespace tessaly::win32 {

// Told to the service of the system that keeps such descriptions, "" for none. Without that service, or where the tree
// has no numbers for its items, nothing happens.
void DescribeItem(HWND tree, HTREEITEM item, const std::wstring& description);

} // namespace tessaly::win32
