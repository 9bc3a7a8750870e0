// Pairs of bytes, and pairs of surrogates made of them.
#include "platform/text/Utf16.h"

#include "platform/text/Utf8.h"

#include <cstddef>

namespace tessaly {

namespace {

char32_t CodeUnit(std::string_view bytes, std::size_t position) {
    const auto low = static_cast<unsigned char>(bytes[position]);
    const auto high = static_cast<unsigned char>(bytes[position + 1]);
    return static_cast<char32_t>(high << 8U | low);
}

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

std::string DecodeUtf16(std::string_view bytes) {
    std::string text;
    std::size_t position = 0;
    for (; position + 1 < bytes.size(); position += 2) {
        const char32_t unit = CodeUnit(bytes, position);
        const char32_t next = position + 3 < bytes.size() ? CodeUnit(bytes, position + 2) : 0;
        if (IsHighSurrogate(unit) && IsLowSurrogate(next)) {
            AppendUtf8(0x10000 + ((unit - 0xD800) << 10U) + (next - 0xDC00), text);
            position += 2;
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            text += BrokenCharacter;
        } else {
            AppendUtf8(unit, text);
        }
    }
    if (position < bytes.size()) {
        text += BrokenCharacter;
    }
    return text;
}

} // namespace tessaly
