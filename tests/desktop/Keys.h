// Key codes beside those of the function keys, as Windows' virtual-key codes have them. Letters and digits have the
// codes of their ASCII capitals.
#pragma once

namespace tessaly {

inline constexpr int MemoryKeyBackspace = 8;
inline constexpr int MemoryKeyTab = 9;
inline constexpr int MemoryKeyEnter = 13;
inline constexpr int MemoryKeyBlank = 32;
inline constexpr int MemoryKeyUp = 38;
inline constexpr int MemoryKeyDown = 40;

inline constexpr int MemoryShift = 1;

} // namespace tessaly
