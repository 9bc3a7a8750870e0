// The common file dialogs of Windows.
#pragma once

#include "platform/desktop/FileDialog.h"
#include "platform/desktop/win32/Headers.h"

namespace tessaly::win32 {

class FileDialog final : public tessaly::FileDialog {
public:
    explicit FileDialog(HWND mainWindow) : mMainWindow(mainWindow) {}

    std::string ShowOpen(const FileDialogSettings& settings) override;
    std::string ShowSave(const FileDialogSettings& settings) override;

private:
    using Dialog = BOOL(WINAPI*)(OPENFILENAMEW*);
    std::string Show(const FileDialogSettings& settings, Dialog dialog);

    HWND mMainWindow;
};

} // namespace tessaly::win32
