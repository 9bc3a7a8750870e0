// UTF-8 as RFC 3629 defines it: no overlong forms, no surrogates, nothing above U+10FFFF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaly {

// What ReadUtf8 returns for a byte that does not begin a character.
inline constexpr char32_t NotACharacter = 0xFFFFFFFF;

// U+FFFD, which stands for what could not be decoded.
inline constexpr char32_t ReplacementCharacter = 0xFFFD;

// Whether `byte` belongs to the character before it.
constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// How many bytes at the front of `text` are ASCII.
std::size_t AsciiPrefix(std::string_view text);

// Copies the ASCII at the front of `text` to `to` and returns how many bytes it was. There must be room for all of
// `text`: what stands behind the ASCII is not promised.
std::size_t CopyAscii(std::string_view text, char* to);

// ReadUtf8 without its short way.
char32_t ReadAnyUtf8(std::string_view text, std::size_t& position);

// Reads the character at `position` (less than text.size()) and moves `position` behind it. At a byte that
// begins no valid character it returns NotACharacter and moves on by one byte.
inline char32_t ReadUtf8(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(text[position]);
    if (lead >= 0xC2 && lead <= 0xDF && position + 1 < text.size() && IsContinuation(text[position + 1])) {
        position += 2; // most there are
        return (lead & 0x1FU) << 6 | (static_cast<unsigned char>(text[position - 1]) & 0x3FU);
    }
    return ReadAnyUtf8(text, position);
}

// The same, but what is no valid character is read as a ReplacementCharacter.
char32_t ReadUtf8OrReplacement(std::string_view text, std::size_t& position);

// Appends one character; `character` must be a Unicode scalar value.
void AppendUtf8(char32_t character, std::string& text);

bool IsUtf8(std::string_view text);

// The front of `text`, at most `size` bytes, which are at least 4. It does not end inside a character.
std::string_view Utf8Front(std::string_view text, std::size_t size);

// The byte position of the character number `index`, counted from 0, or text.size() when there are fewer.
std::size_t Utf8Position(std::string_view text, std::size_t index);

} // namespace tessaly
