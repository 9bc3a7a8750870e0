// Strict UTF-8; the ASCII scan works in blocks because nearly all of a program is ASCII.
#include "platform/Utf8.h"

#include <cstdint>
#include <cstring>

namespace tessaly {

namespace {

constexpr std::size_t BlockSize = 64;

// True when no byte of the 64 at `bytes` has its high bit set; compilers turn the loop into vector code.
bool IsAsciiBlock(const char* bytes) {
    std::uint64_t words[BlockSize / sizeof(std::uint64_t)];
    std::memcpy(words, bytes, BlockSize);
    std::uint64_t all = 0;
    for (std::uint64_t word : words) {
        all |= word;
    }
    return (all & 0x8080808080808080U) == 0;
}

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

// The length that a lead byte announces, 0 when it can lead nothing.
std::size_t SequenceLength(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

bool IsScalarOfLength(char32_t character, std::size_t length) {
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    return character >= smallest[length] && character <= 0x10FFFF && !surrogate;
}

} // namespace

std::size_t AsciiPrefix(std::string_view text) {
    std::size_t position = 0;
    while (text.size() - position >= BlockSize && IsAsciiBlock(text.data() + position)) {
        position += BlockSize;
    }
    while (position < text.size() && static_cast<unsigned char>(text[position]) < 0x80) {
        ++position;
    }
    return position;
}

char32_t ReadUtf8(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(text[position]);
    const std::size_t start = position++;
    if (lead < 0x80) {
        return lead;
    }
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || text.size() - start < length) {
        return NotACharacter;
    }
    char32_t character = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[start + i]);
        if (!IsContinuation(byte)) {
            return NotACharacter;
        }
        character = (character << 6) | (byte & 0x3FU);
    }
    if (!IsScalarOfLength(character, length)) {
        return NotACharacter;
    }
    position = start + length;
    return character;
}

void AppendUtf8(char32_t character, std::string& text) {
    const auto tail = [character](unsigned shift) { return static_cast<char>(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += {static_cast<char>(0xC0U | (character >> 6)), tail(0)};
    } else if (character < 0x10000) {
        text += {static_cast<char>(0xE0U | (character >> 12)), tail(6), tail(0)};
    } else {
        text += {static_cast<char>(0xF0U | (character >> 18)), tail(12), tail(6), tail(0)};
    }
}

bool IsUtf8(std::string_view text) {
    for (std::size_t position = AsciiPrefix(text); position < text.size();) {
        if (ReadUtf8(text, position) == NotACharacter) {
            return false;
        }
        position += AsciiPrefix(text.substr(position));
    }
    return true;
}

std::size_t Utf8Position(std::string_view text, std::size_t index) {
    std::size_t position = 0;
    for (; index > 0 && position < text.size(); --index) {
        ReadUtf8(text, position);
    }
    return position;
}

} // namespace tessaly
