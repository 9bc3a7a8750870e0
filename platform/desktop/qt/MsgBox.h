// Message boxes.
#pragma once

#include "platform/desktop/MsgBox.h"

class QWidget;

namespace tessaly::qt {

class MsgBox final : public tessaly::MsgBox {
public:
    // A box is over `window`, unless another window is on top of that.
    explicit MsgBox(QWidget& window) : mWindow(window) {}

private:
    MsgResult Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) override;

    QWidget& mWindow;
};

} // namespace tessaly::qt
