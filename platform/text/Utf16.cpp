// The low byte of each unit first.
#include "platform/text/Utf16.h"

namespace tessaly {

std::string DecodeUtf16(std::string_view bytes) {
    std::u16string units;
    for (std::size_t position = 0; position + 1 < bytes.size(); position += 2) {
        const auto low = static_cast<unsigned char>(bytes[position]);
        const auto high = static_cast<unsigned char>(bytes[position + 1]);
        units += static_cast<char16_t>(high << 8U | low);
    }
    const std::string_view broken(&BrokenCharacter, 1);
    return FromUnits<char16_t>(units, broken).append(broken, 0, bytes.size() % 2);
}

std::string EncodeUtf16(std::string_view text) {
    std::string bytes;
    for (const char16_t unit : ToUtf16(text)) {
        bytes += static_cast<char>(unit & 0xFFU);
        bytes += static_cast<char>(unit >> 8U);
    }
    return bytes;
}

} // namespace tessaly
