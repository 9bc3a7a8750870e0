// A code page of one byte a character, Windows-1252 among them. Every byte survives decoding and encoding.
#pragma once

#include "platform/text/CodePage.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tessaly {

class SingleByteCodePage final : public CodePage {
public:
    // The characters of bytes 80 to FF; 0 where a byte stands for none.
    using HighHalf = std::array<char32_t, 128>;

    explicit SingleByteCodePage(const HighHalf& highHalf);

    void AppendDecoded(std::string_view bytes, std::string& text) const override;
    char* Encode(std::string_view text, char* to) const override;
    std::size_t FindLost(std::string_view) const override { return std::string_view::npos; }

private:
    struct Utf8Character {
        std::array<char, 3> bytes;
        std::uint8_t length;
    };
    struct Place {
        char32_t character;
        char byte;
    };

    char EncodeCharacter(char32_t character) const;

    std::array<Utf8Character, 128> mDecoded;
    std::array<char, 0x800> mLowPlaces; // by character: those of at most two bytes in UTF-8
    std::vector<Place> mPlaces;         // all, sorted by character
};

// Windows-1252 as the Unicode consortium's mapping table CP1252.TXT gives it; it leaves 81 8D 8F 90 9D open.
const SingleByteCodePage::HighHalf& Windows1252HighHalf();

} // namespace tessaly
