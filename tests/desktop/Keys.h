// Key codes beside those of the function keys, as Windows' virtual-key codes have them. Letters and digits have the
// codes of their ASCII capitals.
#pragma once

namespace tessaly::memory {

inline constexpr int KeyBackspace = 8;
inline constexpr int KeyTab = 9;
inline constexpr int KeyBlank = 32;
inline constexpr int KeyUp = 38;
inline constexpr int KeyDown = 40;

inline constexpr int Shift = 1;

} // namespace tessaly::memory
