// Key codes as Windows' virtual-key codes have them, which is what the program speaks.
#pragma once

#include <QKeyEvent>

namespace tessaly::qt {

// The virtual-key code of a key; 255, Windows' code for none of its own, for one that Windows does not have.
int VirtualKey(const QKeyEvent& event);

// Whether a key asks for a menu.
bool IsMenuKey(const QKeyEvent& event);

// 1 Shift, 2 Ctrl, 4 Alt, added up.
int ShiftState(Qt::KeyboardModifiers modifiers);

} // namespace tessaly::qt
