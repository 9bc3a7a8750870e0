// Strict UTF-8; the ASCII scan works in blocks because nearly all of a program is ASCII.
#include "platform/text/Utf8.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tessaly {

namespace {

bool IsAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

// The loops below work on blocks of 16 bytes: with SSE2 if the processor surely has it, else in two words.
#if defined(__SSE2__)

using Block = __m128i;

Block LoadBlock(const char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

bool IsAscii(Block block) {
    return _mm_movemask_epi8(block) == 0;
}

// For a block that is not all ASCII.
std::size_t AsciiInBlock(Block block) {
    return static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(_mm_movemask_epi8(block))));
}

#else

struct Block {
    std::uint64_t words[2];
};

Block LoadBlock(const char* bytes) {
    Block block;
    std::memcpy(&block, bytes, sizeof block);
    return block;
}

bool IsAscii(const Block& block) {
    return ((block.words[0] | block.words[1]) & 0x8080808080808080U) == 0;
}

std::size_t AsciiInBlock(const Block& block) {
    char bytes[sizeof block];
    std::memcpy(bytes, &block, sizeof block);
    return static_cast<std::size_t>(std::find_if_not(bytes, bytes + sizeof block, [](char c) { return IsAscii(c); }) -
                                    bytes);
}

#endif

constexpr std::size_t BlockSize = sizeof(Block);

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
    for (; text.size() - position >= BlockSize; position += BlockSize) {
        const Block block = LoadBlock(text.data() + position);
        if (!IsAscii(block)) {
            return position + AsciiInBlock(block);
        }
    }
    while (position < text.size() && IsAscii(text[position])) {
        ++position;
    }
    return position;
}

std::size_t CopyAscii(std::string_view text, char* to) {
    std::size_t position = 0;
    for (; text.size() - position >= BlockSize; position += BlockSize) {
        const Block block = LoadBlock(text.data() + position);
        std::memcpy(to + position, &block, BlockSize);
        if (!IsAscii(block)) {
            return position + AsciiInBlock(block);
        }
    }
    for (; position < text.size() && IsAscii(text[position]); ++position) {
        to[position] = text[position];
    }
    return position;
}

char32_t ReadAnyUtf8(std::string_view text, std::size_t& position) {
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
        if (!IsContinuation(text[start + i])) {
            return NotACharacter;
        }
        character = (character << 6) | (static_cast<unsigned char>(text[start + i]) & 0x3FU);
    }
    if (!IsScalarOfLength(character, length)) {
        return NotACharacter;
    }
    position = start + length;
    return character;
}

char32_t ReadUtf8OrReplacement(std::string_view text, std::size_t& position) {
    const char32_t character = ReadUtf8(text, position);
    return character == NotACharacter ? ReplacementCharacter : character;
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

std::string_view Utf8Front(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return text;
    }
    std::size_t end = size;
    while (end > size - 3 && IsContinuation(text[end])) {
        --end;
    }
    return text.substr(0, end);
}

std::size_t Utf8Position(std::string_view text, std::size_t index) {
    std::size_t position = 0;
    for (; index > 0 && position < text.size(); --index) {
        ReadUtf8(text, position);
    }
    return position;
}

} // namespace tessaly
