// The file dialogs: the desktop's own where Qt knows it, else Qt's.
#pragma once

#include "platform/desktop/FileDialog.h"

#include <QFileDialog>

namespace tessaly::qt {

class FileDialog final : public tessaly::FileDialog {
public:
    explicit FileDialog(QWidget& window) : mWindow(window) {}

    std::string ShowOpen(const FileDialogSettings& settings) override;
    std::string ShowSave(const FileDialogSettings& settings) override;

private:
    std::string Show(QFileDialog::AcceptMode mode, const FileDialogSettings& settings);

    QWidget& mWindow;
};

} // namespace tessaly::qt
