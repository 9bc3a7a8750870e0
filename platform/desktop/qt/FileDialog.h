// The file dialogs: the desktop's own where Qt knows it, else Qt's.
#pragma once

#include "platform/desktop/FileDialog.h"

#include <QWidget>

namespace tessaly::qt {

class FileDialog final : public tessaly::FileDialog {
public:
    explicit FileDialog(QWidget& window) : mWindow(window) {}

private:
    std::optional<std::string> Ask(Kind kind, const FileDialogSettings& settings) override;

    QWidget& mWindow;
};

} // namespace tessaly::qt
