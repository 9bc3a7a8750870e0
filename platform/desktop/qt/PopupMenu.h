// The menu that comes up where the user asks for one. It is open until the user has done with it.
#pragma once

#include "platform/desktop/PopupMenu.h"
#include "platform/desktop/qt/MenuItem.h"
#include "platform/desktop/qt/Window.h"

#include <vector>

namespace tessaly::qt {

// On the screen, the place of `shown` that is nearest to `wanted` in it.
QPoint PlaceForMenu(const QWidget& shown, QPoint wanted);

class PopupMenu final : public tessaly::PopupMenu {
public:
    explicit PopupMenu(Window& window)
        : tessaly::PopupMenu(window.controls.focus),
          mMenu(window.controls.focus, &window) {}

private:
    void ShowRows(const std::vector<PopupRow>& rows, ScreenPlace place) override;

    Menu mMenu;
};

} // namespace tessaly::qt
