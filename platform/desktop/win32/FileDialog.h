// The common file dialogs of Windows.
#pragma once

#include "platform/desktop/FileDialog.h"
#include "platform/desktop/win32/Headers.h"

namespace tessaly::win32 {

class FileDialog final : public tessaly::FileDialog {
public:
    explicit FileDialog(HWND mainWindow) : mMainWindow(mainWindow) {}

private:
    std::optional<std::string> Ask(Kind kind, const FileDialogSettings& settings) override;

    HWND mMainWindow;
};

} // namespace tessaly::win32
