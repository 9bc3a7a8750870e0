// The common file dialogs and the message boxes of Windows.
#pragma once

#include "platform/desktop/Dialogs.h"
#include "platform/desktop/win32/Headers.h"

namespace tessaly::win32 {

class FileDialog final : public tessaly::FileDialog {
public:
    explicit FileDialog(HWND mainWindow) : mMainWindow(mainWindow) {}

private:
    std::optional<std::string> Ask(Kind kind, const FileDialogSettings& settings) override;

    HWND mMainWindow;
};

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
