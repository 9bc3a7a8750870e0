// UTF-16 with the low byte first, as Windows writes it into files, and its surrogates.
#pragma once

#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstddef>
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

// UTF-8 in units of 16 bits, whatever their type. Each byte that is no character becomes U+FFFD.
template <class Unit>
std::basic_string<Unit> ToUnits(std::string_view text) {
    std::basic_string<Unit> units(text.size(), Unit()); // no character has more units than bytes
    Unit* to = units.data();
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t ascii = AsciiPrefix(text.substr(position));
        to = std::copy_n(text.data() + position, ascii, to);
        position += ascii;
        if (position == text.size()) {
            break;
        }
        const char32_t character = ReadUtf8OrReplacement(text, position);
        if (character < FirstOfTwoUnits) {
            *to++ = static_cast<Unit>(character);
        } else {
            *to++ = static_cast<Unit>(HighSurrogate(character));
            *to++ = static_cast<Unit>(LowSurrogate(character));
        }
    }
    units.resize(static_cast<std::size_t>(to - units.data()));
    return units;
}

// The way back, with `broken`, or else U+FFFD, for each surrogate without a partner.
template <class Unit>
std::string FromUnits(std::basic_string_view<Unit> units, std::string_view broken = "\xEF\xBF\xBD") {
    std::string text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size(); ++at) {
        const char32_t unit = units[at];
        const char32_t next = at + 1 < units.size() ? units[at + 1] : 0;
        if (unit < 0x80) {
            text += static_cast<char>(unit);
        } else if (IsHighSurrogate(unit) && IsLowSurrogate(next)) {
            AppendUtf8(JoinSurrogates(unit, next), text);
            ++at;
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            text += broken;
        } else {
            AppendUtf8(unit, text);
        }
    }
    return text;
}

inline std::u16string ToUtf16(std::string_view text) {
    return ToUnits<char16_t>(text);
}

inline std::string ToUtf8(std::u16string_view units) {
    return FromUnits(units);
}

} // namespace tessaly
