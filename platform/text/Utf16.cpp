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

void AppendUnit(char32_t unit, std::string& bytes) {
    bytes += static_cast<char>(unit & 0xFFU);
    bytes += static_cast<char>(unit >> 8U);
}

} // namespace

std::string DecodeUtf16(std::string_view bytes) {
    std::string text;
    std::size_t position = 0;
    for (; position + 1 < bytes.size(); position += 2) {
        const char32_t unit = CodeUnit(bytes, position);
        const char32_t next = position + 3 < bytes.size() ? CodeUnit(bytes, position + 2) : 0;
        if (IsHighSurrogate(unit) && IsLowSurrogate(next)) {
            AppendUtf8(JoinSurrogates(unit, next), text);
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

std::string EncodeUtf16(std::string_view text) {
    std::string bytes;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = ReadUtf8OrReplacement(text, position);
        if (character < FirstOfTwoUnits) {
            AppendUnit(character, bytes);
        } else {
            AppendUnit(HighSurrogate(character), bytes);
            AppendUnit(LowSurrogate(character), bytes);
        }
    }
    return bytes;
}

std::u16string ToUtf16(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = ReadUtf8OrReplacement(text, position);
        if (character < FirstOfTwoUnits) {
            units += static_cast<char16_t>(character);
        } else {
            units += HighSurrogate(character);
            units += LowSurrogate(character);
        }
    }
    return units;
}

std::string ToUtf8(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size(); ++at) {
        const char32_t unit = units[at];
        const char32_t next = at + 1 < units.size() ? units[at + 1] : 0;
        if (IsHighSurrogate(unit) && IsLowSurrogate(next)) {
            AppendUtf8(JoinSurrogates(unit, next), text);
            ++at;
        } else {
            AppendUtf8(IsHighSurrogate(unit) || IsLowSurrogate(unit) ? ReplacementCharacter : unit, text);
        }
    }
    return text;
}

} // namespace tessaly
