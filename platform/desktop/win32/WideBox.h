// Message boxes of Windows that show their whole caption and do not break the lines of a text with columns.
#pragma once

#include "platform/desktop/win32/Headers.h"

namespace tessaly::win32 {

// While it lives, a message box that this thread shows is made wider where it is too narrow for that: before it is
// seen, up to four fifths of the work area. All others stay as Windows made them.
class WideBox {
public:
    WideBox() noexcept;
    WideBox(const WideBox&) = delete;
    WideBox& operator=(const WideBox&) = delete;
    ~WideBox();

private:
    HHOOK mHook;
};

} // namespace tessaly::win32
