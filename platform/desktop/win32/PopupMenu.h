// The menu that comes up where the user asks for one. Windows shows it in a loop of its own.
#pragma once

#include "platform/desktop/PopupMenu.h"
#include "platform/desktop/win32/Parent.h"

#include <vector>

namespace tessaly::win32 {

class PopupMenu final : public tessaly::PopupMenu {
public:
    explicit PopupMenu(Parent& frame) : tessaly::PopupMenu(frame.order.focus), mFrame(frame) {}

private:
    void ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) override;

    Parent& mFrame;
};

} // namespace tessaly::win32
