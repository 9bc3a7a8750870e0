// The file dialogs, which are the desktop's own where Qt knows it, and message boxes.
#pragma once

#include "platform/desktop/Dialogs.h"

#include <QWidget>

namespace tessaly::qt {

class FileDialog final : public tessaly::FileDialog {
public:
    explicit FileDialog(QWidget& window) : mWindow(window) {}

private:
    std::optional<std::string> Ask(Kind kind, const FileDialogSettings& settings) override;

    QWidget& mWindow;
};

class MsgBox final : public tessaly::MsgBox {
public:
    // A box is over `window`, unless another window is on top of that.
    explicit MsgBox(QWidget& window) : mWindow(window) {}

private:
    MsgResult Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) override;

    QWidget& mWindow;
};

} // namespace tessaly::qt
