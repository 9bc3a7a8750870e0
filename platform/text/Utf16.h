// UTF-16 with the low byte first, as Windows writes it into files, and its surrogates.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// Stands in decoded text for a unit that is no character. UTF-8 does not have this byte, so IsUtf8 finds it.
inline constexpr char BrokenCharacter = '\xFF';

// Characters from here on take two units, a high surrogate and a low one.
inline constexpr char32_t FirstOfTwoUnits = 0x10000;

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

constexpr char32_t JoinSurrogates(char32_t high, char32_t low) {
    return FirstOfTwoUnits + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

// The two units of a character from FirstOfTwoUnits on.
constexpr char16_t HighSurrogate(char32_t character) {
    return static_cast<char16_t>(0xD800 + ((character - FirstOfTwoUnits) >> 10U));
}

constexpr char16_t LowSurrogate(char32_t character) {
    return static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
}

// `bytes` as UTF-8, with a BrokenCharacter for each lone surrogate and for a single byte at the end.
std::string DecodeUtf16(std::string_view bytes);

// The bytes of UTF-8 in UTF-16. Each byte that is no character becomes U+FFFD: two bytes, as what DecodeUtf16 found
// broken had.
std::string EncodeUtf16(std::string_view text);

// Between UTF-8 and units. What is no character becomes U+FFFD.
std::u16string ToUtf16(std::string_view text);
std::string ToUtf8(std::u16string_view units);

} // namespace tessaly
