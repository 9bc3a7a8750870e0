// Key codes beside those of the function keys, as Windows' virtual-key codes have them. Letters and digits have the
// codes of their ASCII capitals.
#pragma once

#include "platform/desktop/Window.h"

namespace tessaly::memory {

inline constexpr int Shift = 1;
inline constexpr int Ctrl = 2;

// Whether a key asks for a menu.
constexpr bool IsMenuKey(int keyCode, int shift) {
    return (keyCode == KeyMenu && shift == 0) || (keyCode == KeyF10 && shift == Shift);
}

} // namespace tessaly::memory
