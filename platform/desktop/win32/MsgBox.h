// Message boxes of Windows.
#pragma once

#include "platform/desktop/MsgBox.h"
#include "platform/desktop/win32/Headers.h"

namespace tessaly::win32 {

class MsgBox final : public tessaly::MsgBox {
public:
    explicit MsgBox(HWND mainWindow) : mMainWindow(mainWindow) {}

private:
    MsgResult Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) override;

    HWND mMainWindow;
};

// The owner of a box or dialog: the program's window on top, if any can be seen.
HWND OwnerOfDialogs(HWND mainWindow);

} // namespace tessaly::win32
