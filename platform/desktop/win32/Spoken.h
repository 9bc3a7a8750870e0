// What a screen reader is told through the service of the system that keeps names and descriptions. Without that
// service nothing happens.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <string>

namespace tessaly::win32 {

// What is said of a control, or of a part of it by its number, beside its name and its text; "" for nothing. It is told
// that this is new.
void DescribeControl(HWND control, LONG child, const std::wstring& description);

// What is said of an item beside its text, "" for nothing; or nothing new where the tree has no numbers for its items.
void DescribeItem(HWND tree, HTREEITEM item, const std::wstring& description);

// Names a control by the label in front of it.
void NameByLabel(HWND control);

} // namespace tessaly::win32
