// Message boxes.
#pragma once

#include "platform/desktop/MsgBox.h"

class QWidget;

namespace tessaly::qt {

class MsgBox final : public tessaly::MsgBox {
public:
    // A box stands over `window` where no other window is on top of that.
    explicit MsgBox(QWidget& window) : mWindow(window) {}

    MsgResult Show(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) override;

    // There is nobody to ask: no box is shown any more.
    void AskNoMore() { mIsSilent = true; }

private:
    QWidget& mWindow;
    bool mIsSilent = false;
};

} // namespace tessaly::qt
