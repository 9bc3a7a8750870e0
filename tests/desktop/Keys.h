// Key codes beside those of the function keys, as Windows' virtual-key codes have them. Letters and digits have the
// codes of their ASCII capitals.
#pragma once

namespace tessaly::memory {

inline constexpr int Shift = 1;
inline constexpr int Ctrl = 2;

} // namespace tessaly::memory
